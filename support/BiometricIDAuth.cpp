#include "BiometricIDAuth.h"

#include "SupportLogging.h"

#include <QCoreApplication>
#include <QMetaObject>

BiometricIDAuth::BiometricIDAuth(Biometrics *context, QObject *parent) : QObject(parent), m_context(context) {}

bool BiometricIDAuth::canEvaluatePolicy() const
{
    return m_context && m_context->canEvaluatePolicy();
}

BiometricIDAuth::BiometricType BiometricIDAuth::biometricType() const
{
    if (!m_context)
        return BiometricType::none;
    switch (m_context->biometryType()) {
    case Biometrics::BiometryType::None:
        return BiometricType::none;
    case Biometrics::BiometryType::TouchID:
        return BiometricType::touchID;
    case Biometrics::BiometryType::FaceID:
        return BiometricType::faceID;
    case Biometrics::BiometryType::OpticID:
        break;
    }
    return BiometricType::unknown;
}

QString BiometricIDAuth::messageForFailure(std::optional<int> code)
{
    if (!code)
        return QStringLiteral("Face ID/Touch ID may not be configured");
    switch (*code) {
    case Biometrics::AuthenticationFailed:
        return QStringLiteral("There was a problem verifying your identity.");
    case Biometrics::UserCancel:
        return QStringLiteral("You pressed cancel.");
    case Biometrics::UserFallback:
        return QStringLiteral("You pressed password.");
    case Biometrics::BiometryNotAvailable:
        return QStringLiteral("Face ID/Touch ID is not available.");
    case Biometrics::BiometryNotEnrolled:
        return QStringLiteral("Face ID/Touch ID is not set up.");
    case Biometrics::BiometryLockout:
        return QStringLiteral("Face ID/Touch ID is locked.");
    default:
        return QStringLiteral("Face ID/Touch ID may not be configured");
    }
}

void BiometricIDAuth::authenticateUser(Completion completion)
{
    if (!completion)
        return;
    if (!m_context) {
        QMetaObject::invokeMethod(
            this, [completion] { completion(messageForFailure(Biometrics::BiometryNotAvailable)); },
            Qt::QueuedConnection);
        return;
    }
    m_context->evaluatePolicy(m_loginReason, [completion](bool success, std::optional<int> code) {
        if (success) {
            // Whatever thread the reader answered on, the screens hear of success on the main one.
            QMetaObject::invokeMethod(
                QCoreApplication::instance(), [completion] { completion(std::nullopt); }, Qt::QueuedConnection);
            return;
        }
        qCInfo(lcSupport) << "biometric check failed with code" << (code ? *code : 0);
        completion(messageForFailure(code));
    });
}
