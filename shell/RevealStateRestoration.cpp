#include "RevealStateRestoration.h"

#include "RevealViewController.h"

#include <QMetaProperty>

namespace {

const QString kUserInteractionStore = QStringLiteral("_userInteractionStore");
const QString kRearViewController = QStringLiteral("_rearViewController");
const QString kFrontViewController = QStringLiteral("_frontViewController");
const QString kRightViewController = QStringLiteral("_rightViewController");
const QString kFrontViewPosition = QStringLiteral("_frontViewPosition");

// The key of each setting: "_" followed by the setting's name.
const QStringList kSettingKeys = {
    QStringLiteral("_rearViewRevealWidth"),
    QStringLiteral("_rearViewRevealOverdraw"),
    QStringLiteral("_rearViewRevealDisplacement"),
    QStringLiteral("_rightViewRevealWidth"),
    QStringLiteral("_rightViewRevealOverdraw"),
    QStringLiteral("_rightViewRevealDisplacement"),
    QStringLiteral("_bounceBackOnOverdraw"),
    QStringLiteral("_bounceBackOnLeftOverdraw"),
    QStringLiteral("_stableDragOnOverdraw"),
    QStringLiteral("_stableDragOnLeftOverdraw"),
    QStringLiteral("_presentFrontViewHierarchically"),
    QStringLiteral("_quickFlickVelocity"),
    QStringLiteral("_toggleAnimationDuration"),
    QStringLiteral("_toggleAnimationType"),
    QStringLiteral("_springDampingRatio"),
    QStringLiteral("_replaceViewAnimationDuration"),
    QStringLiteral("_frontViewShadowRadius"),
    QStringLiteral("_frontViewShadowOffset"),
    QStringLiteral("_frontViewShadowOpacity"),
    QStringLiteral("_frontViewShadowColor"),
    QStringLiteral("_draggableBorderWidth"),
    QStringLiteral("_clipsViewsToBounds"),
    QStringLiteral("_extendsPointInsideHit"),
};

// The setting a key stands for.
QMetaProperty settingFor(const QString &key)
{
    const QMetaObject &meta = RevealSettings::staticMetaObject;
    const QMetaProperty setting = meta.property(meta.indexOfProperty(key.mid(1).toLatin1().constData()));
    Q_ASSERT_X(setting.isValid(), "RevealStateRestoration", "a saved key names no setting");
    return setting;
}

// A stored value read as a value of the given type; invalid when it cannot be one. Numbers
// must read as numbers (a whole number drops its fraction), a flag takes the truth of
// whatever is stored, a colour must be a valid one.
QVariant readSetting(const QVariant &stored, QMetaType type)
{
    if (!stored.isValid())
        return {};
    switch (type.id()) {
    case QMetaType::Bool:
        return stored.toBool();
    case QMetaType::Int:
    case QMetaType::Double: {
        bool ok = false;
        const qreal number = stored.toReal(&ok);
        if (!ok)
            return {};
        return type.id() == QMetaType::Int ? QVariant(int(number)) : QVariant(number);
    }
    default: {
        QVariant value = stored;
        if (!value.convert(type))
            return {};
        if (type == QMetaType::fromType<QColor>() && !value.value<QColor>().isValid())
            return {};
        return value;
    }
    }
}

ui::ViewController *storedController(const QVariantMap &state, const QString &key)
{
    return qobject_cast<ui::ViewController *>(state.value(key).value<QObject *>());
}

} // namespace

RevealViewController *RevealStateRestoration::viewControllerWithRestorationIdentifier(const QString &identifier)
{
    return identifier == kRestorationIdentifier ? new RevealViewController : nullptr;
}

QVariantMap RevealStateRestoration::encode(const RevealViewController &reveal)
{
    QVariantMap state;
    const RevealSettings &settings = reveal.settings();
    for (const QString &key : kSettingKeys)
        state.insert(key, settingFor(key).readOnGadget(&settings));
    state.insert(kUserInteractionStore, reveal.userInteractionStore());
    state.insert(kRearViewController, QVariant::fromValue<QObject *>(reveal.rearViewController()));
    state.insert(kFrontViewController, QVariant::fromValue<QObject *>(reveal.frontViewController()));
    state.insert(kRightViewController, QVariant::fromValue<QObject *>(reveal.rightViewController()));
    state.insert(kFrontViewPosition, reveal.frontViewPosition());
    return state;
}

void RevealStateRestoration::decode(const QVariantMap &state, RevealViewController &reveal)
{
    RevealSettings settings = reveal.settings();
    for (const QString &key : kSettingKeys) {
        const QMetaProperty setting = settingFor(key);
        const QVariant value = readSetting(state.value(key), setting.metaType());
        if (value.isValid())
            setting.writeOnGadget(&settings, value);
    }
    reveal.setSettings(settings);

    const QVariant interaction = readSetting(state.value(kUserInteractionStore), QMetaType::fromType<bool>());
    if (interaction.isValid())
        reveal.setUserInteractionStore(interaction.toBool());
    if (ui::ViewController *rear = storedController(state, kRearViewController))
        reveal.setRearViewController(rear);
    if (ui::ViewController *front = storedController(state, kFrontViewController))
        reveal.setFrontViewController(front);
    if (ui::ViewController *right = storedController(state, kRightViewController))
        reveal.setRightViewController(right);
    // Without a stored position the current one is applied again.
    const QVariant stored = readSetting(state.value(kFrontViewPosition), QMetaType::fromType<int>());
    const int position = stored.isValid() ? stored.toInt() : reveal.frontViewPosition();
    if (position >= FrontFarLeftRemoved && position <= FrontFarRightRemoved)
        reveal.setFrontViewPosition(position, false);
}
