#include "PFObjectController.h"

#include "PFDecoder.h"
#include "PFDispatch.h"
#include "PFEncoder.h"
#include "PFFileController.h"
#include "PFFileObject.h"
#include "PFObject.h"
#include "ParseCommandRunner.h"

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
    QList<PFFileObjectPtr> files;
    for (const PFFieldOperation &operation : object->state().operations)
        collectNewFiles(operation.value(), files);
    uploadFiles(files, sessionToken, [this, object, sessionToken, block, hook](const PFError *error) {
        if (error) {
            if (block)
                block(false, error);
            return;
        }
        sendChanges(object, sessionToken, block, hook);
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

void PFObjectController::sendChanges(const PFObjectPtr &object, const QString &sessionToken, PFBooleanResultBlock block,
                                     ReplyHook hook)
{
    object->willSave();
    PFObjectState &state = object->mutableState();
    PFEncoder encoder;
    const QJsonObject body = encoder.encodeOperations(state.beginSave());
    if (encoder.error()) {
        state.abandonSave();
        if (block)
            block(false, &*encoder.error());
        return;
    }
    ParseCommand command = ParseCommand::saveObject(state.className, state.objectId, body);
    command.sessionToken = sessionToken;
    m_runner.runCommand(command, [object, block, hook](const ParseCommandResult &result) {
        PFObjectState &saved = object->mutableState();
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
            if (merged.objectId.isEmpty() && !result.json.contains(QLatin1String("updatedAt")))
                error = PFError::unreadableReply(result.httpStatus);
            else if (decoder.error())
                error = decoder.error();
            else
                saved = merged;
        }
        if (error) {
            saved.abandonSave();
            if (block)
                block(false, &*error);
            return;
        }
        saved.finishSave();
        saved.serverData.remove(QStringLiteral("password"));
        if (!saved.updatedAt.isValid())
            saved.updatedAt = saved.createdAt;
        object->objectDidSave(result.json);
        if (hook)
            hook(object, result.json);
        if (block)
            block(true, nullptr);
    });
}
