#include "PFCloudController.h"

#include "PFDecoder.h"
#include "PFDispatch.h"
#include "PFEncoder.h"
#include "ParseCommandRunner.h"

void PFCloudController::callFunction(const QString &name, const QVariantMap &parameters, const QString &sessionToken,
                                     PFIdResultBlock block)
{
    PFEncoder encoder;
    const QJsonValue body = encoder.encode(parameters);
    if (encoder.error()) {
        PFDispatch::failLater(block, *encoder.error(), QVariant());
        return;
    }
    ParseCommand command = ParseCommand::callFunction(name, body.toObject());
    command.sessionToken = sessionToken;
    m_runner.runCommand(command, [block](const ParseCommandResult &result) {
        if (!block)
            return;
        if (result.error) {
            block({}, &*result.error);
            return;
        }
        PFDecoder decoder;
        const QVariant value = decoder.decode(result.json.value(QStringLiteral("result")));
        block(value, decoder.error() ? &*decoder.error() : nullptr);
    });
}
