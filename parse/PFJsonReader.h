#pragma once

#include <QByteArray>
#include <QString>
#include <QVariant>

// Reads a JSON text (RFC 8259) straight into variants: objects become QVariantMap, arrays
// QVariantList, numbers double, null a null pointer. Large query replies go through here
// instead of a QJsonDocument, which would hold a second copy of the whole reply; repeated
// keys share one string.
class PFJsonReader {
public:
    // The value, or an invalid QVariant with the reason in error() for anything that is not
    // exactly one well-formed JSON value.
    [[nodiscard]] QVariant read(const QByteArray &text);
    [[nodiscard]] const QString &error() const { return m_error; }

    static constexpr int kMaxDepth = 256;

private:
    class Parser;
    QString m_error;
};
