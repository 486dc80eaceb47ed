#include "PFEncoder.h"

#include "PFFileObject.h"
#include "PFGeoPoint.h"
#include "PFObject.h"

#include <QCoreApplication>
#include <QJsonArray>

namespace {
QJsonObject typed(const char *type)
{
    return {{QStringLiteral("__type"), QLatin1String(type)}};
}
} // namespace

QString PFEncoder::encodeDate(const QDateTime &date)
{
    return date.toUTC().toString(QStringLiteral("yyyy-MM-dd'T'HH:mm:ss.zzz'Z'"));
}

void PFEncoder::fail(int code, const QString &message)
{
    if (!m_error)
        m_error = PFError(code, message);
}

QJsonValue PFEncoder::encode(const QVariant &value)
{
    const QMetaType type = value.metaType();
    if (!value.isValid() || type == QMetaType::fromType<std::nullptr_t>())
        return QJsonValue::Null;
    if (type == QMetaType::fromType<QDateTime>()) {
        QJsonObject date = typed("Date");
        date.insert(QStringLiteral("iso"), encodeDate(value.toDateTime()));
        return date;
    }
    if (type == QMetaType::fromType<PFGeoPoint>()) {
        const auto point = value.value<PFGeoPoint>();
        QJsonObject geo = typed("GeoPoint");
        geo.insert(QStringLiteral("latitude"), point.latitude());
        geo.insert(QStringLiteral("longitude"), point.longitude());
        return geo;
    }
    if (type == QMetaType::fromType<PFFileObjectPtr>()) {
        const auto file = value.value<PFFileObjectPtr>();
        if (!file)
            return QJsonValue::Null;
        if (file->url().isEmpty())
            fail(PFError::MissingObjectId,
                 QCoreApplication::translate("PFError", "A file must be uploaded before a record refers to it."));
        QJsonObject encoded = typed("File");
        encoded.insert(QStringLiteral("name"), file->name());
        encoded.insert(QStringLiteral("url"), file->url().toString());
        return encoded;
    }
    if (type == QMetaType::fromType<PFObjectPtr>()) {
        const auto object = value.value<PFObjectPtr>();
        if (!object)
            return QJsonValue::Null;
        QJsonObject pointer = typed("Pointer");
        pointer.insert(QStringLiteral("className"), object->className());
        if (!object->objectId().isEmpty()) {
            pointer.insert(QStringLiteral("objectId"), object->objectId());
        } else if (m_unsaved == UnsavedPointers::UseLocalId && !object->state().localId.isEmpty()) {
            pointer.insert(QStringLiteral("localId"), object->state().localId);
        } else {
            fail(PFError::MissingObjectId,
                 QCoreApplication::translate("PFError", "A record must be saved before another refers to it."));
        }
        return pointer;
    }
    if (type == QMetaType::fromType<QByteArray>()) {
        QJsonObject bytes = typed("Bytes");
        bytes.insert(QStringLiteral("base64"), QString::fromLatin1(value.toByteArray().toBase64()));
        return bytes;
    }
    if (type == QMetaType::fromType<QVariantList>() || type == QMetaType::fromType<QStringList>()) {
        QJsonArray array;
        for (const QVariant &item : value.toList())
            array.append(encode(item));
        return array;
    }
    if (type == QMetaType::fromType<QVariantMap>()) {
        QJsonObject map;
        const QVariantMap source = value.toMap();
        for (auto it = source.cbegin(); it != source.cend(); ++it)
            map.insert(it.key(), encode(it.value()));
        return map;
    }
    switch (type.id()) {
    case QMetaType::Bool:
        return value.toBool();
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
        return value.toLongLong();
    case QMetaType::Double:
    case QMetaType::Float:
        return value.toDouble();
    case QMetaType::QString:
        return value.toString();
    default:
        fail(PFError::InvalidJSON, QCoreApplication::translate("PFError", "A value of type %1 cannot be stored.")
                                       .arg(QLatin1String(type.name())));
        return QJsonValue::Null;
    }
}

QJsonObject PFEncoder::encodeOperations(const PFObjectState::Operations &operations)
{
    QJsonObject body;
    for (auto it = operations.cbegin(); it != operations.cend(); ++it) {
        if (it->isDeletion())
            body.insert(it.key(), QJsonObject{{QStringLiteral("__op"), QStringLiteral("Delete")}});
        else
            body.insert(it.key(), encode(it->value()));
    }
    return body;
}

QJsonObject PFEncoder::encodeObject(const PFObjectState &state)
{
    QJsonObject object = typed("Object");
    for (auto it = state.serverData.cbegin(); it != state.serverData.cend(); ++it)
        object.insert(it.key(), encode(it.value()));
    object.insert(QStringLiteral("className"), state.className);
    if (!state.objectId.isEmpty())
        object.insert(QStringLiteral("objectId"), state.objectId);
    if (state.createdAt.isValid())
        object.insert(QStringLiteral("createdAt"), encodeDate(state.createdAt));
    if (state.updatedAt.isValid())
        object.insert(QStringLiteral("updatedAt"), encodeDate(state.updatedAt));
    return object;
}
