#include "PFObjectController.h"

#include "PFDecoder.h"
#include "PFDispatch.h"
#include "PFEncoder.h"
#include "PFFileController.h"
#include "PFFileObject.h"
#include "PFObject.h"
#include "ParseCommandRunner.h"

#include <QUuid>

namespace {
void collectNewFiles(const QVariant &value, QList<PFFileObjectPtr> &files)
{
    if (value.metaType() == QMetaType::fromType<PFFileObjectPtr>()) {
        const auto file = value.value<PFFileObjectPtr>();
        if (file && file->isDirty() && !files.contains(file))
            files.append(file);
    } else if (value.typeId() == QMetaType::QVariantList) {
        for (const QVariant &item : value.toList())
            collectNewFiles(item, files);
    }
}
} // namespace

void PFObjectController::saveObject(const PFObjectPtr &object, const QString &sessionToken, PFBooleanResultBlock block,
                                    ReplyHook hook)
{
    Save save{object, sessionToken, std::move(block), std::move(hook)};
    const auto busy = m_waiting.find(object.get());
    if (busy != m_waiting.end()) {
        busy->append(std::move(save));
        return;
    }
    m_waiting.insert(object.get(), {});
    start(save);
}

void PFObjectController::start(const Save &save)
{
    save.object->willSave();
    // From here on the changes belong to this save; changes made meanwhile wait for the next.
    const PFObjectState::Operations changes = save.object->mutableState().beginSave();
    QList<PFFileObjectPtr> files;
    for (const PFFieldOperation &operation : changes)
        collectNewFiles(operation.value(), files);
    uploadFiles(files, save.sessionToken, [this, save](const PFError *error) {
        if (error)
            finish(save, error);
        else
            sendChanges(save);
    });
}

void PFObjectController::uploadFiles(QList<PFFileObjectPtr> pending, const QString &sessionToken,
                                     std::function<void(const PFError *error)> done)
{
    if (pending.isEmpty()) {
        PFDispatch::later([done] { done(nullptr); });
        return;
    }
    const PFFileObjectPtr file = pending.takeFirst();
    m_files.upload(file, sessionToken, [this, pending, sessionToken, done](bool succeeded, const PFError *error) {
        if (!succeeded)
            done(error);
        else
            uploadFiles(pending, sessionToken, done);
    });
}

void PFObjectController::sendChanges(const Save &save)
{
    const PFObjectState &state = save.object->state();
    PFEncoder encoder;
    const QJsonObject body = encoder.encodeOperations(state.inFlight);
    if (encoder.error()) {
        finish(save, &*encoder.error());
        return;
    }
    ParseCommand command = ParseCommand::saveObject(state.className, state.objectId, body);
    command.sessionToken = save.sessionToken;
    if (state.objectId.isEmpty()) {
        PFObjectState &creating = save.object->mutableState();
        if (creating.createBody != command.body || creating.createRequestId.isEmpty()) {
            creating.createRequestId = QUuid::createUuid().toString(QUuid::WithoutBraces);
            creating.createBody = command.body;
        }
        command.requestId = creating.createRequestId;
    }
    m_runner.runCommand(command, [this, save](ParseCommandResult &result) {
        PFObjectState &saved = save.object->mutableState();
        std::optional<PFError> error = result.error;
        // A retried update the server had applied already (its first answer was lost).
        if (error && error->code() == PFError::DuplicateRequest && !saved.objectId.isEmpty())
            error.reset();
        if (!error) {
            PFObjectState merged = saved;
            PFDecoder decoder;
            decoder.mergeInto(merged, result.json);
            // A create answers with the new id; only a create the server merged into an
            // existing record (an installation found by its installation id) may answer
            // with the update time alone.
            if (merged.objectId.isEmpty() && !result.json.contains(QStringLiteral("updatedAt")))
                error = PFError::unreadableReply(result.httpStatus, QStringLiteral("no record id"));
            else if (decoder.error())
                error = decoder.error();
            else
                saved = std::move(merged);
        }
        if (error) {
            finish(save, &*error);
            return;
        }
        saved.finishSave();
        saved.createRequestId.clear();
        saved.createBody.clear();
        saved.serverData.remove(QStringLiteral("password"));
        if (!saved.updatedAt.isValid())
            saved.updatedAt = saved.createdAt;
        save.object->objectDidSave(result.json);
        if (save.hook)
            save.hook(save.object, result.json);
        finish(save, nullptr);
    });
}

void PFObjectController::finish(const Save &save, const PFError *error)
{
    PFObjectState &state = save.object->mutableState();
    if (error && state.objectId.isEmpty())
        state.abandonSave();
    else if (error)
        state.rollBackSave();
    if (save.block)
        save.block(!error, error);

    QList<Save> &waiting = m_waiting[save.object.get()];
    if (waiting.isEmpty()) {
        m_waiting.remove(save.object.get());
        return;
    }
    const Save next = waiting.takeFirst();
    start(next);
}
