#include "PFCloud.h"

#include "PFDispatch.h"
#include "PFError.h"
#include "Parse.h"
#include "ParseCore.h"

void PFCloud::callFunctionInBackground(const QString &function, const QVariantMap &parameters, PFIdResultBlock block)
{
    ParseCore *core = Parse::core();
    if (!core) {
        PFDispatch::failLater(block, PFError::notInitialized(), QVariant());
        return;
    }
    core->cloudController().callFunction(function, parameters, core->sessionToken(), std::move(block));
}
