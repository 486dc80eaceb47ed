#include "PFDecoder.h"

#include "PFFileObject.h"
#include "PFGeoPoint.h"
#include "PFJsonReader.h"
#include "PFObject.h"

#include <QCoreApplication>

namespace {

// Days from 1970-01-01 to the given day of the proleptic Gregorian calendar.
qint64 daysFromCivil(int year, int month, int day)
{
    year -= month <= 2;
    const int era = (year >= 0 ? year : year - 399) / 400;
    const int yearOfEra = year - era * 400;
    const int dayOfYear = (153 * (month + (month > 2 ? -3 : 9)) + 2) / 5 + day - 1;
    const int dayOfEra = yearOfEra * 365 + yearOfEra / 4 - yearOfEra / 100 + dayOfYear;
    return qint64(era) * 146097 + dayOfEra - 719468;
}

// The server writes every date as "YYYY-MM-DDTHH:MM:SS.mmmZ". Reading that shape by hand is
// many times faster than the general ISO parser, and replies carry several dates per row.
std::optional<QDateTime> decodeServerDate(const QString &iso)
{
    if (iso.size() != 24 || iso.at(4) != u'-' || iso.at(7) != u'-' || iso.at(10) != u'T' || iso.at(13) != u':' ||
        iso.at(16) != u':' || iso.at(19) != u'.' || iso.at(23) != u'Z')
        return std::nullopt;
    auto number = [&](int from, int length) {
        int value = 0;
        for (int i = from; i < from + length; ++i) {
            const char16_t c = iso.at(i).unicode();
            if (c < u'0' || c > u'9')
                return -1;
            value = value * 10 + (c - u'0');
        }
        return value;
    };
    const int year = number(0, 4), month = number(5, 2), day = number(8, 2);
    const int hour = number(11, 2), minute = number(14, 2), second = number(17, 2), millis = number(20, 3);
    if (year < 0 || month < 1 || month > 12 || day < 1 || hour < 0 || hour > 23 || minute < 0 || minute > 59 ||
        second < 0 || second > 59 || millis < 0 || day > QDate(year, month, 1).daysInMonth())
        return std::nullopt;
    const qint64 ms =
        ((daysFromCivil(year, month, day) * 24 + hour) * 60 + minute) * 60000LL + second * 1000LL + millis;
    return QDateTime::fromMSecsSinceEpoch(ms, Qt::UTC);
}

} // namespace

QDateTime PFDecoder::decodeDate(const QString &iso)
{
    if (const std::optional<QDateTime> fast = decodeServerDate(iso))
        return *fast;
    QDateTime date = QDateTime::fromString(iso, Qt::ISODateWithMs);
    return date.isValid() ? date.toUTC() : QDateTime();
}

void PFDecoder::malformed(const QString &what)
{
    if (!m_error)
        m_error = PFError(PFError::InvalidJSON,
                          QCoreApplication::translate("PFError", "The server sent a malformed %1.").arg(what));
}

namespace {

bool isString(const QVariant &v)
{
    return v.typeId() == QMetaType::QString;
}

constexpr qint64 kLargestExactInteger = qint64(1) << 53;

// Numbers as records hold them: double, or the exact integer where a double would round it.
QVariant decodeNumber(const QVariant &value)
{
    if (value.typeId() == QMetaType::LongLong || value.typeId() == QMetaType::Int) {
        const qint64 whole = value.toLongLong();
        if (whole > kLargestExactInteger || whole < -kLargestExactInteger)
            return whole;
    }
    return value.toDouble();
}

} // namespace

QVariant PFDecoder::decode(const QVariant &value)
{
    switch (value.typeId()) {
    case QMetaType::QVariantList: {
        QVariantList list;
        const QVariantList items = value.toList();
        list.reserve(items.size());
        for (const QVariant &item : items)
            list.append(decode(item));
        return list;
    }
    case QMetaType::QVariantMap: {
        const QVariantMap object = value.toMap();
        const QVariant type = object.value(QStringLiteral("__type"));
        if (isString(type))
            return decodeTyped(type.toString(), object);
        QVariantMap map;
        for (auto it = object.constBegin(); it != object.constEnd(); ++it)
            map.insert(it.key(), decode(it.value()));
        return map;
    }
    case QMetaType::Nullptr:
    case QMetaType::Bool:
    case QMetaType::QString:
        return value;
    default:
        return PFJsonReader::isNumber(value) ? decodeNumber(value) : QVariant();
    }
}

QVariant PFDecoder::decodeTyped(const QString &type, const QVariantMap &json)
{
    if (type == QLatin1String("Date")) {
        const QVariant iso = json.value(QStringLiteral("iso"));
        const QDateTime date = isString(iso) ? decodeDate(iso.toString()) : QDateTime();
        if (!date.isValid()) {
            malformed(QStringLiteral("date"));
            return {};
        }
        return date;
    }
    if (type == QLatin1String("GeoPoint")) {
        const QVariant latitude = json.value(QStringLiteral("latitude"));
        const QVariant longitude = json.value(QStringLiteral("longitude"));
        if (!PFJsonReader::isNumber(latitude) || !PFJsonReader::isNumber(longitude)) {
            malformed(QStringLiteral("geo point"));
            return {};
        }
        return QVariant::fromValue(PFGeoPoint::geoPointWithLatitude(latitude.toDouble(), longitude.toDouble()));
    }
    if (type == QLatin1String("File")) {
        const QVariant name = json.value(QStringLiteral("name"));
        if (!isString(name)) {
            malformed(QStringLiteral("file"));
            return {};
        }
        const QVariant url = json.value(QStringLiteral("url"));
        return QVariant::fromValue(
            PFFileObject::fileObjectWithName(name.toString(), QUrl(isString(url) ? url.toString() : QString())));
    }
    if (type == QLatin1String("Pointer") || type == QLatin1String("Object")) {
        const QVariant className = json.value(QStringLiteral("className"));
        const QVariant objectId = json.value(QStringLiteral("objectId"));
        if (!isString(className) || className.toString().isEmpty() || !isString(objectId)) {
            malformed(QStringLiteral("pointer"));
            return {};
        }
        if (type == QLatin1String("Pointer"))
            return QVariant::fromValue(
                PFObject::objectWithoutDataWithClassName(className.toString(), objectId.toString()));
        // One reply describes a record the same way wherever it is included (the sender of many
        // messages, say): all those places share one object.
        const QString identity = className.toString() + u'/' + objectId.toString();
        if (const PFObjectPtr known = m_included.value(identity))
            return QVariant::fromValue(known);
        PFObjectPtr included = decodeObject(className.toString(), json);
        m_included.insert(identity, included);
        return QVariant::fromValue(included);
    }
    if (type == QLatin1String("Bytes")) {
        const QVariant base64 = json.value(QStringLiteral("base64"));
        if (!isString(base64)) {
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

PFObjectPtr PFDecoder::decodeObject(const QString &className, QVariantMap json)
{
    PFObjectPtr object = PFSubclassRegistry::shared().make(className);
    mergeInto(object->mutableState(), std::move(json));
    if (object->objectId().isEmpty())
        malformed(QStringLiteral("record without id"));
    return object;
}

void PFDecoder::mergeInto(PFObjectState &state, QVariantMap json)
{
    // The standard keys of a record and of the reply itself leave the map first.
    if (json.contains(QStringLiteral("objectId"))) {
        const QVariant id = json.take(QStringLiteral("objectId"));
        if (!isString(id))
            malformed(QStringLiteral("record id"));
        else
            state.objectId = id.toString();
    }
    for (QDateTime PFObjectState::*field : {&PFObjectState::createdAt, &PFObjectState::updatedAt}) {
        const QString key =
            field == &PFObjectState::createdAt ? QStringLiteral("createdAt") : QStringLiteral("updatedAt");
        if (!json.contains(key))
            continue;
        const QVariant value = json.take(key);
        const QDateTime date = value.typeId() == QMetaType::QVariantMap ? decode(value).toDateTime()
                               : isString(value)                        ? decodeDate(value.toString())
                                                                        : QDateTime();
        if (!date.isValid())
            malformed(QStringLiteral("record date"));
        else
            state.*field = date;
    }
    // The session token is the user's business, never a value of the record.
    for (const char *key : {"__type", "className", "sessionToken", "password"})
        json.remove(QLatin1String(key));

    // Plain values stay as they are; typed objects and lists are decoded in place.
    for (auto it = json.begin(); it != json.end(); ++it) {
        const int type = it.value().typeId();
        if (type == QMetaType::QVariantMap || type == QMetaType::QVariantList || PFJsonReader::isNumber(it.value()))
            it.value() = decode(it.value());
    }
    if (state.serverData.isEmpty())
        state.serverData = std::move(json);
    else
        state.serverData.insert(json);
    state.dataAvailable = true;
}
