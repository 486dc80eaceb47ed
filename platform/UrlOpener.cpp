#include "UrlOpener.h"

#include <QDesktopServices>
#include <QLoggingCategory>
#include <QProcess>
#include <QStandardPaths>

Q_LOGGING_CATEGORY(lcUrlOpener, "vantrel.platform.urls")

namespace {

UrlOpener *&sharedInstance()
{
    static UrlOpener *instance = nullptr;
    return instance;
}

} // namespace

UrlOpener *UrlOpener::shared()
{
    static UrlOpener systemOpener;
    UrlOpener *current = sharedInstance();
    return current ? current : &systemOpener;
}

void UrlOpener::setShared(UrlOpener *opener)
{
    sharedInstance() = opener;
}

bool UrlOpener::canOpenURL(const QUrl &url) const
{
    if (!url.isValid() || url.scheme().isEmpty() || url.host().isEmpty())
        return false;
    return handlesScheme(url.scheme().toLower());
}

bool UrlOpener::openURL(const QUrl &url)
{
    if (!canOpenURL(url)) {
        qCInfo(lcUrlOpener) << "no handler for" << url.scheme() << "links";
        return false;
    }
    return QDesktopServices::openUrl(url);
}

bool UrlOpener::handlesScheme(const QString &scheme) const
{
    // Web pages always have a browser behind QDesktopServices (xdg-open on Linux, the
    // system's own opener elsewhere); other schemes need a registered handler.
    if (scheme == QLatin1String("http") || scheme == QLatin1String("https"))
        return true;
#if defined(Q_OS_LINUX)
    const QString xdgMime = QStandardPaths::findExecutable(QStringLiteral("xdg-mime"));
    if (xdgMime.isEmpty())
        return false;
    QProcess query;
    query.start(xdgMime,
                {QStringLiteral("query"), QStringLiteral("default"), QStringLiteral("x-scheme-handler/") + scheme});
    if (!query.waitForFinished(2000))
        return false;
    return query.exitCode() == 0 && !query.readAllStandardOutput().trimmed().isEmpty();
#else
    return true;
#endif
}
