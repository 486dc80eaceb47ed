#include "PFEventuallyQueue.h"

#include "PFCurrentUserController.h"
#include "PFDataStore.h"
#include "PFDecoder.h"
#include "PFDispatch.h"
#include "PFEncoder.h"
#include "PFLogging.h"
#include "PFObject.h"
#include "PFUser.h"
#include "ParseCommandRunner.h"

#include <QCoreApplication>
#include <QJsonDocument>
#include <QUuid>

namespace {
const QString kRequestId = QStringLiteral("requestId");
const QString kUserId = QStringLiteral("userId");
const QString kClassName = QStringLiteral("className");
const QString kObjectId = QStringLiteral("objectId");
const QString kLocalId = QStringLiteral("localId");
const QString kBody = QStringLiteral("body");

QString newId()
{
    return QUuid::createUuid().toString(QUuid::WithoutBraces);
}

// How the queue treats an answer.
enum class Verdict { Applied, RetryLater, SessionEnded, Refused };

Verdict verdictOn(const ParseCommandResult &result, bool creating)
{
    if (result.succeeded())
        return Verdict::Applied;
    const int code = result.errorCode();
    // A reply that arrived but could not be read is asked for again: the server answers a
    // retry with the same answer.
    if (result.transient || result.httpStatus == 429 || (result.httpStatus >= 200 && result.httpStatus < 300))
        return Verdict::RetryLater;
    if (code == PFError::InvalidSessionToken)
        return Verdict::SessionEnded;
    // An update applied before whose answer was lost (by a server that does not replay answers).
    if (code == PFError::DuplicateRequest && !creating)
        return Verdict::Applied;
    return Verdict::Refused;
}
} // namespace

PFEventuallyQueue::PFEventuallyQueue(ParseCommandRunner &runner, PFDataStore &store, PFCurrentUserController &users,
                                     int retryIntervalMs, QObject *parent)
    : QObject(parent), m_runner(runner), m_store(store), m_users(users)
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
    // Another user signed in: their saves may go now.
    connect(&m_users, &PFCurrentUserController::currentUserChanged, this, &PFEventuallyQueue::resume);
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
        qCWarning(lcParseEventually) << "the journal of pending saves is unreadable and is set aside as"
                                     << fileName() + QStringLiteral(".unreadable");
        m_store.write(fileName() + QStringLiteral(".unreadable"), *contents);
        return;
    }
    for (const QJsonValue &entry : entries.toArray()) {
        const QJsonObject e = entry.toObject();
        if (e.value(kRequestId).isString() && e.value(kClassName).isString() && e.value(kBody).isObject() &&
            (e.value(kObjectId).isString() || e.value(kLocalId).isString()))
            m_entries.append(e);
        else
            qCWarning(lcParseEventually).noquote() << "a malformed pending save is dropped:"
                                                   << QJsonDocument(e).toJson(QJsonDocument::Compact).left(200);
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
    const PFUserPtr user = m_users.currentUser();
    QJsonObject entry{{kRequestId, newId()},
                      {kUserId, user ? user->objectId() : QString()},
                      {kClassName, state.className},
                      {kBody, body}};
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
    if (m_sending || m_retryTimer.isActive())
        return;
    if (m_entries.isEmpty()) {
        Q_EMIT drained();
        return;
    }
    const qsizetype index = nextSendable();
    if (index >= 0)
        send(index);
}

// The first save that may go now: one made without a user, or one of the signed-in user while
// their session holds. The saves of one user keep their order.
qsizetype PFEventuallyQueue::nextSendable() const
{
    if (!m_users.isLoaded())
        return -1;
    const PFUserPtr user = m_users.currentUser();
    const QString userId = user ? user->objectId() : QString();
    const bool sessionUsable = user && user->isAuthenticated() && user->sessionToken() != m_endedSession;
    for (qsizetype i = 0; i < m_entries.size(); ++i) {
        const QString owner = m_entries.at(i).toObject().value(kUserId).toString();
        if (owner.isEmpty() || (owner == userId && sessionUsable))
            return i;
    }
    return -1;
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

void PFEventuallyQueue::send(qsizetype index)
{
    const QJsonObject entry = m_entries.at(index).toObject();
    const QString requestId = entry.value(kRequestId).toString();
    const QString localId = entry.value(kLocalId).toString();
    const QString objectId =
        localId.isEmpty() ? entry.value(kObjectId).toString() : m_localIds.value(localId).toString();
    const QString creating = objectId.isEmpty() ? localId : QString();
    QJsonValue body = entry.value(kBody);
    if (!resolveLocalIds(body) || (!creating.isEmpty() && m_localIds.contains(localId))) {
        ParseCommandResult failed;
        failed.error =
            PFError(PFError::InvalidPointer,
                    QCoreApplication::translate("PFError", "The save refers to a record whose creation failed."));
        finish(requestId, creating, {}, failed);
        return;
    }
    ParseCommand command = ParseCommand::saveObject(entry.value(kClassName).toString(), objectId, body.toObject());
    command.requestId = requestId;
    if (!entry.value(kUserId).toString().isEmpty())
        command.sessionToken = m_users.sessionToken();
    m_sending = true;
    m_runner.runCommand(command, [this, requestId, creating, token = command.sessionToken](
                                     ParseCommandResult &result) { finish(requestId, creating, token, result); });
}

void PFEventuallyQueue::finish(const QString &requestId, const QString &localId, const QString &sessionToken,
                               const ParseCommandResult &result)
{
    m_sending = false;
    qsizetype index = -1;
    for (qsizetype i = 0; i < m_entries.size() && index < 0; ++i) {
        if (m_entries.at(i).toObject().value(kRequestId).toString() == requestId)
            index = i;
    }
    if (index < 0)
        return;
    const QJsonObject entry = m_entries.at(index).toObject();
    const QString what = entry.value(kClassName).toString() + u' ' +
                         (localId.isEmpty() ? entry.value(kObjectId).toString() : QStringLiteral("(new)"));
    const PFError *failure = nullptr;
    switch (verdictOn(result, !localId.isEmpty())) {
    case Verdict::RetryLater:
        qCInfo(lcParseEventually).noquote() << "server unreachable (" + result.error->localizedDescription() + ");"
                                            << m_entries.size() << "saves wait";
        m_retryTimer.start();
        return;
    case Verdict::SessionEnded:
        // Kept: it goes at its user's next sign-in. Whoever waits for it hears of the delay now.
        m_endedSession = sessionToken;
        qCWarning(lcParseEventually).noquote() << "a pending save was refused: the session of its user has ended;"
                                               << what << "waits for their next sign-in";
        complete(requestId, &*result.error);
        resume();
        return;
    case Verdict::Refused:
        qCWarning(lcParseEventually).noquote() << "a pending save was refused and dropped:" << what
                                               << result.errorCode() << result.error->localizedDescription();
        if (!localId.isEmpty())
            m_localIds.insert(localId, QJsonValue::Null); // later saves that refer to it cannot go either
        failure = &*result.error;
        break;
    case Verdict::Applied:
        if (!localId.isEmpty())
            recordCreation(localId, result);
        break;
    }
    m_entries.removeAt(index);
    pruneLocalIds();
    if (!persist())
        qCWarning(lcParseEventually) << "the journal of pending saves could not be updated";
    complete(requestId, failure);
    resume();
}

void PFEventuallyQueue::recordCreation(const QString &localId, const ParseCommandResult &result)
{
    const QString objectId = result.string(kObjectId);
    if (objectId.isEmpty()) {
        qCWarning(lcParseEventually) << "a record created from a pending save was applied before, but the server did "
                                        "not say its id; saves that refer to it cannot be sent";
        m_localIds.insert(localId, QJsonValue::Null);
        return;
    }
    m_localIds.insert(localId, objectId);
    if (const PFObjectPtr object = m_localObjects.take(localId).lock()) {
        PFDecoder decoder;
        decoder.mergeInto(object->mutableState(), result.json);
        object->mutableState().localId.clear();
    }
}

void PFEventuallyQueue::complete(const QString &requestId, const PFError *error)
{
    if (PFBooleanResultBlock block = m_blocks.take(requestId))
        block(!error, error);
}

// Forgets the local ids no pending save refers to. A record whose create failed keeps its
// mark while the record is in memory: a later save of it must fail too, not create it anew.
void PFEventuallyQueue::pruneLocalIds()
{
    const QByteArray rest = QJsonDocument(m_entries).toJson(QJsonDocument::Compact);
    for (const QString &localId : m_localIds.keys()) {
        const bool failedAndAlive = m_localIds.value(localId).isNull() && !m_localObjects.value(localId).expired();
        if (!failedAndAlive && !rest.contains(localId.toUtf8()))
            m_localIds.remove(localId);
    }
}
