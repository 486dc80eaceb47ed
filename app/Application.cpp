#include "Application.h"

#include "AccountServices.h"
#include "AppDelegate.h"
#include "AppLogging.h"
#include "AppStoryboards.h"
#include "FprintdBiometrics.h"
#include "NotificationCenter.h"
#include "PushTokenSource.h"
#include "SceneDelegate.h"
#include "SecureStore.h"
#include "Storyboard.h"
#include "UserDefaults.h"
#include "Window.h"
#include "ui/ViewController.h"

#include <QDir>
#include <QGuiApplication>
#include <QImage>
#include <QQuickStyle>
#include <QQuickWindow>
#include <QTimer>
#include <cstdio>
#include <ctime>

namespace {
const auto kSessionService = QStringLiteral("Vantrel Pro session");
}

Application::Application(AppConfiguration configuration, QObject *parent)
    : QObject(parent), m_configuration(std::move(configuration))
{
    const QDir data(m_configuration.dataDirectory);
    m_userDefaults = std::make_unique<UserDefaults>(data.filePath(QStringLiteral("user-defaults.ini")));
    UserDefaults::setStandardUserDefaults(m_userDefaults.get());
    m_secureStore = std::make_unique<SecureStore>(kSessionService);
    m_biometrics = std::make_unique<FprintdBiometrics>();

    // The sign-in screens: the saved password shares the store, under its own service.
    AccountServices accounts;
    accounts.userDefaults = m_userDefaults.get();
    accounts.secureStore = m_secureStore.get();
    accounts.biometrics = m_biometrics.get();
    accounts.administratorEmail = m_configuration.administratorEmail;
    accounts.helpEmail = m_configuration.helpEmail;
    AccountServices::setCurrent(accounts);
    m_notificationCenter = std::make_unique<NotificationCenter>();
    m_pushTokenSource = std::make_unique<PushTokenSource>(data.filePath(QStringLiteral("push-token")));

    AppDelegate::Services services;
    services.configuration = &m_configuration;
    services.userDefaults = m_userDefaults.get();
    services.notificationCenter = m_notificationCenter.get();
    services.pushTokenSource = m_pushTokenSource.get();
    services.secureStorage = m_secureStore.get();
    services.applicationVersion = QCoreApplication::applicationVersion();
    m_delegate = std::make_unique<AppDelegate>(services);
    m_sceneDelegate = std::make_unique<SceneDelegate>();
}

Application::~Application()
{
    if (UserDefaults::standardUserDefaults() == m_userDefaults.get())
        UserDefaults::setStandardUserDefaults(nullptr);
    AccountServices::setCurrent({});
}

void Application::launch()
{
    AppStoryboards::registerAll(m_configuration);
    connect(m_delegate.get(), &AppDelegate::launchDecided, this, &Application::firstScreenDecided,
            Qt::SingleShotConnection);
    m_delegate->applicationDidFinishLaunching({});
    QTimer::singleShot(kStartScreenAfterMs, this, [this] {
        if (!m_delegate->isLaunchDecided())
            showStartScreen();
    });
}

void Application::firstScreenDecided()
{
    if (m_delegate->window())
        m_mainWindow.reset(); // the start-up screen, if it was drawn, gives way to the menu
    else
        showMainStoryboard();
    m_sceneDelegate->setWindow(window());
}

void Application::showStartScreen()
{
    ui::Storyboard *main = ui::Storyboard::storyboardWithName(AppStoryboards::kMain);
    ui::ViewController *start =
        main ? main->instantiateViewControllerWithIdentifier(AppStoryboards::kStartIdentifier) : nullptr;
    if (!start)
        return;
    qCInfo(lcApp) << "waiting for the secure store to give the remembered session";
    m_mainWindow = std::make_unique<ui::Window>();
    m_mainWindow->setRootViewController(start);
    m_mainWindow->makeKeyAndVisible();
}

void Application::showMainStoryboard()
{
    ui::Storyboard *main = ui::Storyboard::storyboardWithName(AppStoryboards::kMain);
    ui::ViewController *first = main ? main->instantiateInitialViewController() : nullptr;
    if (!first) {
        qCCritical(lcApp) << "the main storyboard has no first screen";
        return;
    }
    if (!m_mainWindow)
        m_mainWindow = std::make_unique<ui::Window>();
    m_mainWindow->setRootViewController(first);
    m_mainWindow->makeKeyAndVisible();
}

ui::Window *Application::window() const
{
    return m_delegate->window() ? m_delegate->window() : m_mainWindow.get();
}

void Application::afterFirstFrame(std::function<void(QQuickWindow *)> action)
{
    if (!m_delegate->isLaunchDecided()) {
        connect(
            m_delegate.get(), &AppDelegate::launchDecided, this,
            [this, action] { QTimer::singleShot(0, this, [this, action] { afterFirstFrame(action); }); },
            Qt::SingleShotConnection);
        return;
    }
    ui::Window *shown = window();
    QQuickWindow *quick = shown ? shown->quickWindow() : nullptr;
    if (!quick) {
        std::fprintf(stderr, "Vantrel PRO: no window was opened\n");
        QCoreApplication::exit(1);
        return;
    }
    connect(
        quick, &QQuickWindow::frameSwapped, this, [quick, action] { action(quick); }, Qt::SingleShotConnection);
}

void Application::reportFirstFrameAndQuit()
{
    afterFirstFrame([](QQuickWindow *) {
        timespec ts{};
        clock_gettime(CLOCK_MONOTONIC, &ts);
        std::printf("first-frame-monotonic-ns %lld\n", ts.tv_sec * 1000000000LL + ts.tv_nsec);
        std::fflush(stdout);
        QCoreApplication::quit();
    });
}

void Application::saveScreenshotAndQuit(const QString &path)
{
    afterFirstFrame([path](QQuickWindow *quick) {
        // Let the first screen settle (fonts, images) before taking the picture.
        QTimer::singleShot(500, quick, [quick, path] {
            const QImage image = quick->grabWindow();
            const bool saved = !image.isNull() && image.save(path);
            if (!saved)
                std::fprintf(stderr, "Vantrel PRO: the screenshot could not be written to %s\n", qPrintable(path));
            QCoreApplication::exit(saved ? 0 : 1);
        });
    });
}

int Application::main(int argc, char **argv)
{
    QGuiApplication::setApplicationName(QStringLiteral("Vantrel PRO"));
    QGuiApplication::setOrganizationName(QStringLiteral("Vantrel"));
    QGuiApplication::setApplicationVersion(QStringLiteral(VANTREL_VERSION));
    QGuiApplication::setDesktopFileName(QStringLiteral("vantrel-pro"));
    // Help needs no display: answer it before the GUI starts.
    for (int i = 1; i < argc; ++i) {
        if (qstrcmp(argv[i], "--help") == 0 || qstrcmp(argv[i], "-h") == 0) {
            QCoreApplication core(argc, argv);
            AppConfiguration configuration;
            std::fputs(qPrintable(configuration.load(core.arguments()).message), stdout);
            std::fputs("  --report-first-frame   Print when the first frame is drawn, then quit.\n"
                       "  --screenshot <file>    Save a picture of the first screen, then quit.\n",
                       stdout);
            return 0;
        }
    }
    QGuiApplication app(argc, argv);

    QStringList arguments = app.arguments();
    const bool reportFirstFrame = arguments.removeAll(QStringLiteral("--report-first-frame")) > 0;
    QString screenshotPath;
    const qsizetype screenshotAt = arguments.indexOf(QStringLiteral("--screenshot"));
    if (screenshotAt > 0 && screenshotAt + 1 < arguments.size()) {
        screenshotPath = arguments.at(screenshotAt + 1);
        arguments.remove(screenshotAt, 2);
    }
    AppConfiguration configuration;
    const AppConfiguration::Outcome outcome = configuration.load(arguments);
    if (!outcome.ok) {
        std::fprintf(stderr, "Vantrel PRO cannot start:\n%s\n", qPrintable(outcome.message));
        return 2;
    }

    if (qEnvironmentVariableIsEmpty("QT_QUICK_CONTROLS_STYLE"))
        QQuickStyle::setStyle(QStringLiteral("Basic"));

    Application application(std::move(configuration));
    application.launch();
    if (reportFirstFrame)
        application.reportFirstFrameAndQuit();
    else if (!screenshotPath.isEmpty())
        application.saveScreenshotAndQuit(screenshotPath);
    return app.exec();
}
