#include "PFError.h"

#include <QCoreApplication>

PFError PFError::connectionFailed(const QString &detail)
{
    return {ConnectionFailed,
            QCoreApplication::translate("PFError", "The connection to the server failed (%1).").arg(detail)};
}

PFError PFError::unreadableReply(int httpStatus, const QString &reason)
{
    return {InvalidJSON, QCoreApplication::translate("PFError", "The server's reply could not be read (HTTP %1: %2).")
                             .arg(httpStatus)
                             .arg(reason)};
}

PFError PFError::notInitialized()
{
    return {NotInitialized, QCoreApplication::translate("PFError", "The backend client has not been set up.")};
}
