#include "Parse.h"

#include "PFLogging.h"
#include "ParseCore.h"

namespace {
std::unique_ptr<ParseCore> &instance()
{
    static std::unique_ptr<ParseCore> core;
    return core;
}
} // namespace

void Parse::initializeWithConfiguration(const ParseClientConfiguration &configuration)
{
    qCDebug(lcParseHttp).noquote() << "backend" << configuration.server << "data in"
                                   << configuration.effectiveDataDirectory();
    setCore(std::make_unique<ParseCore>(configuration));
}

ParseCore *Parse::core()
{
    return instance().get();
}

void Parse::setCore(std::unique_ptr<ParseCore> core)
{
    instance() = std::move(core);
}
