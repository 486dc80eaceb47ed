#pragma once

#include "PFTypes.h"

#include <QVariantMap>

// The backend's cloud functions.
class PFCloud {
public:
    // Calls the function with the parameters as the signed-in user; the block receives the
    // function's result.
    static void callFunctionInBackground(const QString &function, const QVariantMap &parameters, PFIdResultBlock block);
};
