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

    // Moves a map or list out of a variant that holds one (and that nothing else shares),
    // leaving it empty; anything else gives an empty container.
    [[nodiscard]] static QVariantMap takeMap(QVariant &value);
    [[nodiscard]] static QVariantList takeList(QVariant &value);

private:
    class Parser;
    QString m_error;
};
