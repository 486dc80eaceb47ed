// The profile drawn offscreen: both views load, and a person edits a field, saves and reads
// the confirmation.
#include "AlertController.h"
#include "MasterProfileViewController.h"
#include "ProfileFixture.h"
#include "ProfileTableViewController.h"
#include "ViewTestHelpers.h"

#include <QQuickItem>
#include <QQuickWindow>
#include <QTest>

using ViewTest::tap;
using ViewTest::typeText;
using ViewTest::visibleItem;

class TestProfileViews : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { ViewTest::failOnQmlWarnings(); }

    void everyViewCompiles_data()
    {
        QTest::addColumn<QString>("file");
        QTest::newRow("hub") << QStringLiteral("MasterProfilePage");
        QTest::newRow("table") << QStringLiteral("ProfileTable");
    }
    void everyViewCompiles()
    {
        QFETCH(QString, file);
        const QString errors =
            ViewTest::compileErrors(QUrl(QStringLiteral("qrc:/qt/qml/Vantrel/Profile/%1.qml").arg(file)));
        QVERIFY2(errors.isEmpty(), qPrintable(errors));
    }

    void editingAFieldAndSavingConfirms()
    {
        REQUIRE_BACKEND();
        ProfileFixture fixture(/*drawsInterface=*/true);
        QVERIFY(fixture.isReady());
        const ProfileFixture::Member member = fixture.makeFreelancer(QStringLiteral("Print"), {});
        MasterProfileViewController *hub = fixture.openHub(member);
        QVERIFY(hub);
        QQuickWindow *quick = fixture.window().quickWindow();
        QVERIFY(quick);
        QVERIFY(QTest::qWaitForWindowExposed(quick));

        QQuickItem *position = nullptr;
        QTRY_VERIFY((position = visibleItem(quick, QStringLiteral("positionTextField"))));
        QTRY_COMPARE(position->property("text").toString(), QStringLiteral("Camera operator"));
        QVERIFY(!position->isEnabled());

        QQuickItem *edit = visibleItem(quick, QStringLiteral("editButton"));
        QVERIFY(edit);
        tap(quick, edit);
        QTRY_VERIFY(position->isEnabled());
        QCOMPARE(edit->property("text").toString(), QStringLiteral("SAVE"));

        // Without a desktop portal the app's own picker opens; Escape closes it.
        QQuickItem *choosePhoto = visibleItem(quick, QStringLiteral("choosePhotoButton"));
        QVERIFY(choosePhoto);
        tap(quick, choosePhoto);
        QTRY_VERIFY(visibleItem(quick, QStringLiteral("filePickerSheet")));
        QTest::keyClick(quick, Qt::Key_Escape);
        QTRY_VERIFY(!visibleItem(quick, QStringLiteral("filePickerSheet")));

        tap(quick, position);
        QTRY_VERIFY(hub->profileTable()->positionTextField()->isFirstResponder());
        QTest::keyClick(quick, Qt::Key_End);
        typeText(quick, QStringLiteral(" and editor"));
        QCOMPARE(hub->profileTable()->positionTextField()->text(), QStringLiteral("Camera operator and editor"));

        tap(quick, edit); // it reads "SAVE" and saves
        QQuickItem *message = nullptr;
        QTRY_VERIFY_WITH_TIMEOUT((message = visibleItem(quick, QStringLiteral("alertMessage"))), 20000);
        QCOMPARE(message->property("text").toString(), QStringLiteral("Changes Saved"));
        QQuickItem *ok = visibleItem(quick, QStringLiteral("alertAction_Ok"));
        QVERIFY(ok);
        tap(quick, ok);
        QTRY_VERIFY(!ui::AlertController::alertOnScreen());
        QTRY_VERIFY(!position->isEnabled());
        QCOMPARE(edit->property("text").toString(), QStringLiteral("EDIT"));
        QCOMPARE(ProfileFixture::serverUser(member.user.objectId).value(QStringLiteral("position")).toString(),
                 QStringLiteral("Camera operator and editor"));
    }
};

QTEST_MAIN(TestProfileViews)
#include "tst_profile_views.moc"
