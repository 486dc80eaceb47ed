#include "AppDelegate.h"

#include "AppConfiguration.h"
#include "AppLogging.h"
#include "AppStoryboards.h"
#include "NotificationCenter.h"
#include "PFError.h"
#include "PFInstallation.h"
#include "PFUser.h"
#include "Parse.h"
#include "ParseClientConfiguration.h"
#include "PushTokenSource.h"
#include "RecordClasses.h"
#include "Storyboard.h"
#include "Theme.h"
#include "UserDefaults.h"
#include "Window.h"
#include "ui/ViewController.h"

AppDelegate::AppDelegate(Services services, QObject *parent) : QObject(parent), m_services(services)
{
    if (m_services.pushTokenSource) {
        connect(m_services.pushTokenSource, &PushTokenSource::didRegisterForRemoteNotificationsWithDeviceToken, this,
                &AppDelegate::applicationDidRegisterForRemoteNotifications);
        connect(m_services.pushTokenSource, &PushTokenSource::didFailToRegisterForRemoteNotificationsWithError, this,
                &AppDelegate::applicationDidFailToRegisterForRemoteNotifications);
    }
}

AppDelegate::~AppDelegate() = default;

bool AppDelegate::applicationDidFinishLaunching(const QVariantMap &launchOptions)
{
    Q_UNUSED(launchOptions)
    configureBackend();
    registerRecordClasses();
    styleNavigationBars();
    // A desktop app is not woken for background fetches, so there is no minimum interval to set.
    recordVersion();
    requestNotificationPermission();
    decideFirstScreen();
    if (m_services.notificationCenter)
        m_services.notificationCenter->setApplicationIconBadgeNumber(0);
    return true;
}

void AppDelegate::configureBackend()
{
    const AppConfiguration &config = *m_services.configuration;
    PFSecureStorage *secureStorage = m_services.secureStorage;
    const ParseClientConfiguration configuration =
        ParseClientConfiguration::configurationWithBlock([&](ParseClientConfiguration &c) {
            c.localDatastoreEnabled = true;
            c.applicationId = config.applicationId;
            c.server = config.serverUrl.toString();
            c.clientKey = config.clientKey;
            c.dataDirectory = config.dataDirectory;
            c.secureStorage = secureStorage;
        });
    Parse::initializeWithConfiguration(configuration);
}

void AppDelegate::styleNavigationBars()
{
    ui::Theme *theme = ui::Theme::instance();
    theme->setNavigationBarColor(QColor(49, 187, 234));
    theme->setSecondaryColor(QColor(8, 80, 208));
    theme->setTintColor(Qt::white);
    theme->setTitleColor(Qt::white);
}

// The application's version (what a bundle calls "CFBundleShortVersionString") is recorded for
// the version lines of the login screen and the menu; without one the old value stays.
void AppDelegate::recordVersion()
{
    if (!m_services.applicationVersion.isEmpty() && m_services.userDefaults)
        m_services.userDefaults->setObject(m_services.applicationVersion, QStringLiteral("version_number"));
}

void AppDelegate::requestNotificationPermission()
{
    NotificationCenter *center = m_services.notificationCenter;
    if (!center)
        return;
    const int options =
        NotificationCenter::Alert | NotificationCenter::Badge | NotificationCenter::Sound | NotificationCenter::CarPlay;
    QPointer<AppDelegate> self(this);
    center->requestAuthorizationWithOptions(options, [self, center](bool granted, const QString &) {
        qCInfo(lcApp).noquote() << QStringLiteral("Permission granted: ") +
                                       (granted ? QStringLiteral("true") : QStringLiteral("false"));
        if (!granted || !self)
            return;
        center->getNotificationSettingsWithCompletionHandler([self](const NotificationCenter::Settings &settings) {
            qCInfo(lcApp).noquote() << QStringLiteral("Notification settings: ") + settings.description();
            if (settings.authorizationStatus != NotificationCenter::AuthorizationStatus::Authorized || !self)
                return;
            QMetaObject::invokeMethod(
                self,
                [self] {
                    if (self && self->m_services.pushTokenSource)
                        self->m_services.pushTokenSource->registerForRemoteNotifications();
                },
                Qt::QueuedConnection);
        });
    });
}

// The remembered session lives in the secure store: the answer comes later. A store that is
// locked or missing leaves the user remembered for a later start and shows the sign-in now.
void AppDelegate::decideFirstScreen()
{
    QPointer<AppDelegate> self(this);
    PFUser::getCurrentUserInBackground([self](const PFUserPtr &user, const PFError *error) {
        if (!self)
            return;
        if (error)
            qCWarning(lcApp).noquote() << error->localizedDescription();
        if (user) {
            self->showMenuForRememberedSession();
            self->verifyRememberedSession();
        }
        self->m_launchDecided = true;
        Q_EMIT self->launchDecided();
    });
}

// The server may have ended the session since the last run (an account closed or refused).
// Asked once the menu is on screen, so the first frame does not wait for the network; only a
// refusal signs out: a server that cannot be reached leaves the session as it is.
void AppDelegate::verifyRememberedSession()
{
    QPointer<AppDelegate> self(this);
    PFUser::verifyCurrentUserSessionInBackground([self](bool valid, const PFError *error) {
        if (!self || valid || !error)
            return;
        if (error->code() != PFError::InvalidSessionToken) {
            qCInfo(lcApp).noquote() << "the remembered session could not be checked:" << error->localizedDescription();
            return;
        }
        qCInfo(lcApp) << "the server refused the remembered session; showing the sign-in";
        self->showSignIn();
        Q_EMIT self->rememberedSessionRefused();
    });
}

void AppDelegate::showSignIn()
{
    ui::Storyboard *storyboard = ui::Storyboard::storyboardWithName(AppStoryboards::kRegistration);
    ui::ViewController *login =
        storyboard ? storyboard->instantiateViewControllerWithIdentifier(AppStoryboards::kLoginIdentifier) : nullptr;
    if (!login || !m_window) {
        qCCritical(lcApp) << "the sign-in screen is missing";
        return;
    }
    login->setModalPresentationStyle(ui::ViewController::ModalPresentationStyle::FullScreen);
    m_window->setRootViewController(login);
}

void AppDelegate::showMenuForRememberedSession()
{
    qCInfo(lcApp).noquote() << QStringLiteral("We have user");
    ui::Storyboard *storyboard = ui::Storyboard::storyboardWithName(AppStoryboards::kMenu);
    ui::ViewController *menu =
        storyboard ? storyboard->instantiateViewControllerWithIdentifier(AppStoryboards::kMenuIdentifier) : nullptr;
    if (!menu) {
        qCCritical(lcApp) << "the menu screen is missing; showing the first screen instead";
        return;
    }
    menu->setModalPresentationStyle(ui::ViewController::ModalPresentationStyle::FullScreen);
    auto *window = new ui::Window(this);
    window->setDrawsInterface(m_services.drawsInterface);
    m_window = window;
    window->setRootViewController(menu);
    window->makeKeyAndVisible();
    qCInfo(lcApp).noquote() << QStringLiteral("Should be storyboard");
}

void AppDelegate::applicationPerformFetch(std::function<void(int result)> completionHandler)
{
    Q_UNUSED(completionHandler)
}

QString AppDelegate::deviceTokenString(const QByteArray &deviceToken)
{
    QString text;
    text.reserve(deviceToken.size() * 2);
    for (const char byte : deviceToken)
        text += QString::asprintf("%02X", static_cast<unsigned char>(byte));
    return text;
}

void AppDelegate::applicationDidRegisterForRemoteNotifications(const QByteArray &deviceToken)
{
    const QString token = deviceTokenString(deviceToken);
    if (m_services.userDefaults)
        m_services.userDefaults->setObject(token, QStringLiteral("deviceToken"));
    qCInfo(lcApp).noquote() << token;

    PFInstallationPtr installation = PFInstallation::currentInstallation();
    if (!installation)
        return;
    installation->setDeviceTokenFromData(deviceToken);
    installation->setObject(QStringList{QStringLiteral("pro")}, QStringLiteral("channels"));
    QPointer<AppDelegate> self(this);
    installation->saveInBackgroundWithBlock([self](bool succeeded, const PFError *error) {
        if (succeeded)
            qCInfo(lcApp).noquote() << QStringLiteral("You have successfully saved your push installation");
        else if (error)
            qCInfo(lcApp).noquote() << QStringLiteral("Error saving parse installation ") +
                                           error->localizedDescription();
        else
            qCInfo(lcApp).noquote() << QStringLiteral("Uknown error");
        if (self)
            Q_EMIT self->installationSaveFinished(succeeded);
    });
}

void AppDelegate::applicationDidFailToRegisterForRemoteNotifications(const QString &error)
{
    qCInfo(lcApp).noquote() << QStringLiteral("Failed to register: ") + error;
}

AppDelegate::SceneConfiguration
AppDelegate::applicationConfigurationForConnectingSceneSession(const QString &sessionRole) const
{
    return {QStringLiteral("Default Configuration"), sessionRole};
}
