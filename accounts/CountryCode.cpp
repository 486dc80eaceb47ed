#include "CountryCode.h"

namespace {
const auto kName = QStringLiteral("name");
const auto kDialCode = QStringLiteral("dial_code");
const auto kCode = QStringLiteral("code");

std::optional<QString> textOf(const QJsonObject &object, const QString &key, QString *error)
{
    const auto found = object.constFind(key);
    if (found == object.constEnd()) {
        if (error)
            *error = QStringLiteral("the key \"%1\" is missing").arg(key);
        return std::nullopt;
    }
    if (!found->isString()) {
        if (error)
            *error = QStringLiteral("the key \"%1\" does not hold text").arg(key);
        return std::nullopt;
    }
    return found->toString();
}
} // namespace

std::optional<CountryCode> CountryCode::fromJson(const QJsonValue &value, QString *error)
{
    if (!value.isObject()) {
        if (error)
            *error = QStringLiteral("the entry is not a JSON object");
        return std::nullopt;
    }
    const QJsonObject object = value.toObject();
    const auto name = textOf(object, kName, error);
    if (!name)
        return std::nullopt;
    const auto dialCode = textOf(object, kDialCode, error);
    if (!dialCode)
        return std::nullopt;
    const auto code = textOf(object, kCode, error);
    if (!code)
        return std::nullopt;
    return CountryCode{*name, *dialCode, *code};
}

QJsonObject CountryCode::toJson() const
{
    return QJsonObject{{kName, name}, {kDialCode, dial_code}, {kCode, code}};
}

QString CountryCode::pickerRow() const
{
    return name + QStringLiteral(":  ") + dial_code + QStringLiteral(" : ") + code + QLatin1Char(' ');
}

CountryCode CountryCode::placeholder()
{
    return CountryCode{QStringLiteral("None"), QString(), QString()};
}

bool CountryCode::isPlaceholder() const
{
    return *this == placeholder();
}
