#include "PFQuery.h"

#include "PFDispatch.h"
#include "PFEncoder.h"
#include "PFObject.h"
#include "Parse.h"
#include "ParseCore.h"

#include <QJsonDocument>

PFQuery::PFQuery(QString className) : m_className(std::move(className)) {}

PFQuery &PFQuery::whereKey(const QString &key, const QVariant &equalTo)
{
    PFEncoder encoder;
    m_where.insert(key, encoder.encode(equalTo));
    if (encoder.error() && !m_error)
        m_error = encoder.error();
    return *this;
}

PFQuery &PFQuery::whereKey(const QString &key, const PFObjectPtr &equalTo)
{
    return whereKey(key, equalTo ? QVariant::fromValue(equalTo) : QVariant::fromValue(nullptr));
}

PFQuery &PFQuery::includeKey(const QString &key)
{
    if (!m_includes.contains(key))
        m_includes.append(key);
    return *this;
}

PFQuery &PFQuery::orderByDescending(const QString &key)
{
    m_order = u'-' + key;
    return *this;
}

PFQuery &PFQuery::orderByAscending(const QString &key)
{
    m_order = key;
    return *this;
}

PFQuery &PFQuery::setLimit(int limit)
{
    m_limit = limit;
    return *this;
}

PFQuery &PFQuery::setSkip(int skip)
{
    m_skip = skip;
    return *this;
}

QUrlQuery PFQuery::parameters() const
{
    QUrlQuery query;
    const auto add = [&query](const QString &name, const QString &value) {
        // Encoded by hand: '+' and '&' inside JSON must not be read as separators.
        query.addQueryItem(name, QString::fromUtf8(QUrl::toPercentEncoding(value)));
    };
    if (!m_where.isEmpty())
        add(QStringLiteral("where"), QString::fromUtf8(QJsonDocument(m_where).toJson(QJsonDocument::Compact)));
    if (!m_includes.isEmpty())
        add(QStringLiteral("include"), m_includes.join(u','));
    if (!m_order.isEmpty())
        add(QStringLiteral("order"), m_order);
    if (m_limit >= 0)
        add(QStringLiteral("limit"), QString::number(m_limit));
    if (m_skip > 0)
        add(QStringLiteral("skip"), QString::number(m_skip));
    return query;
}

void PFQuery::findObjectsInBackgroundWithBlock(PFQueryArrayResultBlock block) const
{
    ParseCore *core = Parse::core();
    if (!core || m_error) {
        PFDispatch::failLater(block, m_error.value_or(PFError::notInitialized()), QList<PFObjectPtr>());
        return;
    }
    core->queryController().findObjects(*this, core->sessionToken(), std::move(block));
}
