#pragma once

#include <QVariant>

// A pending change of one key: set it to a value, or delete it on the server.
class PFFieldOperation {
public:
    PFFieldOperation() = default;
    [[nodiscard]] static PFFieldOperation set(QVariant value) { return PFFieldOperation(false, std::move(value)); }
    [[nodiscard]] static PFFieldOperation deletion() { return PFFieldOperation(true, {}); }

    [[nodiscard]] bool isDeletion() const { return m_delete; }
    [[nodiscard]] QVariant value() const { return m_value; }

private:
    PFFieldOperation(bool remove, QVariant value) : m_delete(remove), m_value(std::move(value)) {}
    bool m_delete = false;
    QVariant m_value;
};
