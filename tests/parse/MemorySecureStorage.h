#pragma once

#include "PFSecureStorage.h"

#include <QHash>

// A secure storage kept in memory, shared by the "runs" of one test to stand for the system's
// store surviving a restart.
class MemorySecureStorage : public PFSecureStorage {
public:
    std::optional<QByteArray> secret(const QString &key) override
    {
        if (!m_secrets.contains(key))
            return std::nullopt;
        return m_secrets.value(key);
    }
    bool setSecret(const QString &key, const QByteArray &value) override
    {
        if (m_refuse)
            return false;
        m_secrets.insert(key, value);
        return true;
    }
    bool removeSecret(const QString &key) override { return m_secrets.remove(key) > 0; }

    void setRefusing(bool refuse) { m_refuse = refuse; }
    [[nodiscard]] int size() const { return static_cast<int>(m_secrets.size()); }

private:
    QHash<QString, QByteArray> m_secrets;
    bool m_refuse = false;
};
