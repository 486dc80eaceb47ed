#pragma once

#include "PFError.h"
#include "PFTypes.h"

#include <QJsonObject>
#include <QStringList>
#include <QUrlQuery>
#include <optional>

// A query on one backend class: equality constraints (pointers included), included pointer
// keys, an order, and a page (limit and skip). Without a limit the server's default applies.
class PFQuery {
public:
    explicit PFQuery(QString className);
    [[nodiscard]] static PFQuery queryWithClassName(const QString &className) { return PFQuery(className); }

    PFQuery &whereKey(const QString &key, const QVariant &equalTo);
    PFQuery &whereKey(const QString &key, const PFObjectPtr &equalTo);
    PFQuery &includeKey(const QString &key);
    PFQuery &orderByDescending(const QString &key);
    PFQuery &orderByAscending(const QString &key);
    PFQuery &setLimit(int limit);
    PFQuery &setSkip(int skip);

    [[nodiscard]] QString parseClassName() const { return m_className; }
    [[nodiscard]] QJsonObject constraints() const { return m_where; }
    [[nodiscard]] QStringList includedKeys() const { return m_includes; }
    [[nodiscard]] QString order() const { return m_order; }
    [[nodiscard]] int limit() const { return m_limit; }
    [[nodiscard]] int skip() const { return m_skip; }
    // The URL parameters of the find request.
    [[nodiscard]] QUrlQuery parameters() const;
    // A constraint that could not be encoded (e.g. a pointer to an unsaved record).
    [[nodiscard]] const std::optional<PFError> &error() const { return m_error; }

    void findObjectsInBackgroundWithBlock(PFQueryArrayResultBlock block) const;

private:
    QString m_className;
    QJsonObject m_where;
    QStringList m_includes;
    QString m_order;
    int m_limit = -1;
    int m_skip = 0;
    std::optional<PFError> m_error;
};
