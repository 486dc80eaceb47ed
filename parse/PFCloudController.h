#pragma once

#include "PFTypes.h"

class ParseCommandRunner;

// Calls of the backend's cloud functions.
class PFCloudController {
public:
    explicit PFCloudController(ParseCommandRunner &runner) : m_runner(runner) {}

    void callFunction(const QString &name, const QVariantMap &parameters, const QString &sessionToken,
                      PFIdResultBlock block);

private:
    ParseCommandRunner &m_runner;
};
