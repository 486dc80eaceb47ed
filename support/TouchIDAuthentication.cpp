#include "TouchIDAuthentication.h"

TouchIDAuthentication::TouchIDAuthentication() = default;
