#include "PFQueryController.h"

#include "PFDecoder.h"
#include "PFJsonReader.h"
#include "PFQuery.h"
#include "ParseCommandRunner.h"

void PFQueryController::findObjects(const PFQuery &query, const QString &sessionToken, PFQueryArrayResultBlock block)
{
    ParseCommand command = ParseCommand::findObjects(query.parseClassName(), query.parameters());
    command.sessionToken = sessionToken;
    m_runner.runCommand(command, [className = query.parseClassName(), block](ParseCommandResult &result) {
        if (!block)
            return;
        if (result.error) {
            block({}, &*result.error);
            return;
        }
        // The rows are taken out of the reply, not copied: pages can be large.
        QVariant results = result.json.take(QStringLiteral("results"));
        QVariantList rows = PFJsonReader::takeList(results);
        if (results.typeId() != QMetaType::QVariantList) {
            const PFError error = PFError::unreadableReply(result.httpStatus, QStringLiteral("no list of results"));
            block({}, &error);
            return;
        }
        PFDecoder decoder;
        QList<PFObjectPtr> objects;
        objects.reserve(rows.size());
        for (QVariant &item : rows) {
            if (item.typeId() != QMetaType::QVariantMap) {
                const PFError error = PFError::unreadableReply(result.httpStatus, QStringLiteral("a result is not a record"));
                block({}, &error);
                return;
            }
            objects.append(decoder.decodeObject(className, PFJsonReader::takeMap(item)));
        }
        if (decoder.error()) {
            block({}, &*decoder.error());
            return;
        }
        block(objects, nullptr);
    });
}
