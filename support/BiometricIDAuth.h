#pragma once

#include "Biometrics.h"

#include <QObject>
#include <QPointer>
#include <QString>
#include <functional>
#include <optional>

// The biometric check as the sign-in screens use it: whether it can run, what the reader is
// called, and the check itself with its outcome turned into a message for the person
// (none on success).
class BiometricIDAuth : public QObject {
    Q_OBJECT
public:
    enum class BiometricType { none, touchID, faceID, unknown };

    using Completion = std::function<void(std::optional<QString> message)>;

    explicit BiometricIDAuth(Biometrics *context, QObject *parent = nullptr);

    [[nodiscard]] Biometrics *context() const { return m_context; }
    [[nodiscard]] QString loginReason() const { return m_loginReason; }

    [[nodiscard]] bool canEvaluatePolicy() const;
    // The reader's kind after an availability check: none and fingerprint are Touch ID.
    [[nodiscard]] BiometricType biometricType() const;

    // Success arrives on the main thread on a later turn of its event loop; a failure's
    // message is handed over as soon as the reader reports it.
    void authenticateUser(Completion completion);

    // The message for a failed check; `code` is the reader's error code, none when it gave none.
    [[nodiscard]] static QString messageForFailure(std::optional<int> code);

private:
    QPointer<Biometrics> m_context;
    QString m_loginReason = QStringLiteral("Logging in with Touch ID");
};
