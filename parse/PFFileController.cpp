#include "PFFileController.h"

#include "PFDispatch.h"
#include "PFFileObject.h"
#include "ParseCommandRunner.h"

void PFFileController::upload(const PFFileObjectPtr &file, const QString &sessionToken, PFBooleanResultBlock block)
{
    if (!file->isDirty()) {
        PFDispatch::later([block] {
            if (block)
                block(true, nullptr);
        });
        return;
    }
    ParseCommand command = ParseCommand::uploadFile(file->name(), file->data(), file->contentType());
    command.sessionToken = sessionToken;
    m_runner.runCommand(command, [file, block](const ParseCommandResult &result) {
        std::optional<PFError> error = result.error;
        const QJsonValue name = result.json.value(QLatin1String("name"));
        const QJsonValue url = result.json.value(QLatin1String("url"));
        if (!error && (!name.isString() || !url.isString()))
            error = PFError::unreadableReply(result.httpStatus);
        if (!error)
            file->didUpload(name.toString(), QUrl(url.toString()));
        if (block)
            block(!error, error ? &*error : nullptr);
    });
}

void PFFileController::download(const PFFileObjectPtr &file, PFDataResultBlock block)
{
    m_runner.runCommand(ParseCommand::downloadFile(file->url()), [file, block](const ParseCommandResult &result) {
        if (result.succeeded())
            file->didDownload(result.data);
        if (block)
            block(result.data, result.error ? &*result.error : nullptr);
    });
}
