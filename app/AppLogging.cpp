#include "AppLogging.h"

Q_LOGGING_CATEGORY(lcApp, "vantrel.app")
