#pragma once

#include "PFCloudController.h"
#include "PFCurrentInstallationController.h"
#include "PFCurrentUserController.h"
#include "PFDataStore.h"
#include "PFEventuallyQueue.h"
#include "PFFileController.h"
#include "PFObjectController.h"
#include "PFQueryController.h"
#include "PFUserController.h"
#include "ParseClientConfiguration.h"
#include "ParseCommandRunner.h"

#include <memory>

// The client library wired for one configuration: one command runner, the controllers that
// use it, and the library's own files. Tests may build one around a runner of their own.
class ParseCore {
public:
    explicit ParseCore(const ParseClientConfiguration &configuration,
                       std::unique_ptr<ParseCommandRunner> runner = nullptr);
    ~ParseCore();

    [[nodiscard]] const ParseClientConfiguration &configuration() const { return m_configuration; }
    [[nodiscard]] ParseCommandRunner &runner() { return *m_runner; }
    [[nodiscard]] PFDataStore &dataStore() { return m_store; }
    [[nodiscard]] PFObjectController &objectController() { return m_objects; }
    [[nodiscard]] PFQueryController &queryController() { return m_queries; }
    [[nodiscard]] PFFileController &fileController() { return m_files; }
    [[nodiscard]] PFCloudController &cloudController() { return m_cloud; }
    [[nodiscard]] PFUserController &userController() { return m_users; }
    [[nodiscard]] PFCurrentUserController &currentUserController() { return m_currentUser; }
    [[nodiscard]] PFCurrentInstallationController &currentInstallationController() { return m_installation; }
    [[nodiscard]] PFEventuallyQueue &eventuallyQueue() { return *m_eventually; }

    // The signed-in user's session token, empty when no one is signed in.
    [[nodiscard]] QString sessionToken() { return m_currentUser.sessionToken(); }

private:
    ParseClientConfiguration m_configuration;
    PFDataStore m_store;
    std::unique_ptr<ParseCommandRunner> m_runner;
    PFFileController m_files;
    PFObjectController m_objects;
    PFQueryController m_queries;
    PFCloudController m_cloud;
    PFCurrentUserController m_currentUser;
    PFUserController m_users;
    PFCurrentInstallationController m_installation;
    std::unique_ptr<PFEventuallyQueue> m_eventually;
};
