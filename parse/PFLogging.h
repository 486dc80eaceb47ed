#pragma once

#include <QLoggingCategory>

// Logging areas of the backend client. Nothing logged here ever carries a session token,
// a password or the body of a sign-in or sign-up request.
Q_DECLARE_LOGGING_CATEGORY(lcParseHttp)
Q_DECLARE_LOGGING_CATEGORY(lcParseStore)
Q_DECLARE_LOGGING_CATEGORY(lcParseUser)
Q_DECLARE_LOGGING_CATEGORY(lcParseEventually)
