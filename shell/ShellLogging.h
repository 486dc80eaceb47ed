#pragma once

#include <QLoggingCategory>

Q_DECLARE_LOGGING_CATEGORY(lcReveal)
Q_DECLARE_LOGGING_CATEGORY(lcMenu)
