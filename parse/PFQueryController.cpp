#include "PFQueryController.h"

#include "PFDecoder.h"
#include "PFQuery.h"
#include "ParseCommandRunner.h"

#include <QJsonArray>

void PFQueryController::findObjects(const PFQuery &query, const QString &sessionToken, PFQueryArrayResultBlock block)
{
    ParseCommand command = ParseCommand::findObjects(query.parseClassName(), query.parameters());
    command.sessionToken = sessionToken;
    m_runner.runCommand(command, [className = query.parseClassName(), block](const ParseCommandResult &result) {
        if (!block)
            return;
        if (result.error) {
            block({}, &*result.error);
            return;
        }
        const QJsonValue results = result.json.value(QLatin1String("results"));
        if (!results.isArray()) {
            const PFError error = PFError::unreadableReply(result.httpStatus);
            block({}, &error);
            return;
        }
        PFDecoder decoder;
        QList<PFObjectPtr> objects;
        for (const QJsonValue &item : results.toArray()) {
            if (!item.isObject()) {
                const PFError error = PFError::unreadableReply(result.httpStatus);
                block({}, &error);
                return;
            }
            objects.append(decoder.decodeObject(className, item.toObject()));
        }
        if (decoder.error()) {
            block({}, &*decoder.error());
            return;
        }
        block(objects, nullptr);
    });
}
