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
        const QVariant reply = reader.read(result.data);
        const QVariant results = reply.toMap().value(QStringLiteral("results"));
        if (reply.typeId() != QMetaType::QVariantMap || results.typeId() != QMetaType::QVariantList) {
            const PFError error = PFError::unreadableReply(result.httpStatus);
            block({}, &error);
            return;
        }
        PFDecoder decoder;
        QList<PFObjectPtr> objects;
        const QVariantList rows = results.toList();
        objects.reserve(rows.size());
        for (const QVariant &item : rows) {
            if (item.typeId() != QMetaType::QVariantMap) {
                const PFError error = PFError::unreadableReply(result.httpStatus);
                block({}, &error);
                return;
            }
            objects.append(decoder.decodeObject(className, item.toMap()));
        }
        if (decoder.error()) {
            block({}, &*decoder.error());
            return;
        }
        block(objects, nullptr);
    });
}
