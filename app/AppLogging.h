#pragma once

#include <QLoggingCategory>

// The launch's console lines.
Q_DECLARE_LOGGING_CATEGORY(lcApp)
