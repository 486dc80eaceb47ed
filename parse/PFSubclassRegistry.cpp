#include "PFSubclassRegistry.h"

#include "PFInstallation.h"
#include "PFUser.h"

PFSubclassRegistry &PFSubclassRegistry::shared()
{
    static PFSubclassRegistry registry;
    return registry;
}

void PFSubclassRegistry::registerSubclass(const QString &className, Factory factory)
{
    if (!m_factories.contains(className))
        m_order.append(className);
    m_factories.insert(className, std::move(factory));
}

PFObjectPtr PFSubclassRegistry::make(const QString &className) const
{
    if (const auto it = m_factories.constFind(className); it != m_factories.cend())
        return (*it)();
    if (className == PFUser::parseClassName())
        return std::make_shared<PFUser>();
    if (className == PFInstallation::parseClassName())
        return std::make_shared<PFInstallation>();
    return std::make_shared<PFObject>(className);
}

void PFSubclassRegistry::clear()
{
    m_factories.clear();
    m_order.clear();
}
