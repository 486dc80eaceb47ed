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
    command.requestId = file->uploadRequestId();
    m_runner.runCommand(command, [file, block](const ParseCommandResult &result) {
        std::optional<PFError> error = result.error;
        const QString name = result.string(QStringLiteral("name"));
        const QString url = result.string(QStringLiteral("url"));
        if (!error && (name.isEmpty() || url.isEmpty()))
            error = PFError::unreadableReply(result.httpStatus, QStringLiteral("no file name or URL"));
        if (!error)
            file->didUpload(name, QUrl(url));
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
