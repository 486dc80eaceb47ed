#include "ParseCore.h"

ParseCore::ParseCore(const ParseClientConfiguration &configuration, std::unique_ptr<ParseCommandRunner> runner)
    : m_configuration(configuration), m_store(configuration.effectiveDataDirectory()),
      m_runner(runner ? std::move(runner)
                      : std::make_unique<ParseCommandRunner>(configuration, configuration.networkAccessManager)),
      m_files(*m_runner), m_objects(*m_runner, m_files), m_queries(*m_runner), m_cloud(*m_runner),
      m_currentUser(m_store, configuration.secureStorage, configuration.applicationId),
      m_users(*m_runner, m_objects, m_currentUser), m_installation(m_store)
{
    m_runner->setInstallationIdProvider([this] { return m_installation.installationId(); });
    m_eventually = std::make_unique<PFEventuallyQueue>(*m_runner, m_store, m_currentUser,
                                                       configuration.eventuallyRetryIntervalMs);
    m_currentUser.load();
}

ParseCore::~ParseCore() = default;
