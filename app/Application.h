#pragma once

#include "AppConfiguration.h"

#include <QObject>
#include <functional>
#include <memory>

class AppDelegate;
class Biometrics;
class QQuickWindow;
class NotificationCenter;
class PushTokenSource;
class SceneDelegate;
class SecureStore;
class UserDefaults;
namespace ui {
class Window;
}

// The running app: reads the configuration, builds the platform services once, hands them
// to the delegate's launch and, when the launch made no window, shows the main storyboard's
// first screen as the platform would.
//
// Which screen comes first depends on the remembered session, which the secure store gives
// asynchronously (in a few milliseconds, or once the user has unlocked the keyring). The first
// frame waits for that answer only briefly: when it takes longer, the neutral start-up screen
// is drawn meanwhile, so neither the sign-in nor the menu ever flashes up wrongly.
class Application : public QObject {
    Q_OBJECT
public:
    explicit Application(AppConfiguration configuration, QObject *parent = nullptr);
    ~Application() override;

    // Launches: the delegate's steps, then the first window.
    void launch();
    // How long the first frame waits for the remembered session before the start-up screen is drawn.
    static constexpr int kStartScreenAfterMs = 150;

    [[nodiscard]] AppDelegate *delegate() const { return m_delegate.get(); }
    // The window on screen: the delegate's, or the main storyboard's.
    [[nodiscard]] ui::Window *window() const;

    // Prints "first-frame-monotonic-ns N" once the first frame is drawn, then quits (benchmarks).
    void reportFirstFrameAndQuit();
    // Saves a picture of the first screen once it is drawn, then quits.
    void saveScreenshotAndQuit(const QString &path);

    // The whole program: arguments in, exit code out.
    static int main(int argc, char **argv);

private:
    void showMainStoryboard();
    void showStartScreen();
    void firstScreenDecided();
    void afterFirstFrame(std::function<void(QQuickWindow *)> action);

    AppConfiguration m_configuration;
    std::unique_ptr<UserDefaults> m_userDefaults;
    std::unique_ptr<SecureStore> m_secureStore;
    std::unique_ptr<Biometrics> m_biometrics;
    std::unique_ptr<NotificationCenter> m_notificationCenter;
    std::unique_ptr<PushTokenSource> m_pushTokenSource;
    std::unique_ptr<AppDelegate> m_delegate;
    std::unique_ptr<SceneDelegate> m_sceneDelegate;
    std::unique_ptr<ui::Window> m_mainWindow;
};
