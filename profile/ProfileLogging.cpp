#include "ProfileLogging.h"

Q_LOGGING_CATEGORY(lcProfile, "vantrel.profile")
