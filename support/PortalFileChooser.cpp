#include "PortalFileChooser.h"

#include "SupportLogging.h"

#include <QDBusArgument>
#include <QDBusConnectionInterface>
#include <QDBusMetaType>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>

namespace {

const QString kService = QStringLiteral("org.freedesktop.portal.Desktop");
const QString kPath = QStringLiteral("/org/freedesktop/portal/desktop");
const QString kFileChooser = QStringLiteral("org.freedesktop.portal.FileChooser");
const QString kRequest = QStringLiteral("org.freedesktop.portal.Request");

// The portal's filter: a name and its rules, each a glob (0) or a MIME type (1): a(sa(us)).
struct FilterRule {
    uint kind = 1;
    QString pattern;
};
struct Filter {
    QString name;
    QList<FilterRule> rules;
};

QDBusArgument &operator<<(QDBusArgument &argument, const FilterRule &rule)
{
    argument.beginStructure();
    argument << rule.kind << rule.pattern;
    argument.endStructure();
    return argument;
}

const QDBusArgument &operator>>(const QDBusArgument &argument, FilterRule &rule)
{
    argument.beginStructure();
    argument >> rule.kind >> rule.pattern;
    argument.endStructure();
    return argument;
}

QDBusArgument &operator<<(QDBusArgument &argument, const Filter &filter)
{
    argument.beginStructure();
    argument << filter.name << filter.rules;
    argument.endStructure();
    return argument;
}

const QDBusArgument &operator>>(const QDBusArgument &argument, Filter &filter)
{
    argument.beginStructure();
    argument >> filter.name >> filter.rules;
    argument.endStructure();
    return argument;
}

} // namespace

Q_DECLARE_METATYPE(FilterRule)
Q_DECLARE_METATYPE(Filter)

PortalFileChooser::PortalFileChooser(const QDBusConnection &bus, QObject *parent) : QObject(parent), m_bus(bus)
{
    qDBusRegisterMetaType<FilterRule>();
    qDBusRegisterMetaType<QList<FilterRule>>();
    qDBusRegisterMetaType<Filter>();
    qDBusRegisterMetaType<QList<Filter>>();
}

bool PortalFileChooser::isAvailable() const
{
    QDBusConnectionInterface *bus = m_bus.isConnected() ? m_bus.interface() : nullptr;
    if (!bus)
        return false;
    if (bus->isServiceRegistered(kService))
        return true;
    const QStringList activatable = bus->activatableServiceNames();
    return activatable.contains(kService);
}

void PortalFileChooser::openFile(const QString &title, const QStringList &mimeTypes, Completion completion)
{
    if (m_completion || !m_bus.isConnected()) {
        completion(Outcome::Failed, {});
        return;
    }
    m_completion = std::move(completion);

    // The answer comes as a signal on a request object whose path the token decides: listen
    // there before asking, so that a quick answer is not missed.
    const QString token = QStringLiteral("vantrel%1").arg(++m_requests);
    QString sender = m_bus.baseService().mid(1);
    sender.replace(QLatin1Char('.'), QLatin1Char('_'));
    listen(kPath + QStringLiteral("/request/") + sender + QLatin1Char('/') + token);

    Filter pictures{QStringLiteral("Pictures"), {}};
    for (const QString &type : mimeTypes)
        pictures.rules.append({1, type});
    const QVariantMap options{{QStringLiteral("handle_token"), token},
                              {QStringLiteral("modal"), true},
                              {QStringLiteral("multiple"), false},
                              {QStringLiteral("filters"), QVariant::fromValue(QList<Filter>{pictures})},
                              {QStringLiteral("current_filter"), QVariant::fromValue(pictures)}};
    QDBusMessage call = QDBusMessage::createMethodCall(kService, kPath, kFileChooser, QStringLiteral("OpenFile"));
    call << QString() << title << options;
    auto *watcher = new QDBusPendingCallWatcher(m_bus.asyncCall(call), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this](QDBusPendingCallWatcher *finished) {
        finished->deleteLater();
        const QDBusPendingReply<QDBusObjectPath> reply = *finished;
        if (reply.isError()) {
            qCInfo(lcSupport) << "the desktop's file chooser cannot ask:" << reply.error().message();
            finish(Outcome::Failed);
            return;
        }
        // Older portals choose their own path.
        if (m_completion && reply.value().path() != m_requestPath)
            listen(reply.value().path());
    });
}

void PortalFileChooser::listen(const QString &requestPath)
{
    if (!m_requestPath.isEmpty())
        m_bus.disconnect(kService, m_requestPath, kRequest, QStringLiteral("Response"), this,
                         SLOT(response(uint, QVariantMap)));
    m_requestPath = requestPath;
    if (!m_requestPath.isEmpty())
        m_bus.connect(kService, m_requestPath, kRequest, QStringLiteral("Response"), this,
                      SLOT(response(uint, QVariantMap)));
}

void PortalFileChooser::response(uint code, const QVariantMap &results)
{
    if (!m_completion)
        return;
    const QStringList uris = results.value(QStringLiteral("uris")).toStringList();
    if (code == 0 && !uris.isEmpty())
        finish(Outcome::Picked, QUrl(uris.first()));
    else if (code == 1 || code == 0)
        finish(Outcome::Cancelled);
    else
        finish(Outcome::Failed);
}

void PortalFileChooser::finish(Outcome outcome, const QUrl &file)
{
    listen({});
    Completion completion = std::exchange(m_completion, {});
    if (completion)
        completion(outcome, file);
}
