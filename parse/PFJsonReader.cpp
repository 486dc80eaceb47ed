#include "PFJsonReader.h"

#include <cctype>
#include <charconv>
#include <string_view>
#include <unordered_map>

class PFJsonReader::Parser {
public:
    explicit Parser(const QByteArray &text)
        : m_begin(text.constData()), m_at(m_begin), m_end(text.constData() + text.size())
    {
    }

    bool parseDocument(QVariant &out)
    {
        skipSpace();
        if (!parseValue(out, 0))
            return false;
        skipSpace();
        return m_at == m_end || fail("unexpected text after the value");
    }

    QString m_error;

private:
    bool fail(const char *what)
    {
        if (m_error.isEmpty())
            m_error = QStringLiteral("%1 at byte %2").arg(QLatin1String(what)).arg(m_at - m_begin);
        return false;
    }

    void skipSpace()
    {
        while (m_at < m_end && (*m_at == ' ' || *m_at == '\n' || *m_at == '\r' || *m_at == '\t'))
            ++m_at;
    }

    bool literal(std::string_view word)
    {
        if (std::string_view(m_at, size_t(m_end - m_at)).substr(0, word.size()) != word)
            return fail("invalid literal");
        m_at += word.size();
        return true;
    }

    bool parseValue(QVariant &out, int depth)
    {
        if (m_at >= m_end)
            return fail("unexpected end of text");
        switch (*m_at) {
        case '{':
            return parseObject(out, depth + 1);
        case '[':
            return parseArray(out, depth + 1);
        case '"': {
            QString text;
            if (!parseString(text))
                return false;
            out = std::move(text);
            return true;
        }
        case 't':
            out = true;
            return literal("true");
        case 'f':
            out = false;
            return literal("false");
        case 'n':
            out = QVariant::fromValue(nullptr);
            return literal("null");
        default:
            return parseNumber(out);
        }
    }

    bool parseObject(QVariant &out, int depth)
    {
        if (depth > kMaxDepth)
            return fail("nested too deeply");
        ++m_at; // {
        QVariantMap map;
        skipSpace();
        if (m_at < m_end && *m_at == '}') {
            ++m_at;
            out = std::move(map);
            return true;
        }
        for (;;) {
            skipSpace();
            if (m_at >= m_end || *m_at != '"')
                return fail("expected a key");
            QString key;
            if (!parseKey(key))
                return false;
            skipSpace();
            if (m_at >= m_end || *m_at != ':')
                return fail("expected ':'");
            ++m_at;
            skipSpace();
            QVariant value;
            if (!parseValue(value, depth))
                return false;
            map.insert(key, std::move(value));
            skipSpace();
            if (m_at < m_end && *m_at == ',') {
                ++m_at;
                continue;
            }
            if (m_at < m_end && *m_at == '}') {
                ++m_at;
                out = std::move(map);
                return true;
            }
            return fail("expected ',' or '}'");
        }
    }

    bool parseArray(QVariant &out, int depth)
    {
        if (depth > kMaxDepth)
            return fail("nested too deeply");
        ++m_at; // [
        QVariantList list;
        skipSpace();
        if (m_at < m_end && *m_at == ']') {
            ++m_at;
            out = std::move(list);
            return true;
        }
        for (;;) {
            skipSpace();
            QVariant value;
            if (!parseValue(value, depth))
                return false;
            list.append(std::move(value));
            skipSpace();
            if (m_at < m_end && *m_at == ',') {
                ++m_at;
                continue;
            }
            if (m_at < m_end && *m_at == ']') {
                ++m_at;
                out = std::move(list);
                return true;
            }
            return fail("expected ',' or ']'");
        }
    }

    // Keys repeat in every row of a reply: each distinct key is made into a string once.
    bool parseKey(QString &key)
    {
        const char *start = m_at + 1;
        const char *p = plainRun(start);
        if (!p)
            return false;
        if (p < m_end && *p == '"') {
            const std::string_view raw(start, size_t(p - start));
            auto found = m_keys.find(raw);
            if (found == m_keys.end())
                found = m_keys.emplace(raw, QString::fromUtf8(start, p - start)).first;
            key = found->second;
            m_at = p + 1;
            return true;
        }
        return parseString(key);
    }

    // The end of the run of characters from `p` that need no unescaping, with any bytes beyond
    // ASCII checked to be well-formed UTF-8; null (and the error set) when they are not.
    const char *plainRun(const char *p)
    {
        bool beyondAscii = false;
        const char *start = p;
        while (p < m_end && *p != '"' && *p != '\\' && static_cast<unsigned char>(*p) >= 0x20) {
            beyondAscii |= static_cast<unsigned char>(*p) >= 0x80;
            ++p;
        }
        if (beyondAscii && !isUtf8(start, p)) {
            m_at = start;
            fail("invalid UTF-8 in a string");
            return nullptr;
        }
        return p;
    }

    // Well-formed UTF-8 (RFC 3629): no overlong forms, no surrogates, nothing above U+10FFFF.
    static bool isUtf8(const char *from, const char *to)
    {
        const auto *p = reinterpret_cast<const unsigned char *>(from);
        const auto *end = reinterpret_cast<const unsigned char *>(to);
        while (p < end) {
            const unsigned char lead = *p;
            if (lead < 0x80) {
                ++p;
                continue;
            }
            int length = 0;
            unsigned char low = 0x80, high = 0xBF; // the allowed range of the second byte
            if (lead >= 0xC2 && lead <= 0xDF) {
                length = 2;
            } else if (lead >= 0xE0 && lead <= 0xEF) {
                length = 3;
                low = lead == 0xE0 ? 0xA0 : 0x80;
                high = lead == 0xED ? 0x9F : 0xBF;
            } else if (lead >= 0xF0 && lead <= 0xF4) {
                length = 4;
                low = lead == 0xF0 ? 0x90 : 0x80;
                high = lead == 0xF4 ? 0x8F : 0xBF;
            } else {
                return false;
            }
            if (end - p < length || p[1] < low || p[1] > high)
                return false;
            for (int i = 2; i < length; ++i) {
                if (p[i] < 0x80 || p[i] > 0xBF)
                    return false;
            }
            p += length;
        }
        return true;
    }

    bool parseString(QString &out)
    {
        const char *start = ++m_at; // opening quote
        const char *p = plainRun(start);
        if (!p)
            return false;
        if (p < m_end && *p == '"') {
            out = QString::fromUtf8(start, p - start);
            m_at = p + 1;
            return true;
        }
        // Escapes: decode into a byte buffer of UTF-8, then convert once.
        QByteArray utf8(start, p - start);
        m_at = p;
        while (m_at < m_end) {
            const char c = *m_at;
            if (c == '"') {
                ++m_at;
                out = QString::fromUtf8(utf8);
                return true;
            }
            if (static_cast<unsigned char>(c) < 0x20)
                return fail("control character in a string");
            if (c != '\\') {
                const char *run = plainRun(m_at);
                if (!run)
                    return false;
                utf8.append(m_at, run - m_at);
                m_at = run;
                continue;
            }
            if (++m_at >= m_end)
                break;
            switch (*m_at++) {
            case '"':
                utf8.append('"');
                break;
            case '\\':
                utf8.append('\\');
                break;
            case '/':
                utf8.append('/');
                break;
            case 'b':
                utf8.append('\b');
                break;
            case 'f':
                utf8.append('\f');
                break;
            case 'n':
                utf8.append('\n');
                break;
            case 'r':
                utf8.append('\r');
                break;
            case 't':
                utf8.append('\t');
                break;
            case 'u': {
                char32_t code = 0;
                if (!hex4(code))
                    return false;
                if (code >= 0xD800 && code <= 0xDBFF) {
                    char32_t low = 0;
                    if (m_end - m_at < 6 || m_at[0] != '\\' || m_at[1] != 'u')
                        return fail("unpaired surrogate");
                    m_at += 2;
                    if (!hex4(low) || low < 0xDC00 || low > 0xDFFF)
                        return fail("unpaired surrogate");
                    code = 0x10000 + ((code - 0xD800) << 10) + (low - 0xDC00);
                } else if (code >= 0xDC00 && code <= 0xDFFF) {
                    return fail("unpaired surrogate");
                }
                appendUtf8(utf8, code);
                break;
            }
            default:
                return fail("invalid escape");
            }
        }
        return fail("unterminated string");
    }

    static void appendUtf8(QByteArray &utf8, char32_t code)
    {
        if (code < 0x80) {
            utf8.append(char(code));
        } else if (code < 0x800) {
            utf8.append(char(0xC0 | (code >> 6)));
            utf8.append(char(0x80 | (code & 0x3F)));
        } else if (code < 0x10000) {
            utf8.append(char(0xE0 | (code >> 12)));
            utf8.append(char(0x80 | ((code >> 6) & 0x3F)));
            utf8.append(char(0x80 | (code & 0x3F)));
        } else {
            utf8.append(char(0xF0 | (code >> 18)));
            utf8.append(char(0x80 | ((code >> 12) & 0x3F)));
            utf8.append(char(0x80 | ((code >> 6) & 0x3F)));
            utf8.append(char(0x80 | (code & 0x3F)));
        }
    }

    bool hex4(char32_t &code)
    {
        if (m_end - m_at < 4)
            return fail("invalid \\u escape");
        for (int i = 0; i < 4; ++i) {
            const char c = *m_at++;
            code <<= 4;
            if (c >= '0' && c <= '9')
                code |= char32_t(c - '0');
            else if (c >= 'a' && c <= 'f')
                code |= char32_t(c - 'a' + 10);
            else if (c >= 'A' && c <= 'F')
                code |= char32_t(c - 'A' + 10);
            else
                return fail("invalid \\u escape");
        }
        return true;
    }

    bool parseNumber(QVariant &out)
    {
        // JSON's grammar: -?(0|[1-9][0-9]*)(\.[0-9]+)?([eE][+-]?[0-9]+)?
        const char *p = m_at;
        if (p < m_end && *p == '-')
            ++p;
        if (p >= m_end || !std::isdigit(static_cast<unsigned char>(*p)))
            return fail("invalid value");
        if (*p == '0')
            ++p;
        else
            while (p < m_end && std::isdigit(static_cast<unsigned char>(*p)))
                ++p;
        bool fraction = false;
        if (p < m_end && *p == '.') {
            fraction = true;
            ++p;
            if (p >= m_end || !std::isdigit(static_cast<unsigned char>(*p)))
                return fail("invalid number");
            while (p < m_end && std::isdigit(static_cast<unsigned char>(*p)))
                ++p;
        }
        if (p < m_end && (*p == 'e' || *p == 'E')) {
            fraction = true;
            ++p;
            if (p < m_end && (*p == '+' || *p == '-'))
                ++p;
            if (p >= m_end || !std::isdigit(static_cast<unsigned char>(*p)))
                return fail("invalid number");
            while (p < m_end && std::isdigit(static_cast<unsigned char>(*p)))
                ++p;
        }
        // Whole numbers keep their exact value as 64-bit integers (a double is exact only up
        // to 2^53); others, and integers too large even for that, become doubles.
        if (!fraction) {
            qint64 whole = 0;
            if (const auto [end, ec] = std::from_chars(m_at, p, whole); ec == std::errc() && end == p) {
                m_at = p;
                out = whole;
                return true;
            }
        }
        double value = 0;
        const auto [end, ec] = std::from_chars(m_at, p, value);
        if (ec != std::errc() || end != p)
            return fail("number out of range");
        m_at = p;
        out = value;
        return true;
    }

    const char *m_begin;
    const char *m_at;
    const char *m_end;
    std::unordered_map<std::string_view, QString> m_keys;
};

QVariant PFJsonReader::read(const QByteArray &text)
{
    Parser parser(text);
    QVariant value;
    if (!parser.parseDocument(value)) {
        m_error = parser.m_error;
        return {};
    }
    m_error.clear();
    return value;
}

QVariantMap PFJsonReader::takeMap(QVariant &value)
{
    if (value.typeId() != QMetaType::QVariantMap)
        return {};
    return std::move(*static_cast<QVariantMap *>(value.data()));
}

QVariantList PFJsonReader::takeList(QVariant &value)
{
    if (value.typeId() != QMetaType::QVariantList)
        return {};
    return std::move(*static_cast<QVariantList *>(value.data()));
}

bool PFJsonReader::isNumber(const QVariant &value)
{
    switch (value.typeId()) {
    case QMetaType::Double:
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
    case QMetaType::Int:
    case QMetaType::UInt:
        return true;
    default:
        return false;
    }
}
