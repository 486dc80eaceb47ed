#include "ActivitySpinner.h"
#include "AlertController.h"
#include "AlertHelper.h"
#include "Button.h"
#include "EmptyTableHelper.h"
#include "Label.h"
#include "TableView.h"
#include "TableViewController.h"
#include "Window.h"

#include <QFontMetricsF>
#include <QRegularExpression>
#include <QTest>

class TestHelpers : public QObject {
    Q_OBJECT

private:
    static void settle()
    {
        for (int i = 0; i < 3; ++i)
            QCoreApplication::processEvents();
    }

private Q_SLOTS:
    void spinnerSitsCentredOnAnyView_data()
    {
        QTest::addColumn<QSizeF>("viewSize");
        QTest::addColumn<QRectF>("expectedFrame");

        QTest::newRow("phone") << QSizeF(390, 844) << QRectF(165, 392, 60, 60);
        QTest::newRow("small phone") << QSizeF(320, 568) << QRectF(130, 254, 60, 60);
        QTest::newRow("odd size") << QSizeF(101, 33) << QRectF(20.5, -13.5, 60, 60);
        QTest::newRow("not laid out yet") << QSizeF(0, 0) << QRectF(-30, -30, 60, 60);
    }

    void spinnerSitsCentredOnAnyView()
    {
        QFETCH(QSizeF, viewSize);
        QFETCH(QRectF, expectedFrame);

        ui::ViewController screen;
        screen.view()->setSize(viewSize.width(), viewSize.height());
        ActivitySpinner spinner;
        ui::ActivityIndicatorView *indicator = spinner.actInd();
        QVERIFY(indicator->isHidden()); // nothing shows before show()

        spinner.show(screen.view());
        QCOMPARE(indicator->frame(), expectedFrame);
        QVERIFY(indicator->isAnimating());
        QVERIFY(!indicator->isHidden());
        QCOMPARE(screen.view()->subviews(), QList<QObject *>{indicator});
    }

    void spinnerIsReusedAndHidesWhenStopped()
    {
        ui::ViewController screen;
        screen.view()->setSize(320, 480);
        ActivitySpinner spinner;
        QObject other;
        spinner.show(screen.view());
        screen.view()->addSubview(&other);

        spinner.actInd()->stopAnimating();
        QVERIFY(spinner.actInd()->isHidden());
        QVERIFY(!spinner.actInd()->isAnimating());

        // Shown again, after the view grew: the same indicator comes back on top, re-centred.
        screen.view()->setSize(640, 480);
        spinner.show(screen.view());
        QCOMPARE(screen.view()->subviews(), (QList<QObject *>{&other, spinner.actInd()}));
        QCOMPARE(spinner.actInd()->center(), QPointF(320, 240));
        QVERIFY(!spinner.actInd()->isHidden());

        // The controls it holds take no presses while it turns, then get their own state back.
        spinner.actInd()->stopAnimating();
        ui::Button login(QStringLiteral("loginButton"));
        ui::Button unavailable(QStringLiteral("registerButton"));
        unavailable.setEnabled(false);
        spinner.holdWhileSpinning({&login, &unavailable});
        spinner.show(screen.view(), QStringLiteral("Signing in\u2026"));
        QVERIFY(spinner.isSpinning() && !login.isEnabled());
        spinner.actInd()->stopAnimating();
        QVERIFY(login.isEnabled() && !unavailable.isEnabled());
    }

    void emptyMessageLabelGeometry_data()
    {
        QTest::addColumn<QSizeF>("viewSize");
        QTest::addColumn<QString>("message");
        QTest::addColumn<bool>("wraps");

        QTest::newRow("320 wide, short message") << QSizeF(320, 568) << QStringLiteral("No messages") << false;
        QTest::newRow("320 wide, long message")
            << QSizeF(320, 568)
            << QStringLiteral("You have no messages yet. Editors who want to work with you will write to you here.")
            << true;
        QTest::newRow("390 wide, long message")
            << QSizeF(390, 844)
            << QStringLiteral("You have no messages yet. Editors who want to work with you will write to you here.")
            << true;
    }

    void emptyMessageLabelGeometry()
    {
        QFETCH(QSizeF, viewSize);
        QFETCH(QString, message);
        QFETCH(bool, wraps);

        ui::TableViewController screen;
        screen.view()->setSize(viewSize.width(), viewSize.height());
        EmptyTableHelper::emptyMessage(message, &screen);

        auto *label = qobject_cast<ui::Label *>(screen.tableView()->backgroundView());
        QVERIFY(label);
        QCOMPARE(screen.tableView()->separatorStyle(), ui::TableView::SeparatorStyle::None);
        QCOMPARE(label->text(), message);
        // Sized to fit: it keeps its origin and stays within the width it was laid out with
        // (the view's width less 20 on each side); long text wraps at that width.
        QCOMPARE(label->frame().topLeft(), QPointF(20, 0));
        const qreal laidOutWidth = viewSize.width() - 40;
        QVERIFY(label->frame().width() <= laidOutWidth);
        QVERIFY(label->frame().width() > 0);
        const qreal lineHeight = QFontMetricsF(label->font()).height();
        QCOMPARE(label->frame().height() > 1.5 * lineHeight, wraps);
        if (wraps)
            QVERIFY(label->frame().width() > laidOutWidth * 0.6);
    }

    void alertHelperShowsOneOkButtonAndNeverQueues()
    {
        ui::Window window;
        window.setDrawsInterface(false);
        auto *screen = new ui::ViewController;
        window.setRootViewController(screen);
        window.makeKeyAndVisible();

        AlertHelper::show(QStringLiteral("Error"), QStringLiteral("Please enter some log in details."), screen);
        auto *alert = qobject_cast<ui::AlertController *>(screen->presentedViewController());
        QVERIFY(alert);
        QCOMPARE(alert->title(), QStringLiteral("Error"));
        QCOMPARE(alert->message(), QStringLiteral("Please enter some log in details."));
        QCOMPARE(alert->actions().size(), 1);
        QCOMPARE(alert->actions().first()->title(), QStringLiteral("Ok"));
        settle();

        // A second alert while the first shows is refused, not queued.
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression("Attempt to present .* which is already presenting"));
        AlertHelper::show(QStringLiteral("Success"), QStringLiteral("Saved"), screen);
        QCOMPARE(screen->presentedViewController(), alert);

        QPointer<ui::AlertController> shown(alert);
        alert->choose(alert->actions().first());
        settle();
        QVERIFY(!screen->presentedViewController());
        QTRY_VERIFY(!shown);
        QVERIFY(!ui::AlertController::alertOnScreen()); // the refused one never came back
    }
};

QTEST_MAIN(TestHelpers)
#include "tst_helpers.moc"
