#include "ProfileFixture.h"

#include "AccountScenes.h"
#include "AccountServices.h"
#include "AlertController.h"
#include "ClientFixture.h"
#include "MasterProfileViewController.h"
#include "NavigationController.h"
#include "PFSubclassRegistry.h"
#include "PFUser.h"
#include "ProfileScenes.h"
#include "RecordClasses.h"
#include "RevealViewController.h"
#include "ShellScenes.h"
#include "Storyboard.h"

#include <QEventLoop>
#include <QJsonArray>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QTest>
#include <QUrlQuery>

namespace {

const QString kRear = QStringLiteral("rear");

void registerStoryboards()
{
    ui::StoryboardDefinition menu;
    menu.initialIdentifier = QStringLiteral("menu");
    menu.scenes.insert(QStringLiteral("menu"), ShellScenes::revealScene(kRear, ProfileScenes::kProfile));
    menu.scenes.insert(kRear, {[] { return new ui::ViewController; }});
    ProfileScenes::addTo(menu);
    ui::Storyboard::registerStoryboard(QStringLiteral("Menu"), menu);

    ui::StoryboardDefinition registration;
    registration.initialIdentifier = AccountScenes::kLogin;
    AccountScenes::addTo(registration);
    ui::Storyboard::registerStoryboard(QStringLiteral("Registration"), registration);
}

QJsonObject pointer(const QString &className, const QString &objectId)
{
    return {{QStringLiteral("__type"), QStringLiteral("Pointer")},
            {QStringLiteral("className"), className},
            {QStringLiteral("objectId"), objectId}};
}

} // namespace

ProfileFixture::ProfileFixture(bool drawsInterface)
{
    if (!TestBackend::instance().isAvailable() || !m_dir.isValid())
        return;
    m_defaults = std::make_unique<UserDefaults>(m_dir.filePath(QStringLiteral("defaults.ini")));
    AccountServices services;
    services.userDefaults = m_defaults.get();
    services.administratorEmail = kAdministrator;
    services.helpEmail = QStringLiteral("help@vantrel.test");
    AccountServices::setCurrent(services);
    PFSubclassRegistry::shared().clear();
    registerRecordClasses();
    restartClient();
    registerStoryboards();
    m_window = std::make_unique<ui::Window>();
    m_window->setDrawsInterface(drawsInterface);
    m_ready = true;
}

ProfileFixture::~ProfileFixture()
{
    ui::AlertController *alert = ui::AlertController::alertOnScreen();
    if (alert && !alert->actions().isEmpty())
        alert->choose(alert->actions().constLast());
    m_window.reset();
    ClientFixture::stop();
    AccountServices::setCurrent({});
}

void ProfileFixture::restartClient(const QString &server)
{
    ClientFixture::start(ClientFixture::configuration(m_dir.path(), &m_sessionStorage, server));
}

ProfileFixture::Member ProfileFixture::makeFreelancer(const QString &role, const QStringList &skills,
                                                      const QJsonObject &userKeys)
{
    const TestBackend &backend = TestBackend::instance();
    Member member;
    member.user = backend.signUpUser({{QStringLiteral("firstName"), QStringLiteral("Amara")},
                                      {QStringLiteral("lastName"), QStringLiteral("Okafor")}});
    QJsonObject keys{{QStringLiteral("isAuthorised"), true},
                     {QStringLiteral("workEmail"), member.user.username},
                     {QStringLiteral("position"), QStringLiteral("Camera operator")},
                     {QStringLiteral("mobileCountryCode"), QStringLiteral("+44")},
                     {QStringLiteral("mobileTelephoneNumber"), QStringLiteral("7700900123")}};
    for (auto it = userKeys.begin(); it != userKeys.end(); ++it)
        keys.insert(it.key(), it.value());
    const auto updated = backend.request("PUT", QStringLiteral("/users/") + member.user.objectId, keys, true);
    if (updated.status != 200)
        qWarning() << "setting the user's keys failed:" << updated.raw;

    QJsonObject freelancer{{QStringLiteral("user"), pointer(QStringLiteral("_User"), member.user.objectId)},
                           {QStringLiteral("skills"), QJsonArray::fromStringList(skills)},
                           {QStringLiteral("isWhatsApp"), false}};
    if (!role.isEmpty())
        freelancer.insert(QStringLiteral("freelanceCategory"),
                          pointer(QStringLiteral("FreelanceCategory"), categoryId(role)));
    const auto created = backend.request("POST", QStringLiteral("/classes/Freelancer"), freelancer, true);
    if (created.status != 201)
        qWarning() << "making the freelancer record failed:" << created.raw;
    member.freelancerId = created.body.object().value(QStringLiteral("objectId")).toString();
    return member;
}

MasterProfileViewController *ProfileFixture::openHub(const Member &member)
{
    if (!ClientFixture::logIn(member.user.username, member.user.password))
        return nullptr;
    ui::ViewController *menu =
        ui::Storyboard::storyboardWithName(QStringLiteral("Menu"))->instantiateInitialViewController();
    m_window->setRootViewController(menu);
    m_window->makeKeyAndVisible();
    auto *front = reveal() ? qobject_cast<ui::NavigationController *>(reveal()->frontViewController()) : nullptr;
    auto *hub = front ? qobject_cast<MasterProfileViewController *>(front->topViewController()) : nullptr;
    if (!hub || !QTest::qWaitFor(
                    [&] {
                        return hub->appearanceState() == ui::ViewController::AppearanceState::Appeared &&
                               !hub->isLoading();
                    },
                    20000))
        return nullptr;
    return hub;
}

RevealViewController *ProfileFixture::reveal() const
{
    return qobject_cast<RevealViewController *>(m_window->rootViewController());
}

QJsonObject ProfileFixture::serverUser(const QString &objectId)
{
    return TestBackend::instance().request("GET", QStringLiteral("/users/") + objectId, {}, true).body.object();
}

QJsonObject ProfileFixture::serverFreelancer(const QString &objectId)
{
    return TestBackend::instance()
        .request("GET", QStringLiteral("/classes/Freelancer/%1?include=freelanceCategory").arg(objectId), {}, true)
        .body.object();
}

QString ProfileFixture::categoryId(const QString &role)
{
    const QString where =
        QString::fromUtf8(QUrl::toPercentEncoding(QStringLiteral(R"({"categoryTitle":"%1"})").arg(role)));
    const auto reply =
        TestBackend::instance().request("GET", QStringLiteral("/classes/FreelanceCategory?where=") + where, {}, true);
    const QJsonArray results = reply.body.object().value(QStringLiteral("results")).toArray();
    return results.isEmpty() ? QString() : results.first().toObject().value(QStringLiteral("objectId")).toString();
}

QByteArray ProfileFixture::download(const QString &url)
{
    QNetworkAccessManager network;
    QNetworkReply *reply = network.get(QNetworkRequest(QUrl(url)));
    QEventLoop loop;
    QObject::connect(reply, &QNetworkReply::finished, &loop, &QEventLoop::quit);
    loop.exec();
    const QByteArray data = reply->error() == QNetworkReply::NoError ? reply->readAll() : QByteArray();
    reply->deleteLater();
    return data;
}

ui::AlertController *ProfileFixture::expectAlert(const QString &title, const QString &message,
                                                 const QStringList &buttons)
{
    if (!QTest::qWaitFor([] { return ui::AlertController::alertOnScreen() != nullptr; }, 20000)) {
        qWarning() << "no alert; expected:" << title << message;
        return nullptr;
    }
    ui::AlertController *alert = ui::AlertController::alertOnScreen();
    QStringList titles;
    for (ui::AlertAction *action : alert->actions())
        titles << action->title();
    if (alert->title() != title || alert->message() != message || titles != buttons) {
        qWarning() << "unexpected alert:" << alert->title() << alert->message() << titles;
        return nullptr;
    }
    return alert;
}

void ProfileFixture::choose(ui::AlertController *alert, const QString &button)
{
    if (!alert)
        return;
    for (ui::AlertAction *action : alert->actions()) {
        if (action->title() == button) {
            alert->choose(action);
            break;
        }
    }
    (void)QTest::qWaitFor([] { return ui::AlertController::alertOnScreen() == nullptr; }, 5000);
    QTest::qWait(20);
}
