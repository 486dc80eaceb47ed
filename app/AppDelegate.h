#pragma once

#include <QByteArray>
#include <QObject>
#include <QPointer>
#include <QString>
#include <QVariantMap>
#include <functional>

class AppConfiguration;
class NotificationCenter;
class PFSecureStorage;
class PushTokenSource;
class UserDefaults;
namespace ui {
class Window;
}

// The application's delegate: the launch sequence and the answers of the notification
// service and the push registration.
class AppDelegate : public QObject {
    Q_OBJECT
public:
    // What the launch needs from the platform; all of it outlives the delegate.
    struct Services {
        const AppConfiguration *configuration = nullptr;
        UserDefaults *userDefaults = nullptr;
        NotificationCenter *notificationCenter = nullptr;
        PushTokenSource *pushTokenSource = nullptr;
        PFSecureStorage *secureStorage = nullptr; // null: sessions last until the app quits
        QString applicationVersion;               // the application's short version string
        bool drawsInterface = true;               // off in tests of the launch decision
    };

    // The scene configuration handed out for a connecting scene.
    struct SceneConfiguration {
        QString name;
        QString sessionRole;
    };

    explicit AppDelegate(Services services, QObject *parent = nullptr);
    ~AppDelegate() override;

    // Set only when a remembered session put the menu on screen at launch.
    [[nodiscard]] ui::Window *window() const { return m_window; }
    // Whether the launch knows yet if a session is remembered (and so which screen comes first).
    [[nodiscard]] bool isLaunchDecided() const { return m_launchDecided; }

    // Runs the launch steps. Reading the remembered session takes the secure store's time, so
    // the menu (or nothing, for the sign-in) follows later, announced by launchDecided().
    bool applicationDidFinishLaunching(const QVariantMap &launchOptions);
    // The background fetch does no work and never reports a result: the handler is dropped.
    void applicationPerformFetch(std::function<void(int result)> completionHandler);
    void applicationDidRegisterForRemoteNotifications(const QByteArray &deviceToken);
    void applicationDidFailToRegisterForRemoteNotifications(const QString &error);
    [[nodiscard]] SceneConfiguration
    applicationConfigurationForConnectingSceneSession(const QString &sessionRole) const;
    void applicationDidDiscardSceneSessions() {}

    // Two upper-case hexadecimal digits per byte, in order, no separator.
    [[nodiscard]] static QString deviceTokenString(const QByteArray &deviceToken);

Q_SIGNALS:
    // The installation save finished (for whoever watches the launch, such as tests).
    void installationSaveFinished(bool succeeded);
    // The remembered session was read: window() holds the menu, or stays empty for the sign-in.
    void launchDecided();
    // The server refused the remembered session at start-up: the user was signed out here and
    // window() now shows the sign-in.
    void rememberedSessionRefused();

private:
    void configureBackend();
    void styleNavigationBars();
    void recordVersion();
    void requestNotificationPermission();
    void decideFirstScreen();
    void showMenuForRememberedSession();
    void verifyRememberedSession();
    void showSignIn();

    Services m_services;
    QPointer<ui::Window> m_window;
    bool m_launchDecided = false;
};
