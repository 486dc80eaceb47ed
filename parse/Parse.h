#pragma once

#include "ParseClientConfiguration.h"

#include <memory>

class ParseCore;

// Entry point of the backend client: set up once at start-up; records, queries, users, files
// and cloud calls then reach the server through it.
class Parse {
public:
    static void initializeWithConfiguration(const ParseClientConfiguration &configuration);
    // The wired client, or null before initialisation.
    [[nodiscard]] static ParseCore *core();
    // Replaces the client (tests: a fresh one per case, or one around a fake runner); null tears it down.
    static void setCore(std::unique_ptr<ParseCore> core);
};
