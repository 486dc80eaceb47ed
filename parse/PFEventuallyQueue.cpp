#include "PFEventuallyQueue.h"

#include "PFDataStore.h"
#include "PFDecoder.h"
#include "PFDispatch.h"
#include "PFEncoder.h"
#include "PFLogging.h"
#include "PFObject.h"
#include "ParseCommandRunner.h"

#include <QCoreApplication>
#include <QJsonDocument>
#include <QUuid>

namespace {
const QString kRequestId = QStringLiteral("requestId");
const QString kClassName = QStringLiteral("className");
const QString kObjectId = QStringLiteral("objectId");
const QString kLocalId = QStringLiteral("localId");
const QString kBody = QStringLiteral("body");

QString newId()
{
    return QUuid::createUuid().toString(QUuid::WithoutBraces);
}
} // namespace

PFEventuallyQueue::PFEventuallyQueue(ParseCommandRunner &runner, PFDataStore &store,
                                     std::function<QString()> sessionToken, int retryIntervalMs, QObject *parent)
    : QObject(parent), m_runner(runner), m_store(store), m_sessionToken(std::move(sessionToken))
{
    m_retryTimer.setSingleShot(true);
    m_retryTimer.setInterval(retryIntervalMs);
    connect(&m_retryTimer, &QTimer::timeout, this, &PFEventuallyQueue::resume);
    // Any answer from the server means it can be reached again: no need to wait for the timer.
    connect(&m_runner, &ParseCommandRunner::serverReached, this, [this] {
        if (m_retryTimer.isActive()) {
            m_retryTimer.stop();
            resume();
        }
    });
    load();
    if (!m_entries.isEmpty()) {
        qCInfo(lcParseEventually) << m_entries.size() << "saves waiting from an earlier run";
        QTimer::singleShot(0, this, &PFEventuallyQueue::resume);
    }
}

void PFEventuallyQueue::load()
{
    const std::optional<QByteArray> contents = m_store.read(fileName());
    if (!contents)
        return;
    const QJsonObject journal = QJsonDocument::fromJson(*contents).object();
    const QJsonValue entries = journal.value(QLatin1String("entries"));
    if (!entries.isArray()) {
        qCWarning(lcParseEventually) << "the journal of pending saves is unreadable and is set aside";
        m_store.write(fileName() + QStringLiteral(".unreadable"), *contents);
        return;
    }
    for (const QJsonValue &entry : entries.toArray()) {
        const QJsonObject e = entry.toObject();
        if (e.value(kRequestId).isString() && e.value(kClassName).isString() && e.value(kBody).isObject() &&
            (e.value(kObjectId).isString() || e.value(kLocalId).isString()))
            m_entries.append(e);
        else
            qCWarning(lcParseEventually) << "a malformed pending save is dropped";
    }
    m_localIds = journal.value(QLatin1String("localIds")).toObject();
}

bool PFEventuallyQueue::persist()
{
    if (m_entries.isEmpty())
        return m_store.remove(fileName());
    const QJsonObject journal{{QStringLiteral("entries"), m_entries}, {QStringLiteral("localIds"), m_localIds}};
    return m_store.write(fileName(), QJsonDocument(journal).toJson(QJsonDocument::Compact));
}

void PFEventuallyQueue::enqueueSave(const PFObjectPtr &object, PFBooleanResultBlock block)
{
    PFObjectState &state = object->mutableState();
    if (state.objectId.isEmpty() && state.localId.isEmpty())
        state.localId = newId();
    PFEncoder encoder(PFEncoder::UnsavedPointers::UseLocalId);
    const QJsonObject body = encoder.encodeOperations(state.operations);
    if (encoder.error()) {
        PFDispatch::failLater(block, *encoder.error(), false);
        return;
    }
    QJsonObject entry{{kRequestId, newId()}, {kClassName, state.className}, {kBody, body}};
    if (state.objectId.isEmpty())
        entry.insert(kLocalId, state.localId);
    else
        entry.insert(kObjectId, state.objectId);
    m_entries.append(entry);
    if (!persist()) {
        m_entries.removeLast();
        PFDispatch::failLater(block,
                              PFError(PFError::OtherCause,
                                      QCoreApplication::translate("PFError", "The save could not be kept for later.")),
                              false);
        return;
    }
    // The record reads as saved from now on; the journal carries its changes.
    state.apply(state.operations);
    state.operations.clear();
    if (!state.localId.isEmpty())
        m_localObjects.insert(state.localId, object);
    if (block)
        m_blocks.insert(entry.value(kRequestId).toString(), std::move(block));
    QTimer::singleShot(0, this, &PFEventuallyQueue::resume);
}

void PFEventuallyQueue::resume()
{
    if (!m_sending && !m_retryTimer.isActive())
        sendNext();
}

bool PFEventuallyQueue::resolveLocalIds(QJsonValue &value) const
{
    if (value.isArray()) {
        QJsonArray array = value.toArray();
        for (qsizetype i = 0; i < array.size(); ++i) {
            QJsonValue resolved = array.at(i);
            if (!resolveLocalIds(resolved))
                return false;
            array.replace(i, resolved);
        }
        value = array;
    } else if (value.isObject()) {
        QJsonObject object = value.toObject();
        if (object.value(QLatin1String("__type")) == QLatin1String("Pointer") && object.contains(kLocalId)) {
            const QJsonValue objectId = m_localIds.value(object.value(kLocalId).toString());
            if (!objectId.isString())
                return false;
            object.remove(kLocalId);
            object.insert(kObjectId, objectId);
        } else {
            for (auto it = object.begin(); it != object.end(); ++it) {
                QJsonValue resolved = it.value();
                if (!resolveLocalIds(resolved))
                    return false;
                it.value() = resolved;
            }
        }
        value = object;
    }
    return true;
}

void PFEventuallyQueue::sendNext()
{
    if (m_entries.isEmpty()) {
        Q_EMIT drained();
        return;
    }
    const QJsonObject entry = m_entries.first().toObject();
    const QString localId = entry.value(kLocalId).toString();
    const QString objectId =
        localId.isEmpty() ? entry.value(kObjectId).toString() : m_localIds.value(localId).toString();
    QJsonValue body = entry.value(kBody);
    if (!resolveLocalIds(body)) {
        ParseCommandResult failed;
        failed.error =
            PFError(PFError::InvalidPointer,
                    QCoreApplication::translate("PFError", "The save refers to a record whose creation failed."));
        finishFirst(failed, {});
        return;
    }
    ParseCommand command = ParseCommand::saveObject(entry.value(kClassName).toString(), objectId, body.toObject());
    command.requestId = entry.value(kRequestId).toString();
    command.sessionToken = m_sessionToken ? m_sessionToken() : QString();
    m_sending = true;
    // A create waits for its answer to learn the new id; an update of a known record does not.
    m_runner.runCommand(command, [this, creating = objectId.isEmpty() ? localId : QString()](
                                     const ParseCommandResult &result) { finishFirst(result, creating); });
}

void PFEventuallyQueue::finishFirst(const ParseCommandResult &result, const QString &localId)
{
    m_sending = false;
    if (m_entries.isEmpty())
        return;
    if (result.transient) {
        qCInfo(lcParseEventually) << "server unreachable;" << m_entries.size() << "saves wait";
        m_retryTimer.start();
        return;
    }
    const QString requestId = m_entries.first().toObject().value(kRequestId).toString();
    // A duplicate request means the server applied this save before (its answer was lost).
    const bool applied = result.succeeded() || result.error->code() == PFError::DuplicateRequest;
    if (applied && !localId.isEmpty()) {
        const QJsonValue objectId = result.json.value(kObjectId);
        if (objectId.isString()) {
            m_localIds.insert(localId, objectId);
            if (const PFObjectPtr object = m_localObjects.value(localId).lock()) {
                PFDecoder decoder;
                decoder.mergeInto(object->mutableState(), result.json);
                object->mutableState().localId.clear();
            }
        }
    }
    if (!applied)
        qCWarning(lcParseEventually) << "a pending save was refused and dropped:"
                                     << result.error->localizedDescription();
    m_entries.removeFirst();
    pruneLocalIds();
    if (!persist())
        qCWarning(lcParseEventually) << "the journal of pending saves could not be updated";
    if (PFBooleanResultBlock block = m_blocks.take(requestId))
        block(applied, applied ? nullptr : &*result.error);
    sendNext();
}

void PFEventuallyQueue::pruneLocalIds()
{
    const QByteArray rest = QJsonDocument(m_entries).toJson(QJsonDocument::Compact);
    for (const QString &localId : m_localIds.keys()) {
        if (!rest.contains(localId.toUtf8()))
            m_localIds.remove(localId);
    }
}
