#include "PFDecoder.h"

#include "PFFileObject.h"
#include "PFGeoPoint.h"
#include "PFObject.h"

#include <QCoreApplication>
#include <QJsonArray>

QDateTime PFDecoder::decodeDate(const QString &iso)
{
    QDateTime date = QDateTime::fromString(iso, Qt::ISODateWithMs);
    return date.isValid() ? date.toUTC() : QDateTime();
}

void PFDecoder::malformed(const QString &what)
{
    if (!m_error)
        m_error = PFError(PFError::InvalidJSON,
                          QCoreApplication::translate("PFError", "The server sent a malformed %1.").arg(what));
}

QVariant PFDecoder::decode(const QJsonValue &value)
{
    switch (value.type()) {
    case QJsonValue::Null:
        return QVariant::fromValue(nullptr);
    case QJsonValue::Bool:
        return value.toBool();
    case QJsonValue::Double:
        return value.toDouble();
    case QJsonValue::String:
        return value.toString();
    case QJsonValue::Array: {
        QVariantList list;
        for (const QJsonValue &item : value.toArray())
            list.append(decode(item));
        return list;
    }
    case QJsonValue::Object: {
        const QJsonObject object = value.toObject();
        const QJsonValue type = object.value(QLatin1String("__type"));
        if (type.isString())
            return decodeTyped(type.toString(), object);
        QVariantMap map;
        for (auto it = object.constBegin(); it != object.constEnd(); ++it)
            map.insert(it.key(), decode(it.value()));
        return map;
    }
    case QJsonValue::Undefined:
        break;
    }
    return {};
}

QVariant PFDecoder::decodeTyped(const QString &type, const QJsonObject &json)
{
    if (type == QLatin1String("Date")) {
        const QDateTime date = decodeDate(json.value(QLatin1String("iso")).toString());
        if (!date.isValid()) {
            malformed(QStringLiteral("date"));
            return {};
        }
        return date;
    }
    if (type == QLatin1String("GeoPoint")) {
        const QJsonValue latitude = json.value(QLatin1String("latitude"));
        const QJsonValue longitude = json.value(QLatin1String("longitude"));
        if (!latitude.isDouble() || !longitude.isDouble()) {
            malformed(QStringLiteral("geo point"));
            return {};
        }
        return QVariant::fromValue(PFGeoPoint::geoPointWithLatitude(latitude.toDouble(), longitude.toDouble()));
    }
    if (type == QLatin1String("File")) {
        const QJsonValue name = json.value(QLatin1String("name"));
        if (!name.isString()) {
            malformed(QStringLiteral("file"));
            return {};
        }
        return QVariant::fromValue(
            PFFileObject::fileObjectWithName(name.toString(), QUrl(json.value(QLatin1String("url")).toString())));
    }
    if (type == QLatin1String("Pointer") || type == QLatin1String("Object")) {
        const QJsonValue className = json.value(QLatin1String("className"));
        const QJsonValue objectId = json.value(QLatin1String("objectId"));
        if (!className.isString() || className.toString().isEmpty() || !objectId.isString()) {
            malformed(QStringLiteral("pointer"));
            return {};
        }
        if (type == QLatin1String("Pointer"))
            return QVariant::fromValue(
                PFObject::objectWithoutDataWithClassName(className.toString(), objectId.toString()));
        return QVariant::fromValue(decodeObject(className.toString(), json));
    }
    if (type == QLatin1String("Bytes")) {
        const QJsonValue base64 = json.value(QLatin1String("base64"));
        if (!base64.isString()) {
            malformed(QStringLiteral("byte value"));
            return {};
        }
        return QByteArray::fromBase64(base64.toString().toLatin1());
    }
    // Relations and other types this client does not use are kept as plain maps.
    QVariantMap map;
    for (auto it = json.constBegin(); it != json.constEnd(); ++it)
        map.insert(it.key(), decode(it.value()));
    return map;
}

PFObjectPtr PFDecoder::decodeObject(const QString &className, const QJsonObject &json)
{
    PFObjectPtr object = PFSubclassRegistry::shared().make(className);
    mergeInto(object->mutableState(), json);
    if (object->objectId().isEmpty())
        malformed(QStringLiteral("record without id"));
    return object;
}

void PFDecoder::mergeInto(PFObjectState &state, const QJsonObject &json)
{
    for (auto it = json.constBegin(); it != json.constEnd(); ++it) {
        const QString &key = it.key();
        const QJsonValue &value = it.value();
        if (key == QLatin1String("objectId")) {
            if (!value.isString())
                malformed(QStringLiteral("record id"));
            else
                state.objectId = value.toString();
        } else if (key == QLatin1String("createdAt") || key == QLatin1String("updatedAt")) {
            const QDateTime date = value.isObject() ? decode(value).toDateTime() : decodeDate(value.toString());
            if (!date.isValid())
                malformed(QStringLiteral("record date"));
            else
                (key == QLatin1String("createdAt") ? state.createdAt : state.updatedAt) = date;
        } else if (key == QLatin1String("__type") || key == QLatin1String("className") ||
                   key == QLatin1String("sessionToken") || key == QLatin1String("password")) {
            // Standard fields of the reply itself; the session token is the user's business.
        } else {
            state.serverData.insert(key, decode(value));
        }
    }
    state.dataAvailable = true;
}
