#pragma once

#include "Biometrics.h"

#include <QDBusConnection>
#include <QElapsedTimer>

// Fingerprint checks through fprintd (net.reactivated.Fprint) on the system bus. A fingerprint
// reader counts as Touch ID. Five failed tries in a row lock the check for a minute, as a
// phone's reader does, so that a stranger cannot try fingers forever.
class FprintdBiometrics : public Biometrics {
    Q_OBJECT
public:
    static constexpr int kMaxFailedAttempts = 5;
    static constexpr qint64 kLockoutMs = 60000;

    explicit FprintdBiometrics(QDBusConnection bus = QDBusConnection::systemBus(), QObject *parent = nullptr);
    ~FprintdBiometrics() override;

    [[nodiscard]] bool canEvaluatePolicy() override;
    [[nodiscard]] BiometryType biometryType() const override { return m_biometryType; }
    void evaluatePolicy(const QString &localizedReason, Reply reply) override;
    void cancel() override;
    [[nodiscard]] bool isEvaluating() const override { return static_cast<bool>(m_reply); }

    // How long a lockout lasts (tests shorten it).
    void setLockoutDuration(qint64 ms) { m_lockoutMs = ms; }

private Q_SLOTS:
    void onVerifyStatus(const QString &result, bool done);

private:
    [[nodiscard]] QString defaultDevice(QString *errorName = nullptr) const;
    void claimAndVerify();
    void finish(bool success, std::optional<int> errorCode);
    void releaseDevice();
    [[nodiscard]] bool lockedOut() const;
    static int codeForDBusError(const QString &errorName);

    QDBusConnection m_bus;
    BiometryType m_biometryType = BiometryType::None;
    Reply m_reply;
    QString m_reason;
    QString m_devicePath;
    bool m_claimed = false;
    bool m_listening = false;
    int m_failedAttempts = 0;
    QElapsedTimer m_lockedSince;
    qint64 m_lockoutMs = kLockoutMs;
};
