#pragma once

#include "PFDispatch.h"
#include "PFSecureStorage.h"

#include <QHash>

// A secure storage kept in memory, shared by the "runs" of one test to stand for the system's
// store surviving a restart. It answers through the event loop like the real one, and can be
// made to answer with a failure (a locked or missing keyring) or not at all until released.
class MemorySecureStorage : public PFSecureStorage {
public:
    void readSecret(const QString &key, Completion done) override
    {
        Result result = outcome();
        if (result.ok() && !m_secrets.contains(key))
            result.status = Status::NotFound;
        else if (result.ok())
            result.data = m_secrets.value(key);
        answer(std::move(done), result);
    }
    void writeSecret(const QString &key, const QByteArray &value, Completion done) override
    {
        if (outcome().ok())
            m_secrets.insert(key, value);
        answer(std::move(done), outcome());
    }
    void removeSecret(const QString &key, Completion done) override
    {
        if (outcome().ok())
            m_secrets.remove(key);
        answer(std::move(done), outcome());
    }

    // Every call answers with this status from now on (Ok: the store works).
    void setStatus(Status status) { m_status = status; }
    // Holds the answers back until release() (a keyring waiting for the user to unlock it).
    void hold() { m_holding = true; }
    void release()
    {
        m_holding = false;
        for (auto &[done, result] : std::exchange(m_held, {}))
            answer(std::move(done), result);
    }
    [[nodiscard]] int size() const { return static_cast<int>(m_secrets.size()); }

private:
    [[nodiscard]] Result outcome() const { return Result{m_status, {}, {}}; }
    void answer(Completion done, const Result &result)
    {
        if (m_holding) {
            m_held.append({std::move(done), result});
            return;
        }
        PFDispatch::later([done = std::move(done), result] {
            if (done)
                done(result);
        });
    }
    QHash<QString, QByteArray> m_secrets;
    Status m_status = Status::Ok;
    bool m_holding = false;
    QList<std::pair<Completion, Result>> m_held;
};
