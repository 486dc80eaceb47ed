#include "AccountServices.h"

namespace {
AccountServices &shared()
{
    static AccountServices services;
    return services;
}
} // namespace

const AccountServices &AccountServices::current()
{
    return shared();
}

void AccountServices::setCurrent(const AccountServices &services)
{
    shared() = services;
}

KeychainPasswordItem AccountServices::passwordItem(const QString &account) const
{
    Q_ASSERT(secureStore);
    return KeychainPasswordItem(*secureStore, KeychainPasswordItem::kServiceName, account,
                                KeychainPasswordItem::kAccessGroup);
}
