#pragma once

#include <QByteArray>
#include <QString>
#include <QVariant>

// Reads a JSON text (RFC 8259) straight into variants: objects become QVariantMap, arrays
// QVariantList, whole numbers qint64 so that they keep their exact value, other numbers (and
// whole ones beyond 64 bits) double, null a null pointer. Every reply of the backend is read here:
// no QJsonDocument in between, which would hold a second copy of a large reply, and repeated
// keys share one string.
// Text that is not well-formed is refused, never repaired: bytes that are not UTF-8, escapes
// of unpaired surrogates, and nesting deeper than kMaxDepth. A reply the reader mends could
// be saved back to the server altered.
class PFJsonReader {
public:
    // The value, or an invalid QVariant with the reason and its byte offset in error() for
    // anything that is not exactly one well-formed JSON value.
    [[nodiscard]] QVariant read(const QByteArray &text);
    [[nodiscard]] const QString &error() const { return m_error; }

    static constexpr int kMaxDepth = 256;

    // Moves a map or list out of a variant that holds one (and that nothing else shares),
    // leaving it empty; anything else gives an empty container.
    [[nodiscard]] static QVariantMap takeMap(QVariant &value);
    [[nodiscard]] static QVariantList takeList(QVariant &value);
    // Whether a value read here (or made elsewhere) holds a number of any kind.
    [[nodiscard]] static bool isNumber(const QVariant &value);

private:
    class Parser;
    QString m_error;
};
