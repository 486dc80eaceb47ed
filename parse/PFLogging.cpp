#include "PFLogging.h"

Q_LOGGING_CATEGORY(lcParseHttp, "vantrel.parse.http", QtInfoMsg)
Q_LOGGING_CATEGORY(lcParseStore, "vantrel.parse.store", QtInfoMsg)
Q_LOGGING_CATEGORY(lcParseUser, "vantrel.parse.user", QtInfoMsg)
Q_LOGGING_CATEGORY(lcParseEventually, "vantrel.parse.eventually", QtInfoMsg)
