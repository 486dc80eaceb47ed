#include "RevealLayer.h"
#include "RevealViewController.h"

#include "ui/Button.h"
#include "ui/View.h"
#include "ui/Window.h"

#include <QQuickItem>
#include <QQuickWindow>
#include <QTest>

#include "ViewTestHelpers.h"

using ViewTest::findItem;

namespace {

// A front screen with one button, to see that taps still reach the screen.
class ButtonScreen : public ui::ViewController {
    Q_OBJECT
    Q_PROPERTY(ui::Button *actionButton READ actionButton CONSTANT)

public:
    ButtonScreen() { setViewUrl(QUrl(QStringLiteral("qrc:/test/ButtonScreenView.qml"))); }
    [[nodiscard]] ui::Button *actionButton() const { return m_button; }

private:
    ui::Button *m_button = new ui::Button(QStringLiteral("actionButton"), this);
};


// Moves the mouse from `from` to `to` in steps of about one frame, like a hand would.
void drag(QQuickWindow *window, QPoint from, QPoint to, int steps, int msPerStep)
{
    for (int i = 1; i <= steps; ++i) {
        const QPoint at = from + (to - from) * i / steps;
        QTest::mouseMove(window, at);
        QTest::qWait(msPerStep);
    }
}

} // namespace

class TestRevealView : public QObject {
    Q_OBJECT

private:
    struct Scene {
        ui::Window window;
        RevealViewController *reveal = nullptr;
        ButtonScreen *front = nullptr;
        QQuickWindow *quick = nullptr;
    };
    std::unique_ptr<Scene> show()
    {
        auto scene = std::make_unique<Scene>();
        scene->front = new ButtonScreen;
        scene->reveal = new RevealViewController(new ui::ViewController, scene->front);
        scene->window.setRootViewController(scene->reveal);
        scene->window.makeKeyAndVisible();
        scene->quick = scene->window.quickWindow();
        return scene;
    }

private Q_SLOTS:
    void init() { ViewTest::failOnQmlWarnings(); }

    void aRealDragOpensTheMenuAndATapClosesIt()
    {
        auto s = show();
        QVERIFY(s->quick);
        QVERIFY(QTest::qWaitForWindowExposed(s->quick));
        QTRY_COMPARE(s->reveal->view()->width(), qreal(390));
        QQuickItem *frontLayer = findItem(s->quick->contentItem(), QStringLiteral("revealFrontLayer"));
        QVERIFY(frontLayer);

        // A slow drag to 200 points, held, then let go: past half the width, so it opens.
        QTest::mousePress(s->quick, Qt::LeftButton, {}, QPoint(40, 600));
        drag(s->quick, QPoint(40, 600), QPoint(240, 604), 20, 16);
        QVERIFY(s->reveal->isDragging());
        QCOMPARE(frontLayer->x(), 200.0); // the front follows the finger
        QTest::qWait(150);
        QTest::mouseRelease(s->quick, Qt::LeftButton, {}, QPoint(240, 604));
        QTRY_COMPARE(s->reveal->frontViewPosition(), int(FrontRightShift));
        QTRY_COMPARE(frontLayer->x(), 260.0);
        QTRY_COMPARE(s->reveal->pendingOperations(), 0);

        // A tap on the displaced front closes it, and the screen's button does not see it.
        int clicks = 0;
        connect(s->front->actionButton(), &ui::Button::clicked, this, [&clicks] { ++clicks; });
        QQuickItem *button = findItem(s->quick->contentItem(), QStringLiteral("actionButton"));
        QVERIFY(button);
        // Only the button's left end is in the window while the menu is open.
        const QPoint onButton = button->mapToScene(QPointF(10, button->height() / 2)).toPoint();
        QVERIFY(onButton.x() > 260 && onButton.x() < 390);
        QTest::mouseClick(s->quick, Qt::LeftButton, {}, onButton);
        QTRY_COMPARE(s->reveal->frontViewPosition(), int(FrontCentred));
        QTRY_COMPARE(frontLayer->x(), 0.0);
        QCOMPARE(clicks, 0);

        // Centred, the same tap is the screen's.
        QTRY_COMPARE(s->reveal->pendingOperations(), 0);
        const QPoint centred = button->mapToScene(QPointF(button->width() / 2, button->height() / 2)).toPoint();
        QTest::mouseClick(s->quick, Qt::LeftButton, {}, centred);
        QCOMPARE(clicks, 1);
        QCOMPARE(s->reveal->frontViewPosition(), int(FrontCentred));
    }

    void aVerticalMoveIsLeftToTheScreen()
    {
        auto s = show();
        QVERIFY(QTest::qWaitForWindowExposed(s->quick));
        QTest::mousePress(s->quick, Qt::LeftButton, {}, QPoint(100, 500));
        drag(s->quick, QPoint(100, 500), QPoint(104, 520), 4, 16); // 6 points down before 5 across
        drag(s->quick, QPoint(104, 520), QPoint(250, 520), 10, 16);
        QTest::mouseRelease(s->quick, Qt::LeftButton, {}, QPoint(250, 520));
        QVERIFY(!s->reveal->isDragging());
        QCOMPARE(s->reveal->frontLocation(), 0.0);
        QCOMPARE(s->reveal->frontViewPosition(), int(FrontCentred));
    }

    void aFlickOpensFromAShortDrag()
    {
        auto s = show();
        QVERIFY(QTest::qWaitForWindowExposed(s->quick));
        QTRY_COMPARE(s->reveal->view()->width(), qreal(390));
        // 90 points in about 60 ms: well over the flick speed, well under half the width.
        QTest::mousePress(s->quick, Qt::LeftButton, {}, QPoint(60, 300));
        drag(s->quick, QPoint(60, 300), QPoint(150, 300), 6, 10);
        QTest::mouseRelease(s->quick, Qt::LeftButton, {}, QPoint(150, 300));
        QTRY_COMPARE(s->reveal->frontViewPosition(), int(FrontRightShift));
        QTRY_COMPARE(s->reveal->frontLocation(), 260.0);

        // Escape closes the menu again.
        QTRY_COMPARE(s->reveal->pendingOperations(), 0);
        QTest::keyClick(s->quick, Qt::Key_Escape);
        QTRY_COMPARE(s->reveal->frontViewPosition(), int(FrontCentred));
    }
};

QTEST_MAIN(TestRevealView)
#include "tst_shell_reveal_view.moc"
