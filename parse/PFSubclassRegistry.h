#pragma once

#include "PFTypes.h"

#include <QHash>
#include <QStringList>

// Which class names come back from the server as which record subclass. Built-in classes
// (_User, _Installation) have their own types even before anything is registered.
class PFSubclassRegistry {
public:
    using Factory = std::function<PFObjectPtr()>;

    static PFSubclassRegistry &shared();

    void registerSubclass(const QString &className, Factory factory);
    [[nodiscard]] bool isRegistered(const QString &className) const { return m_factories.contains(className); }
    // In the order of registration.
    [[nodiscard]] QStringList registeredClassNames() const { return m_order; }
    // A new, empty record of the class, as its registered subclass where there is one.
    [[nodiscard]] PFObjectPtr make(const QString &className) const;
    void clear();

private:
    QHash<QString, Factory> m_factories;
    QStringList m_order;
};
