#include "PFObject.h"

#include "PFDispatch.h"
#include "PFError.h"
#include "PFFileObject.h"
#include "Parse.h"
#include "ParseCore.h"

#include <QEventLoop>

PFObject::PFObject(QString className)
{
    m_state.className = std::move(className);
}

PFObject::~PFObject() = default;

PFObjectPtr PFObject::objectWithClassName(const QString &className)
{
    if (PFSubclassRegistry::shared().isRegistered(className))
        qFatal("PFObject::objectWithClassName(\"%s\"): %s has a registered subclass; create it with that "
               "subclass's own constructor",
               qPrintable(className), qPrintable(className));
    return PFSubclassRegistry::shared().make(className);
}

PFObjectPtr PFObject::objectWithoutDataWithClassName(const QString &className, const QString &objectId)
{
    PFObjectPtr object = PFSubclassRegistry::shared().make(className);
    object->m_state.objectId = objectId;
    object->m_state.dataAvailable = false;
    return object;
}

void PFObject::setObject(const QVariant &value, const QString &key)
{
    QVariant stored = value;
    if (value.typeId() == QMetaType::QStringList)
        stored = QVariant(QVariantList(value.toList()));
    m_state.operations.insert(key, PFFieldOperation::set(stored));
}

void PFObject::setObject(const PFObjectPtr &object, const QString &key)
{
    if (object)
        setObject(QVariant::fromValue(object), key);
    else
        setObject(QVariant::fromValue(nullptr), key);
}

void PFObject::setObject(const PFFileObjectPtr &file, const QString &key)
{
    if (file)
        setObject(QVariant::fromValue(file), key);
    else
        setObject(QVariant::fromValue(nullptr), key);
}

void PFObject::removeObjectForKey(const QString &key)
{
    m_state.operations.insert(key, PFFieldOperation::deletion());
}

QString PFObject::stringForKey(const QString &key) const
{
    const QVariant value = objectForKey(key);
    return value.typeId() == QMetaType::QString ? value.toString() : QString();
}

bool PFObject::boolForKey(const QString &key) const
{
    const QVariant value = objectForKey(key);
    return value.typeId() == QMetaType::Bool && value.toBool();
}

double PFObject::numberForKey(const QString &key) const
{
    const QVariant value = objectForKey(key);
    switch (value.typeId()) {
    case QMetaType::Int:
    case QMetaType::LongLong:
    case QMetaType::Double:
        return value.toDouble();
    default:
        return 0;
    }
}

QDateTime PFObject::dateForKey(const QString &key) const
{
    const QVariant value = objectForKey(key);
    return value.typeId() == QMetaType::QDateTime ? value.toDateTime() : QDateTime();
}

std::optional<PFGeoPoint> PFObject::geoPointForKey(const QString &key) const
{
    const QVariant value = objectForKey(key);
    if (value.metaType() != QMetaType::fromType<PFGeoPoint>())
        return std::nullopt;
    return value.value<PFGeoPoint>();
}

PFFileObjectPtr PFObject::fileForKey(const QString &key) const
{
    const QVariant value = objectForKey(key);
    return value.metaType() == QMetaType::fromType<PFFileObjectPtr>() ? value.value<PFFileObjectPtr>() : nullptr;
}

PFObjectPtr PFObject::objectPointerForKey(const QString &key) const
{
    const QVariant value = objectForKey(key);
    return value.metaType() == QMetaType::fromType<PFObjectPtr>() ? value.value<PFObjectPtr>() : nullptr;
}

QVariantList PFObject::listForKey(const QString &key) const
{
    const QVariant value = objectForKey(key);
    return value.typeId() == QMetaType::QVariantList ? value.toList() : QVariantList();
}

QStringList PFObject::stringListForKey(const QString &key) const
{
    QStringList list;
    for (const QVariant &item : listForKey(key)) {
        if (item.typeId() == QMetaType::QString)
            list.append(item.toString());
    }
    return list;
}

QList<QDateTime> PFObject::dateListForKey(const QString &key) const
{
    QList<QDateTime> list;
    for (const QVariant &item : listForKey(key)) {
        if (item.typeId() == QMetaType::QDateTime)
            list.append(item.toDateTime());
    }
    return list;
}

void PFObject::setStringList(const QStringList &list, const QString &key)
{
    setObject(QVariant(QVariantList(list.cbegin(), list.cend())), key);
}

void PFObject::setDateList(const QList<QDateTime> &list, const QString &key)
{
    QVariantList values;
    for (const QDateTime &date : list)
        values.append(date);
    setObject(QVariant(values), key);
}

void PFObject::saveInBackgroundWithBlock(PFBooleanResultBlock block)
{
    ParseCore *core = Parse::core();
    PFObjectPtr self = weak_from_this().lock();
    if (!core || !self) {
        PFDispatch::failLater(block, PFError::notInitialized(), false);
        return;
    }
    core->objectController().saveObject(self, core->sessionToken(), std::move(block));
}

bool PFObject::save(PFError *error)
{
    QEventLoop loop;
    bool done = false;
    bool succeeded = false;
    saveInBackgroundWithBlock([&](bool ok, const PFError *failure) {
        succeeded = ok;
        if (failure && error)
            *error = *failure;
        done = true;
        loop.quit();
    });
    if (!done)
        loop.exec();
    return succeeded;
}

void PFObject::saveEventually(PFBooleanResultBlock block)
{
    ParseCore *core = Parse::core();
    PFObjectPtr self = weak_from_this().lock();
    if (!core || !self) {
        PFDispatch::failLater(block, PFError::notInitialized(), false);
        return;
    }
    core->eventuallyQueue().enqueueSave(self, std::move(block));
}
