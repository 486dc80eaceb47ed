// Picking a photo: through the desktop portal's file chooser (a stand-in portal on a private
// bus), and the app's own sheet when there is no portal.
#include "FilePickerSheet.h"
#include "PictureChooser.h"
#include "PortalFileChooser.h"
#include "PrivateBus.h"
#include "ViewController.h"
#include "Window.h"

#include <QDBusMessage>
#include <QTest>

using Outcome = PortalFileChooser::Outcome;

class TestFileChooser : public QObject {
    Q_OBJECT

private:
    // Sets what the stand-in portal answers next.
    static bool setAnswer(PrivateBus &bus, uint response, const QStringList &uris, bool ownPath)
    {
        QDBusMessage call = QDBusMessage::createMethodCall(QStringLiteral("org.freedesktop.portal.Desktop"),
                                                           QStringLiteral("/org/freedesktop/portal/desktop"),
                                                           QStringLiteral("org.freedesktop.DBus.Mock"),
                                                           QStringLiteral("SetAnswer"));
        call << response << uris << ownPath;
        return bus.connection().call(call).type() == QDBusMessage::ReplyMessage;
    }

    static std::unique_ptr<PrivateBus> busWithPortal()
    {
        auto bus = std::make_unique<PrivateBus>();
        if (!bus->isRunning() ||
            !bus->startTemplate(QStringLiteral(VANTREL_SOURCE_DIR "/tests/support/portal_template.py"),
                                QStringLiteral("org.freedesktop.portal.Desktop"), {QStringLiteral("--session")}))
            return nullptr;
        return bus;
    }

private Q_SLOTS:
    void portalAnswers_data()
    {
        QTest::addColumn<uint>("response");
        QTest::addColumn<QStringList>("uris");
        QTest::addColumn<bool>("ownPath");
        QTest::addColumn<int>("outcome");
        const QStringList photo{QStringLiteral("file:///home/ada/Pictures/IMG_0001.JPG")};
        QTest::newRow("a file picked") << 0u << photo << false << int(Outcome::Picked);
        QTest::newRow("a portal choosing its own request path") << 0u << photo << true << int(Outcome::Picked);
        QTest::newRow("cancelled") << 1u << QStringList() << false << int(Outcome::Cancelled);
        QTest::newRow("the chooser could not ask") << 2u << QStringList() << false << int(Outcome::Failed);
    }
    void portalAnswers()
    {
        QFETCH(uint, response);
        QFETCH(QStringList, uris);
        QFETCH(bool, ownPath);
        QFETCH(int, outcome);
        std::unique_ptr<PrivateBus> bus = busWithPortal();
        QVERIFY(bus);
        QVERIFY(setAnswer(*bus, response, uris, ownPath));
        PortalFileChooser chooser(bus->connection());
        QVERIFY(chooser.isAvailable());

        std::optional<std::pair<Outcome, QUrl>> answer;
        chooser.openFile(QStringLiteral("Choose a photo"), {QStringLiteral("image/jpeg"), QStringLiteral("image/png")},
                         [&answer](Outcome got, const QUrl &file) { answer = {got, file}; });
        QTRY_VERIFY_WITH_TIMEOUT(answer.has_value(), 10000);
        QCOMPARE(int(answer->first), outcome);
        QCOMPARE(answer->second, uris.isEmpty() ? QUrl() : QUrl(uris.first()));

    }

    // Without a portal the app's own sheet comes up on the screen.
    void otherwiseTheAppsOwnSheetOpens()
    {
        ui::Window window;
        window.setDrawsInterface(false);
        auto *screen = new ui::ViewController;
        window.setRootViewController(screen);
        window.makeKeyAndVisible();

        PrivateBus empty;
        QVERIFY(empty.isRunning());
        PortalFileChooser none(empty.connection());
        QVERIFY(!none.isAvailable());
        PictureChooser withoutPortal(&none);
        withoutPortal.choose(screen, [](const QUrl &) {});
        QVERIFY(qobject_cast<ui::FilePickerSheet *>(screen->presentedViewController()));
        qobject_cast<ui::FilePickerSheet *>(screen->presentedViewController())->cancel();
        QTRY_VERIFY(!screen->presentedViewController());

    }
};

QTEST_MAIN(TestFileChooser)
#include "tst_file_chooser.moc"
