#include "ParseClientConfiguration.h"

#include <QStandardPaths>

ParseClientConfiguration
ParseClientConfiguration::configurationWithBlock(const std::function<void(ParseClientConfiguration &)> &block)
{
    ParseClientConfiguration configuration;
    if (block)
        block(configuration);
    return configuration;
}

QUrl ParseClientConfiguration::endpoint(const QString &path, const QUrlQuery &query) const
{
    QUrl url(server);
    QString base = url.path();
    while (base.endsWith(u'/'))
        base.chop(1);
    url.setPath(base + path, QUrl::TolerantMode);
    url.setQuery(query);
    return url;
}

QString ParseClientConfiguration::effectiveDataDirectory() const
{
    return dataDirectory.isEmpty() ? QStandardPaths::writableLocation(QStandardPaths::AppDataLocation) : dataDirectory;
}
