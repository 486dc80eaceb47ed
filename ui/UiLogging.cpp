#include "UiLogging.h"

namespace ui {
Q_LOGGING_CATEGORY(lcUi, "vantrel.ui")
Q_LOGGING_CATEGORY(lcPresentation, "vantrel.ui.presentation")
Q_LOGGING_CATEGORY(lcStoryboard, "vantrel.ui.storyboard")
} // namespace ui
