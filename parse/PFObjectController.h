#pragma once

#include "PFTypes.h"

#include <QJsonObject>

class ParseCommandRunner;
class PFFileController;

// Saves of records: uploads the new files a record refers to, sends the pending changes as
// one create or update, and takes the server's answer into the record.
class PFObjectController {
public:
    // Runs after a successful save with the server's reply, before the caller's block.
    using ReplyHook = std::function<void(const PFObjectPtr &object, const QJsonObject &reply)>;

    PFObjectController(ParseCommandRunner &runner, PFFileController &files) : m_runner(runner), m_files(files) {}

    void saveObject(const PFObjectPtr &object, const QString &sessionToken, PFBooleanResultBlock block,
                    ReplyHook hook = {});

private:
    void uploadFiles(QList<PFFileObjectPtr> pending, const QString &sessionToken,
                     std::function<void(const PFError *error)> done);
    void sendChanges(const PFObjectPtr &object, const QString &sessionToken, PFBooleanResultBlock block,
                     ReplyHook hook);

    ParseCommandRunner &m_runner;
    PFFileController &m_files;
};
