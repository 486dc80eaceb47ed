#pragma once

#include "PFTypes.h"

#include <QHash>
#include <QList>
#include <QVariantMap>

class ParseCommandRunner;
class PFFileController;

// Saves of records: uploads the new files a record refers to, sends the pending changes as
// one create or update, and takes the server's answer into the record.
//
// Saves of one record never overlap: a save asked for while another of the same record is
// under way waits for it, then sends the changes pending by then, so each change belongs to
// exactly one save. A failed save of a record the server has rolls its own changes back to
// the server's values and reports the failure to its caller (whose form still holds what the
// user typed), so they never go out with a later, unrelated save. A failed create keeps its
// changes pending: the record exists nowhere else, and its next save is the same create.
class PFObjectController {
public:
    // Runs after a successful save with the server's reply, before the caller's block.
    using ReplyHook = std::function<void(const PFObjectPtr &object, const QVariantMap &reply)>;

    PFObjectController(ParseCommandRunner &runner, PFFileController &files) : m_runner(runner), m_files(files) {}

    void saveObject(const PFObjectPtr &object, const QString &sessionToken, PFBooleanResultBlock block,
                    ReplyHook hook = {});

private:
    struct Save {
        PFObjectPtr object;
        QString sessionToken;
        PFBooleanResultBlock block;
        ReplyHook hook;
    };
    void start(const Save &save);
    void uploadFiles(QList<PFFileObjectPtr> pending, const QString &sessionToken,
                     std::function<void(const PFError *error)> done);
    void sendChanges(const Save &save);
    void finish(const Save &save, const PFError *error);

    ParseCommandRunner &m_runner;
    PFFileController &m_files;
    // Records with a save under way, and the saves waiting behind it.
    QHash<const PFObject *, QList<Save>> m_waiting;
};
