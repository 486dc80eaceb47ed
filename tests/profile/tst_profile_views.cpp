// The profile drawn offscreen: both views load, and a person edits a field, saves and reads
// the confirmation.
#include "AlertController.h"
#include "MasterProfileViewController.h"
#include "ProfileFixture.h"
#include "ProfileTableViewController.h"
#include "ViewTestHelpers.h"

#include <QQuickItem>
#include <QQuickWindow>
#include <QRegularExpression>
#include <QTest>

using ViewTest::centreOf;
using ViewTest::typeText;

namespace {
QQuickItem *findVisibleItem(QQuickItem *root, const QString &name)
{
    return ViewTest::findItem(root, name, true);
}
} // namespace

class TestProfileViews : public QObject {
    Q_OBJECT

private Q_SLOTS:
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
        QTRY_VERIFY((position = findVisibleItem(quick->contentItem(), QStringLiteral("positionTextField"))));
        QTRY_COMPARE(position->property("text").toString(), QStringLiteral("Camera operator"));
        QVERIFY(!position->isEnabled());

        QQuickItem *edit = findVisibleItem(quick->contentItem(), QStringLiteral("editButton"));
        QVERIFY(edit);
        QTest::mouseClick(quick, Qt::LeftButton, {}, centreOf(edit));
        QTRY_VERIFY(position->isEnabled());
        QCOMPARE(edit->property("text").toString(), QStringLiteral("SAVE"));

        // The photo picker opens (its implementation needs modules the view alone does not).
        QTest::failOnWarning(QRegularExpression(QStringLiteral("FileDialog")));
        QQuickItem *choosePhoto = findVisibleItem(quick->contentItem(), QStringLiteral("choosePhotoButton"));
        QVERIFY(choosePhoto);
        QTest::mouseClick(quick, Qt::LeftButton, {}, centreOf(choosePhoto));
        QObject *dialog = nullptr;
        for (QQuickItem *form = choosePhoto; form && !dialog; form = form->parentItem())
            dialog = form->findChild<QObject *>(QStringLiteral("photoDialog"));
        QVERIFY(dialog);
        QTRY_VERIFY(dialog->property("visible").toBool());
        QMetaObject::invokeMethod(dialog, "reject");
        QTRY_VERIFY(!dialog->property("visible").toBool());

        QTest::mouseClick(quick, Qt::LeftButton, {}, centreOf(position));
        QTRY_VERIFY(hub->profileTable()->positionTextField()->isFirstResponder());
        QTest::keyClick(quick, Qt::Key_End);
        typeText(quick, QStringLiteral(" and editor"));
        QCOMPARE(hub->profileTable()->positionTextField()->text(), QStringLiteral("Camera operator and editor"));

        QQuickItem *save = findVisibleItem(quick->contentItem(), QStringLiteral("saveButton"));
        QVERIFY(save);
        QTest::mouseClick(quick, Qt::LeftButton, {}, centreOf(save));
        QQuickItem *message = nullptr;
        QTRY_VERIFY_WITH_TIMEOUT((message = findVisibleItem(quick->contentItem(), QStringLiteral("alertMessage"))),
                                 20000);
        QCOMPARE(message->property("text").toString(), QStringLiteral("Changes Saved"));
        QQuickItem *ok = findVisibleItem(quick->contentItem(), QStringLiteral("alertAction_Ok"));
        QVERIFY(ok);
        QTest::mouseClick(quick, Qt::LeftButton, {}, centreOf(ok));
        QTRY_VERIFY(!ui::AlertController::alertOnScreen());
        QTRY_VERIFY(!position->isEnabled());
        QCOMPARE(edit->property("text").toString(), QStringLiteral("EDIT"));
        QCOMPARE(ProfileFixture::serverUser(member.user.objectId).value(QStringLiteral("position")).toString(),
                 QStringLiteral("Camera operator and editor"));
    }
};

QTEST_MAIN(TestProfileViews)
#include "tst_profile_views.moc"
