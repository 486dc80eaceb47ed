#pragma once

#include <QString>
#include <QStringList>
#include <QUrl>

// Where the app finds its backend and the other services it talks to. Defaults suit the
// local backend; a configuration file, environment variables (VANTREL_*) and command-line
// options override them, in that order.
class AppConfiguration {
public:
    static constexpr auto kApplicationId = "u8jzPde0IgxLd6GncfBAepfJBd0Kh8oOOL8dKLzd";
    static constexpr auto kClientKey = "ocJ2isAjIhKtJ0RlgLKOmxgJTeKdNnFRIBXuDL7D";

    QUrl serverUrl{QStringLiteral("http://127.0.0.1:1337")};
    QString applicationId = QString::fromLatin1(kApplicationId);
    QString clientKey = QString::fromLatin1(kClientKey);
    QUrl siteUrl{QStringLiteral("http://127.0.0.1:1337/site/")}; // the operator's web site
    QString administratorEmail = QStringLiteral("admin@vantrel.example");
    QString helpEmail = QStringLiteral("help@vantrel.example");
    QUrl tileUrl;     // web-mercator tiles with {z}/{x}/{y}; empty means the offline basemap
    QUrl geocoderUrl; // a Nominatim-protocol service; empty means the offline geocoder
    QString dataDirectory;

    // A page of the operator's web site, e.g. "termsAndConditions.htm".
    [[nodiscard]] QUrl sitePage(const QString &page) const;

    struct Outcome {
        bool ok = true;
        bool helpRequested = false;
        QString message; // the help text, or what is wrong with the configuration
    };
    // Reads the file, environment and arguments over the defaults, then validates.
    Outcome load(const QStringList &arguments);

    // Empty when valid; otherwise a message naming the setting at fault.
    [[nodiscard]] QString validate() const;

private:
    void applyFile(const QString &path);
    void applyEnvironment();
};
