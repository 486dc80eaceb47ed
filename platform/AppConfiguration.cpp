#include "AppConfiguration.h"

#include <QCommandLineParser>
#include <QFileInfo>
#include <QHostAddress>
#include <QProcessEnvironment>
#include <QSettings>
#include <QStandardPaths>

namespace {

bool isLoopback(const QUrl &url)
{
    const QString host = url.host();
    if (host == QLatin1String("localhost"))
        return true;
    const QHostAddress address(host);
    return !address.isNull() && address.isLoopback();
}

// A service URL is acceptable when it is http(s) with a host, and https unless on this machine.
QString checkServiceUrl(const QString &name, const QUrl &url, bool required)
{
    if (url.isEmpty())
        return required ? QStringLiteral("%1 is not set").arg(name) : QString();
    if (!url.isValid() || url.host().isEmpty())
        return QStringLiteral("%1 is not a valid address: %2").arg(name, url.toString());
    if (url.scheme() == QLatin1String("https"))
        return {};
    if (url.scheme() == QLatin1String("http") && isLoopback(url))
        return {};
    if (url.scheme() == QLatin1String("http"))
        return QStringLiteral("%1 must use https outside this machine: %2").arg(name, url.toString());
    return QStringLiteral("%1 must be an http or https address: %2").arg(name, url.toString());
}

QString defaultDataDirectory()
{
    const QString dir = QStandardPaths::writableLocation(QStandardPaths::AppDataLocation);
    return dir.isEmpty() ? QStringLiteral(".vantrel-pro") : dir;
}

} // namespace

QUrl AppConfiguration::sitePage(const QString &page) const
{
    QUrl base = siteUrl;
    if (!base.path().endsWith(u'/'))
        base.setPath(base.path() + u'/');
    return base.resolved(QUrl(page));
}

void AppConfiguration::applyFile(const QString &path)
{
    if (!QFileInfo::exists(path))
        return;
    QSettings file(path, QSettings::IniFormat);
    auto url = [&](const char *key, QUrl &target) {
        if (file.contains(QLatin1String(key)))
            target = QUrl(file.value(QLatin1String(key)).toString());
    };
    auto text = [&](const char *key, QString &target) {
        if (file.contains(QLatin1String(key)))
            target = file.value(QLatin1String(key)).toString();
    };
    url("server", serverUrl);
    text("applicationId", applicationId);
    text("clientKey", clientKey);
    url("site", siteUrl);
    text("administratorEmail", administratorEmail);
    text("helpEmail", helpEmail);
    url("tiles", tileUrl);
    url("geocoder", geocoderUrl);
    text("dataDirectory", dataDirectory);
}

void AppConfiguration::applyEnvironment()
{
    const QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    auto url = [&](const char *name, QUrl &target) {
        if (env.contains(QLatin1String(name)))
            target = QUrl(env.value(QLatin1String(name)));
    };
    auto text = [&](const char *name, QString &target) {
        if (env.contains(QLatin1String(name)))
            target = env.value(QLatin1String(name));
    };
    url("VANTREL_SERVER_URL", serverUrl);
    text("VANTREL_APP_ID", applicationId);
    text("VANTREL_CLIENT_KEY", clientKey);
    url("VANTREL_SITE_URL", siteUrl);
    text("VANTREL_ADMIN_EMAIL", administratorEmail);
    text("VANTREL_HELP_EMAIL", helpEmail);
    url("VANTREL_TILE_URL", tileUrl);
    url("VANTREL_GEOCODER_URL", geocoderUrl);
    text("VANTREL_DATA_DIR", dataDirectory);
}

AppConfiguration::Outcome AppConfiguration::load(const QStringList &arguments)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(
        QStringLiteral("Vantrel PRO: the freelancer's app of the Vantrel newsroom marketplace."));
    const QCommandLineOption help({QStringLiteral("h"), QStringLiteral("help")}, QStringLiteral("Show this help."));
    const QCommandLineOption config(QStringLiteral("config"),
                                    QStringLiteral("Read settings from this INI file (keys as the long options)."),
                                    QStringLiteral("file"));
    const QCommandLineOption server(QStringLiteral("server"),
                                    QStringLiteral("Backend server URL [VANTREL_SERVER_URL]."), QStringLiteral("url"));
    const QCommandLineOption appId(QStringLiteral("application-id"),
                                   QStringLiteral("Backend application id [VANTREL_APP_ID]."), QStringLiteral("id"));
    const QCommandLineOption clientKeyOption(QStringLiteral("client-key"),
                                             QStringLiteral("Backend client key [VANTREL_CLIENT_KEY]."),
                                             QStringLiteral("key"));
    const QCommandLineOption site(QStringLiteral("site"),
                                  QStringLiteral("The operator's web site, for the terms and contact pages "
                                                 "[VANTREL_SITE_URL]."),
                                  QStringLiteral("url"));
    const QCommandLineOption tiles(QStringLiteral("tiles"),
                                   QStringLiteral("Map tile URL with {z}/{x}/{y}; default: the offline world map "
                                                  "[VANTREL_TILE_URL]."),
                                   QStringLiteral("url"));
    const QCommandLineOption geocoder(QStringLiteral("geocoder"),
                                      QStringLiteral("Place look-up service (Nominatim protocol); default: offline "
                                                     "[VANTREL_GEOCODER_URL]."),
                                      QStringLiteral("url"));
    const QCommandLineOption dataDir(QStringLiteral("data-dir"),
                                     QStringLiteral("Where the app keeps its own files [VANTREL_DATA_DIR]."),
                                     QStringLiteral("dir"));
    parser.addOptions({help, config, server, appId, clientKeyOption, site, tiles, geocoder, dataDir});

    Outcome outcome;
    if (!parser.parse(arguments)) {
        outcome.ok = false;
        outcome.message = parser.errorText() + u'\n' + parser.helpText();
        return outcome;
    }
    if (parser.isSet(help)) {
        outcome.helpRequested = true;
        outcome.message = parser.helpText();
        return outcome;
    }

    const QString configDir = QStandardPaths::writableLocation(QStandardPaths::AppConfigLocation);
    applyFile(parser.isSet(config) ? parser.value(config) : configDir + QStringLiteral("/vantrel-pro.conf"));
    applyEnvironment();
    if (parser.isSet(server))
        serverUrl = QUrl(parser.value(server));
    if (parser.isSet(appId))
        applicationId = parser.value(appId);
    if (parser.isSet(clientKeyOption))
        clientKey = parser.value(clientKeyOption);
    if (parser.isSet(site))
        siteUrl = QUrl(parser.value(site));
    if (parser.isSet(tiles))
        tileUrl = QUrl(parser.value(tiles));
    if (parser.isSet(geocoder))
        geocoderUrl = QUrl(parser.value(geocoder));
    if (parser.isSet(dataDir))
        dataDirectory = parser.value(dataDir);
    if (dataDirectory.isEmpty())
        dataDirectory = defaultDataDirectory();

    outcome.message = validate();
    outcome.ok = outcome.message.isEmpty();
    return outcome;
}

QString AppConfiguration::validate() const
{
    QStringList problems;
    for (const QString &p : {checkServiceUrl(QStringLiteral("The backend server"), serverUrl, true),
                             checkServiceUrl(QStringLiteral("The operator's web site"), siteUrl, true),
                             checkServiceUrl(QStringLiteral("The map tile address"), tileUrl, false),
                             checkServiceUrl(QStringLiteral("The place look-up address"), geocoderUrl, false)}) {
        if (!p.isEmpty())
            problems << p;
    }
    if (applicationId.trimmed().isEmpty())
        problems << QStringLiteral("The application id is empty");
    if (clientKey.trimmed().isEmpty())
        problems << QStringLiteral("The client key is empty");
    return problems.join(u'\n');
}
