#include "AlertController.h"

#include "TextField.h"
#include "UiLogging.h"
#include "View.h"

namespace ui {

namespace {

QPointer<AlertController> &alertSlot()
{
    static QPointer<AlertController> alert;
    return alert;
}

} // namespace

AlertController::AlertController(const QString &title, const QString &message, Style style, QObject *parent)
    : ViewController(parent)
    , m_message(message)
    , m_style(style)
{
    setTitle(title);
    setModalPresentationStyle(ModalPresentationStyle::OverFullScreen);
    setViewUrl(QUrl(QStringLiteral("qrc:/qt/qml/Vantrel/Ui/AlertView.qml")));
}

void AlertController::viewDidLoad()
{
    view()->setBackgroundColor(Qt::transparent);
}

AlertController *AlertController::alertControllerWithTitle(const QString &title, const QString &message,
                                                           Style style)
{
    return new AlertController(title, message, style);
}

AlertController *AlertController::alertOnScreen()
{
    return alertSlot();
}

void AlertController::setAlertOnScreen(AlertController *alert)
{
    alertSlot() = alert;
}

void AlertController::setMessage(const QString &message)
{
    if (m_message == message)
        return;
    m_message = message;
    Q_EMIT messageChanged();
}

void AlertController::addAction(AlertAction *action)
{
    if (!action || m_actions.contains(action))
        return;
    if (action->style() == AlertAction::Style::Cancel && cancelAction()) {
        qCWarning(lcPresentation) << "An alert can only have one action with the cancel style; ignored"
                                  << action->title();
        action->deleteLater();
        return;
    }
    action->setParent(this);
    m_actions.append(action);
    Q_EMIT actionsChanged();
}

QList<AlertAction *> AlertController::orderedActions() const
{
    AlertAction *cancelling = cancelAction();
    if (!cancelling)
        return m_actions;
    QList<AlertAction *> ordered = m_actions;
    ordered.removeAll(cancelling);
    if (m_actions.size() == 2 && m_style == Style::Alert)
        ordered.prepend(cancelling);
    else
        ordered.append(cancelling);
    return ordered;
}

AlertAction *AlertController::cancelAction() const
{
    for (AlertAction *action : m_actions) {
        if (action->style() == AlertAction::Style::Cancel)
            return action;
    }
    return nullptr;
}

AlertAction *AlertController::preferredAction() const
{
    if (m_preferredAction && m_actions.contains(m_preferredAction))
        return m_preferredAction;
    for (AlertAction *action : m_actions) {
        if (action->style() == AlertAction::Style::Default)
            return action;
    }
    return cancelAction();
}

void AlertController::setPreferredAction(AlertAction *action)
{
    if (action && action->style() == AlertAction::Style::Destructive) {
        qCWarning(lcPresentation) << "A destructive action is never an alert's preferred one; ignored"
                                  << action->title();
        return;
    }
    m_preferredAction = action;
    Q_EMIT actionsChanged();
}

AlertAction *AlertController::escapeAction() const
{
    if (AlertAction *cancelling = cancelAction())
        return cancelling;
    if (m_actions.size() == 1)
        return m_actions.first();
    AlertAction *safe = nullptr;
    for (AlertAction *action : m_actions) {
        if (action->style() == AlertAction::Style::Destructive)
            continue;
        if (safe)
            return nullptr; // two ways out that are not destructive: Escape cannot tell which
        safe = action;
    }
    return safe;
}

void AlertController::addTextFieldWithConfigurationHandler(const std::function<void(TextField *)> &configure)
{
    auto *field = new TextField(QStringLiteral("alertTextField%1").arg(m_textFields.size()), this);
    if (configure)
        configure(field);
    m_textFields.append(field);
    Q_EMIT textFieldsChanged();
}

void AlertController::choose(AlertAction *action)
{
    if (!action || !m_actions.contains(action) || !action->isEnabled() || m_choosing)
        return;
    m_choosing = true;
    QPointer<AlertAction> chosen(action);
    dismissViewControllerAnimated(true, [chosen] {
        if (chosen)
            chosen->run();
    });
}

bool AlertController::choosePreferred()
{
    return chooseIfAny(preferredAction());
}

bool AlertController::cancel()
{
    return chooseIfAny(escapeAction());
}

bool AlertController::chooseIfAny(AlertAction *action)
{
    if (action)
        choose(action);
    return action != nullptr;
}

} // namespace ui
