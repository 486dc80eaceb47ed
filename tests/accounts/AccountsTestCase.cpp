#include "AccountsTestCase.h"

#include "PFUser.h"

#include <QTest>

std::unique_ptr<AccountsFixture> AccountsTestCase::makeFixture() const
{
    return std::make_unique<AccountsFixture>();
}

void AccountsTestCase::init()
{
    REQUIRE_BACKEND();
    m_fixture = makeFixture();
    QVERIFY(m_fixture->isReady());
}

void AccountsTestCase::cleanup()
{
    m_fixture.reset();
    PFUser::logOut();
}
