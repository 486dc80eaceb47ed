#include "ProfileFixture.h"

#include "ClientFixture.h"
#include "MasterProfileViewController.h"
#include "NavigationController.h"
#include "ProfileScenes.h"
#include "RevealViewController.h"
#include "ShellScenes.h"
#include "Storyboard.h"

#include <QEventLoop>
#include <QJsonArray>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QTest>

namespace {

QJsonObject pointer(const QString &className, const QString &objectId)
{
    return {{QStringLiteral("__type"), QStringLiteral("Pointer")},
            {QStringLiteral("className"), className},
            {QStringLiteral("objectId"), objectId}};
}

} // namespace

ProfileFixture::ProfileFixture(bool drawsInterface, bool withReader) : AccountsFixture(drawsInterface, withReader)
{
    const QString rear = QStringLiteral("rear");
    ui::StoryboardDefinition menu;
    menu.initialIdentifier = QStringLiteral("menu");
    menu.scenes.insert(QStringLiteral("menu"), ShellScenes::revealScene(rear, ProfileScenes::kProfile));
    menu.scenes.insert(rear, {[] { return new ui::ViewController; }});
    ProfileScenes::addTo(menu);
    ui::Storyboard::registerStoryboard(QStringLiteral("Menu"), menu);
}

ProfileFixture::Member ProfileFixture::makeFreelancer(const QString &role, const QStringList &skills,
                                                      const QJsonObject &userKeys)
{
    QJsonObject keys{{QStringLiteral("isAuthorised"), true},
                     {QStringLiteral("lastName"), QStringLiteral("Okafor")},
                     {QStringLiteral("position"), QStringLiteral("Camera operator")},
                     {QStringLiteral("mobileCountryCode"), QStringLiteral("+44")},
                     {QStringLiteral("mobileTelephoneNumber"), QStringLiteral("7700900123")}};
    for (auto it = userKeys.begin(); it != userKeys.end(); ++it)
        keys.insert(it.key(), it.value());
    Member member{makeUser(keys), {}};

    QJsonObject freelancer{{QStringLiteral("user"), pointer(QStringLiteral("_User"), member.user.objectId)},
                           {QStringLiteral("skills"), QJsonArray::fromStringList(skills)},
                           {QStringLiteral("isWhatsApp"), false}};
    if (!role.isEmpty())
        freelancer.insert(QStringLiteral("freelanceCategory"),
                          pointer(QStringLiteral("FreelanceCategory"), categoryId(role)));
    const auto created =
        TestBackend::instance().request("POST", QStringLiteral("/classes/Freelancer"), freelancer, true);
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
    window().setRootViewController(menu);
    window().makeKeyAndVisible();
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

RevealViewController *ProfileFixture::reveal()
{
    return qobject_cast<RevealViewController *>(window().rootViewController());
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
