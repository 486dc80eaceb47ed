#include "ShellLogging.h"

Q_LOGGING_CATEGORY(lcReveal, "vantrel.shell.reveal")
Q_LOGGING_CATEGORY(lcMenu, "vantrel.shell.menu")
