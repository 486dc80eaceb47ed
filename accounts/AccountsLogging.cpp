#include "AccountsLogging.h"

Q_LOGGING_CATEGORY(lcAccounts, "vantrel.accounts")
