#pragma once

#include <QLoggingCategory>

namespace ui {
Q_DECLARE_LOGGING_CATEGORY(lcUi)
Q_DECLARE_LOGGING_CATEGORY(lcPresentation)
Q_DECLARE_LOGGING_CATEGORY(lcStoryboard)
} // namespace ui
