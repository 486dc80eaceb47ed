#pragma once

#include "AccountsFixture.h"

#include <QObject>
#include <memory>

// A suite against the local backend: each test function gets a fresh fixture, made by
// makeFixture(), and loses it, signed out, when it ends.
class AccountsTestCase : public QObject {
    Q_OBJECT

protected:
    [[nodiscard]] virtual std::unique_ptr<AccountsFixture> makeFixture() const;
    AccountsFixture &f() { return *m_fixture; }

    std::unique_ptr<AccountsFixture> m_fixture;

protected Q_SLOTS:
    void init();
    void cleanup();
};
