#include "SupportLogging.h"

Q_LOGGING_CATEGORY(lcSupport, "vantrel.support")
