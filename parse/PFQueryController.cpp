#include "PFQueryController.h"

#include "PFDecoder.h"
#include "PFJsonReader.h"
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
        // Query replies can be large: they are read straight into records, without a JSON
        // document in between.
        PFJsonReader reader;
        QVariant reply = reader.read(result.data);
        QVariantMap page = PFJsonReader::takeMap(reply);
        QVariant results = page.take(QStringLiteral("results"));
        if (results.typeId() != QMetaType::QVariantList) {
            const PFError error = PFError::unreadableReply(result.httpStatus);
            block({}, &error);
            return;
        }
        PFDecoder decoder;
        QList<PFObjectPtr> objects;
        QVariantList rows = PFJsonReader::takeList(results);
        objects.reserve(rows.size());
        for (QVariant &item : rows) {
            if (item.typeId() != QMetaType::QVariantMap) {
                const PFError error = PFError::unreadableReply(result.httpStatus);
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
