#include "DialCodes.h"

#include "AccountsLogging.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonParseError>

namespace DialCodes {

QList<CountryCode> load()
{
    return load(QString::fromLatin1(kResourcePath));
}

QList<CountryCode> load(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        qCWarning(lcAccounts).noquote() << "The dialling-code list" << path << "cannot be read:" << file.errorString();
        return {};
    }
    QJsonParseError parseError;
    const QJsonDocument document = QJsonDocument::fromJson(file.readAll(), &parseError);
    if (parseError.error != QJsonParseError::NoError) {
        qCWarning(lcAccounts).noquote() << "The dialling-code list" << path
                                        << "is not valid JSON:" << parseError.errorString() << "at offset"
                                        << parseError.offset;
        return {};
    }
    if (!document.isArray()) {
        qCWarning(lcAccounts).noquote() << "The dialling-code list" << path << "is not a JSON array";
        return {};
    }

    const QJsonArray entries = document.array();
    QList<CountryCode> countries;
    countries.reserve(entries.size());
    for (qsizetype i = 0; i < entries.size(); ++i) {
        QString error;
        if (std::optional<CountryCode> country = CountryCode::fromJson(entries.at(i), &error))
            countries.append(std::move(*country));
        else
            qCWarning(lcAccounts).noquote()
                << "The dialling-code list" << path << "entry" << i << "is left out:" << error;
    }
    return countries;
}

QList<CountryCode> withPlaceholder(QList<CountryCode> countries)
{
    countries.prepend(CountryCode::placeholder());
    return countries;
}

QStringList pickerRows(const QList<CountryCode> &countries)
{
    QStringList rows;
    rows.reserve(countries.size());
    for (const CountryCode &country : countries)
        rows.append(country.pickerRow());
    return rows;
}

QStringList countryNames(const QList<CountryCode> &countries)
{
    QStringList names;
    names.reserve(countries.size());
    for (const CountryCode &country : countries) {
        if (!country.isPlaceholder())
            names.append(country.name);
    }
    return names;
}

} // namespace DialCodes
