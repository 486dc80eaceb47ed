#pragma once

#include <QObject>
#include <QString>
#include <functional>
#include <optional>

// The device's biometric check, as the sign-in uses it: is there a reader with something
// enrolled, what kind of reader it is, and one check at a time with a reason the prompt shows.
class Biometrics : public QObject {
    Q_OBJECT
public:
    enum class BiometryType { None, TouchID, FaceID, OpticID };
    Q_ENUM(BiometryType)

    // Why a check failed, with the codes the sign-in screens know.
    enum ErrorCode : int {
        AuthenticationFailed = -1, // the finger did not match
        UserCancel = -2,           // the person cancelled the prompt
        UserFallback = -3,         // the person chose to type the password instead
        SystemCancel = -4,         // the system ended the check (another program took the reader)
        PasscodeNotSet = -5,
        BiometryNotAvailable = -6, // no reader, or it went away
        BiometryNotEnrolled = -7,  // a reader, but nothing enrolled
        BiometryLockout = -8,      // too many failed tries
        Unknown = -1000,           // anything the reader reported that has no code of its own
    };
    Q_ENUM(ErrorCode)

    // success, or the failure's code (none when the failure came without one).
    using Reply = std::function<void(bool success, std::optional<int> errorCode)>;

    explicit Biometrics(QObject *parent = nullptr) : QObject(parent) {}

    // True when a reader is present and has at least one finger enrolled. Also refreshes
    // biometryType().
    [[nodiscard]] virtual bool canEvaluatePolicy() = 0;
    // The kind of reader found by the last availability check.
    [[nodiscard]] virtual BiometryType biometryType() const = 0;
    // Runs one check. The reply comes later, never inside the call, on this object's thread.
    virtual void evaluatePolicy(const QString &localizedReason, Reply reply) = 0;
    // Ends a running check as the person's cancel; its reply reports UserCancel.
    virtual void cancel() = 0;
    [[nodiscard]] virtual bool isEvaluating() const = 0;

Q_SIGNALS:
    // A check is running and waits for a finger; the prompt shows the reason.
    void promptChanged(const QString &reason, bool visible);
};
