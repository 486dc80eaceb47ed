#pragma once

#include "PFTypes.h"

class ParseCommandRunner;
class PFQuery;

// Runs queries and turns their results into records of the registered subclasses.
class PFQueryController {
public:
    explicit PFQueryController(ParseCommandRunner &runner) : m_runner(runner) {}

    void findObjects(const PFQuery &query, const QString &sessionToken, PFQueryArrayResultBlock block);

private:
    ParseCommandRunner &m_runner;
};
