#include "FprintdBiometrics.h"

#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QLoggingCategory>
#include <QTimer>

Q_LOGGING_CATEGORY(lcBiometrics, "vantrel.platform.biometrics")

namespace {
const auto kService = QStringLiteral("net.reactivated.Fprint");
const auto kManagerPath = QStringLiteral("/net/reactivated/Fprint/Manager");
const auto kManagerInterface = QStringLiteral("net.reactivated.Fprint.Manager");
const auto kDeviceInterface = QStringLiteral("net.reactivated.Fprint.Device");
constexpr int kCallTimeoutMs = 3000;
// fprintd's user name argument: empty means the user who calls.
const QString kCallingUser;
} // namespace

FprintdBiometrics::FprintdBiometrics(QDBusConnection bus, QObject *parent) : Biometrics(parent), m_bus(std::move(bus))
{
}

FprintdBiometrics::~FprintdBiometrics()
{
    if (m_reply) {
        m_reply = {};
        releaseDevice();
    }
}

int FprintdBiometrics::codeForDBusError(const QString &errorName)
{
    if (errorName == QLatin1String("net.reactivated.Fprint.Error.NoEnrolledPrints"))
        return BiometryNotEnrolled;
    if (errorName == QLatin1String("net.reactivated.Fprint.Error.NoSuchDevice") ||
        errorName == QLatin1String("org.freedesktop.DBus.Error.ServiceUnknown") ||
        errorName == QLatin1String("org.freedesktop.DBus.Error.NameHasNoOwner") ||
        errorName == QLatin1String("org.freedesktop.DBus.Error.UnknownObject") ||
        errorName == QLatin1String("org.freedesktop.DBus.Error.Disconnected") ||
        errorName == QLatin1String("org.freedesktop.DBus.Error.NoReply"))
        return BiometryNotAvailable;
    if (errorName == QLatin1String("net.reactivated.Fprint.Error.AlreadyInUse"))
        return SystemCancel;
    return Unknown;
}

QString FprintdBiometrics::defaultDevice(QString *errorName) const
{
    if (!m_bus.isConnected()) {
        if (errorName)
            *errorName = QStringLiteral("org.freedesktop.DBus.Error.Disconnected");
        return {};
    }
    const QDBusMessage call =
        QDBusMessage::createMethodCall(kService, kManagerPath, kManagerInterface, QStringLiteral("GetDefaultDevice"));
    const QDBusMessage reply = m_bus.call(call, QDBus::Block, kCallTimeoutMs);
    if (reply.type() != QDBusMessage::ReplyMessage || reply.arguments().isEmpty()) {
        if (errorName)
            *errorName = reply.errorName();
        return {};
    }
    return qvariant_cast<QDBusObjectPath>(reply.arguments().constFirst()).path();
}

bool FprintdBiometrics::lockedOut() const
{
    return m_lockedSince.isValid() && !m_lockedSince.hasExpired(m_lockoutMs);
}

bool FprintdBiometrics::canEvaluatePolicy()
{
    const QString device = defaultDevice();
    m_biometryType = device.isEmpty() ? BiometryType::None : BiometryType::TouchID;
    if (device.isEmpty() || lockedOut())
        return false;
    QDBusMessage call =
        QDBusMessage::createMethodCall(kService, device, kDeviceInterface, QStringLiteral("ListEnrolledFingers"));
    call << kCallingUser;
    const QDBusMessage reply = m_bus.call(call, QDBus::Block, kCallTimeoutMs);
    if (reply.type() != QDBusMessage::ReplyMessage || reply.arguments().isEmpty())
        return false;
    return !reply.arguments().constFirst().toStringList().isEmpty();
}

void FprintdBiometrics::evaluatePolicy(const QString &localizedReason, Reply reply)
{
    if (!reply)
        return;
    if (m_reply) {
        // One check at a time; a second request fails without disturbing the first.
        QTimer::singleShot(0, this, [reply] { reply(false, SystemCancel); });
        return;
    }
    if (lockedOut()) {
        QTimer::singleShot(0, this, [reply] { reply(false, BiometryLockout); });
        return;
    }
    m_lockedSince.invalidate();
    m_reply = std::move(reply);
    m_reason = localizedReason;
    QString errorName;
    m_devicePath = defaultDevice(&errorName);
    if (m_devicePath.isEmpty()) {
        qCInfo(lcBiometrics) << "no fingerprint reader:" << errorName;
        QTimer::singleShot(0, this, [this, errorName] { finish(false, codeForDBusError(errorName)); });
        return;
    }
    claimAndVerify();
}

void FprintdBiometrics::claimAndVerify()
{
    QDBusMessage claim =
        QDBusMessage::createMethodCall(kService, m_devicePath, kDeviceInterface, QStringLiteral("Claim"));
    claim << kCallingUser;
    auto *claiming = new QDBusPendingCallWatcher(m_bus.asyncCall(claim, kCallTimeoutMs), this);
    connect(claiming, &QDBusPendingCallWatcher::finished, this, [this](QDBusPendingCallWatcher *w) {
        w->deleteLater();
        if (!m_reply)
            return;
        if (w->isError()) {
            qCInfo(lcBiometrics) << "the reader could not be claimed:" << w->error().name();
            finish(false, codeForDBusError(w->error().name()));
            return;
        }
        m_claimed = true;
        m_listening = m_bus.connect(kService, m_devicePath, kDeviceInterface, QStringLiteral("VerifyStatus"), this,
                                    SLOT(onVerifyStatus(QString, bool)));
        QDBusMessage start =
            QDBusMessage::createMethodCall(kService, m_devicePath, kDeviceInterface, QStringLiteral("VerifyStart"));
        start << QStringLiteral("any");
        auto *starting = new QDBusPendingCallWatcher(m_bus.asyncCall(start, kCallTimeoutMs), this);
        connect(starting, &QDBusPendingCallWatcher::finished, this, [this](QDBusPendingCallWatcher *s) {
            s->deleteLater();
            if (!m_reply)
                return;
            if (s->isError()) {
                qCInfo(lcBiometrics) << "the check could not start:" << s->error().name();
                finish(false, codeForDBusError(s->error().name()));
                return;
            }
            Q_EMIT promptChanged(m_reason, true);
        });
    });
}

void FprintdBiometrics::onVerifyStatus(const QString &result, bool done)
{
    if (!m_reply)
        return;
    qCDebug(lcBiometrics) << "reader says" << result << (done ? "(done)" : "");
    if (result == QLatin1String("verify-match")) {
        m_failedAttempts = 0;
        finish(true, std::nullopt);
        return;
    }
    if (result == QLatin1String("verify-no-match")) {
        if (++m_failedAttempts >= kMaxFailedAttempts) {
            m_failedAttempts = 0;
            m_lockedSince.start();
        }
        finish(false, AuthenticationFailed);
        return;
    }
    if (result == QLatin1String("verify-disconnected")) {
        finish(false, BiometryNotAvailable);
        return;
    }
    // Retry prompts (too short, not centred, remove and retry) keep the check going.
    if (done || result == QLatin1String("verify-unknown-error"))
        finish(false, Unknown);
}

void FprintdBiometrics::cancel()
{
    if (m_reply)
        finish(false, UserCancel);
}

void FprintdBiometrics::finish(bool success, std::optional<int> errorCode)
{
    Reply reply = std::move(m_reply);
    m_reply = {};
    releaseDevice();
    Q_EMIT promptChanged(m_reason, false);
    if (reply)
        reply(success, errorCode);
}

void FprintdBiometrics::releaseDevice()
{
    if (m_listening) {
        m_bus.disconnect(kService, m_devicePath, kDeviceInterface, QStringLiteral("VerifyStatus"), this,
                         SLOT(onVerifyStatus(QString, bool)));
        m_listening = false;
    }
    if (!m_claimed)
        return;
    m_claimed = false;
    // Stopping a check that already ended is refused by fprintd; the release is what matters.
    m_bus.asyncCall(
        QDBusMessage::createMethodCall(kService, m_devicePath, kDeviceInterface, QStringLiteral("VerifyStop")));
    m_bus.asyncCall(
        QDBusMessage::createMethodCall(kService, m_devicePath, kDeviceInterface, QStringLiteral("Release")));
}
