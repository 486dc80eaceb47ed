#pragma once

#include "PFTypes.h"

class ParseCommandRunner;

// Uploads and downloads of stored files.
class PFFileController {
public:
    explicit PFFileController(ParseCommandRunner &runner) : m_runner(runner) {}

    void upload(const PFFileObjectPtr &file, const QString &sessionToken, PFBooleanResultBlock block);
    void download(const PFFileObjectPtr &file, PFDataResultBlock block);

private:
    ParseCommandRunner &m_runner;
};
