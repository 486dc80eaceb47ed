#include "FrontViewPosition.h"
#include "RevealAnimationCurve.h"
#include "RevealDeployment.h"
#include "RevealGeometry.h"
#include "RevealOperationQueue.h"
#include "RevealViewControllerPanGestureRecognizer.h"

#include <QTest>

namespace {

constexpr qreal kWidth = 390; // the phone-sized window

// Settings tweaks a row names: "nobounce", "stable", "leftnobounce", "leftstable".
RevealSettings settingsWith(const QStringList &tweaks)
{
    RevealSettings s;
    s.bounceBackOnOverdraw = !tweaks.contains(QStringLiteral("nobounce"));
    s.stableDragOnOverdraw = tweaks.contains(QStringLiteral("stable"));
    s.bounceBackOnLeftOverdraw = !tweaks.contains(QStringLiteral("leftnobounce"));
    s.stableDragOnLeftOverdraw = tweaks.contains(QStringLiteral("leftstable"));
    return s;
}

} // namespace

class TestRevealMath : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void frontLocation_data()
    {
        QTest::addColumn<qreal>("rearWidth");
        QTest::addColumn<int>("position");
        QTest::addColumn<qreal>("location");
        QTest::newRow("far left removed") << 260.0 << 0 << -320.0;
        QTest::newRow("far left") << 260.0 << 1 << -320.0;
        QTest::newRow("left shift") << 260.0 << 2 << -260.0;
        QTest::newRow("centred") << 260.0 << 3 << 0.0;
        QTest::newRow("right shift") << 260.0 << 4 << 260.0;
        QTest::newRow("far right") << 260.0 << 5 << 320.0;
        QTest::newRow("far right removed") << 260.0 << 6 << 320.0;
        QTest::newRow("negative width counts from the container") << -60.0 << 4 << 330.0;
    }
    void frontLocation()
    {
        QFETCH(qreal, rearWidth);
        QFETCH(int, position);
        QFETCH(qreal, location);
        RevealSettings s;
        s.rearViewRevealWidth = rearWidth;
        QCOMPARE(RevealGeometry(s, kWidth).frontLocationForPosition(position), location);
    }

    void dragAdjustment_data()
    {
        QTest::addColumn<QStringList>("tweaks");
        QTest::addColumn<int>("currentPosition");
        QTest::addColumn<qreal>("finger");
        QTest::addColumn<qreal>("front");
        QTest::newRow("within the width follows the finger") << QStringList() << 3 << 200.0 << 200.0;
        QTest::newRow("at the width") << QStringList() << 3 << 260.0 << 260.0;
        QTest::newRow("half speed past the width") << QStringList() << 3 << 320.0 << 290.0;
        QTest::newRow("380 of finger travel reaches 320") << QStringList() << 3 << 380.0 << 320.0;
        QTest::newRow("held at width plus overdraw") << QStringList() << 3 << 500.0 << 320.0;
        QTest::newRow("right side mirrors") << QStringList() << 3 << -380.0 << -320.0;
        QTest::newRow("no bounce-back: full speed to the end")
            << QStringList{QStringLiteral("nobounce")} << 3 << 300.0 << 300.0;
        QTest::newRow("no bounce-back: stops at the end")
            << QStringList{QStringLiteral("nobounce")} << 3 << 400.0 << 320.0;
        QTest::newRow("stable drag: full speed") << QStringList{QStringLiteral("stable")} << 3 << 310.0 << 310.0;
        QTest::newRow("from the far end: full speed") << QStringList() << 5 << 300.0 << 300.0;
        QTest::newRow("right side keeps its own flags")
            << QStringList{QStringLiteral("nobounce")} << 3 << -300.0 << -280.0;
    }
    void dragAdjustment()
    {
        QFETCH(QStringList, tweaks);
        QFETCH(int, currentPosition);
        QFETCH(qreal, finger);
        QFETCH(qreal, front);
        const RevealSettings s = settingsWith(tweaks);
        QCOMPARE(RevealGeometry(s, kWidth).adjustedDragLocation(finger, currentPosition), front);
    }

    void release_data()
    {
        QTest::addColumn<QStringList>("tweaks");
        QTest::addColumn<qreal>("x");
        QTest::addColumn<qreal>("velocity");
        QTest::addColumn<int>("position");
        QTest::addColumn<double>("duration");
        const QStringList none;
        QTest::newRow("slow 131 opens") << none << 131.0 << 0.0 << 4 << 0.3;
        QTest::newRow("slow 129 closes") << none << 129.0 << 0.0 << 3 << 0.3;
        QTest::newRow("slow 300 bounces back") << none << 300.0 << 0.0 << 3 << 0.3;
        QTest::newRow("slow 300 without bounce-back stays open")
            << QStringList{QStringLiteral("nobounce")} << 300.0 << 0.0 << 4 << 0.3;
        QTest::newRow("slow 300 stable settles far right")
            << QStringList{QStringLiteral("nobounce"), QStringLiteral("stable")} << 300.0 << 0.0 << 5 << 0.3;
        QTest::newRow("slow 280 stable, under half the overdraw")
            << QStringList{QStringLiteral("nobounce"), QStringLiteral("stable")} << 280.0 << 0.0 << 4 << 0.3;
        QTest::newRow("at the flick speed is still slow") << none << 100.0 << 250.0 << 3 << 0.3;
        QTest::newRow("flick out from 100") << none << 100.0 << 600.0 << 4 << (260.0 - 100.0) / 600.0;
        QTest::newRow("flick in from 200") << none << 200.0 << -600.0 << 3 << 200.0 / 600.0;
        QTest::newRow("flick out past the width, stable")
            << QStringList{QStringLiteral("nobounce"), QStringLiteral("stable")} << 300.0 << 600.0 << 5
            << 20.0 / 600.0;
        QTest::newRow("flick out past the width, bouncing") << none << 300.0 << 600.0 << 4 << 40.0 / 600.0;
        QTest::newRow("right side: slow -131 opens") << none << -131.0 << 0.0 << 2 << 0.3;
        QTest::newRow("right side: flick out from -100") << none << -100.0 << -600.0 << 2 << 160.0 / 600.0;
        QTest::newRow("right side: slow -300 bounces back") << none << -300.0 << 0.0 << 3 << 0.3;
        QTest::newRow("right side: stable far left")
            << QStringList{QStringLiteral("leftnobounce"), QStringLiteral("leftstable")} << -300.0 << 0.0 << 1
            << 0.3;
    }
    void release()
    {
        QFETCH(QStringList, tweaks);
        QFETCH(qreal, x);
        QFETCH(qreal, velocity);
        QFETCH(int, position);
        QFETCH(double, duration);
        const RevealSettings s = settingsWith(tweaks);
        const RevealGeometry::Settle settle = RevealGeometry(s, kWidth).settleAfterDrag(x, velocity);
        QCOMPARE(settle.position, position);
        QVERIFY2(qAbs(settle.duration - duration) < 1e-9, qPrintable(QString::number(settle.duration)));
    }

    void progress_data()
    {
        QTest::addColumn<qreal>("location");
        QTest::addColumn<qreal>("progress");
        QTest::addColumn<qreal>("overProgress");
        QTest::newRow("half way") << 130.0 << 0.5 << -2.0 - 1.0 / 6.0;
        QTest::newRow("at the width") << 260.0 << 1.0 << 0.0;
        QTest::newRow("half the overdraw") << 290.0 << 290.0 / 260.0 << 0.5;
        QTest::newRow("right side half way") << -130.0 << 0.5 << -2.0 - 1.0 / 6.0;
    }
    void progress()
    {
        QFETCH(qreal, location);
        QFETCH(qreal, progress);
        QFETCH(qreal, overProgress);
        const RevealSettings s;
        const RevealGeometry::Progress p = RevealGeometry(s, kWidth).progressForLocation(location);
        QVERIFY(qAbs(p.progress - progress) < 1e-9);
        QVERIFY(qAbs(p.overProgress - overProgress) < 1e-9);
    }

    void togglesAndPush_data()
    {
        QTest::addColumn<int>("position");
        QTest::addColumn<int>("toggled");
        QTest::addColumn<int>("rightToggled");
        QTest::addColumn<int>("beforePush");
        QTest::addColumn<double>("pushDuration");
        QTest::newRow("centred") << 3 << 4 << 2 << 3 << 0.0;
        QTest::newRow("menu open") << 4 << 3 << 2 << 5 << 0.24;
        QTest::newRow("far right") << 5 << 3 << 2 << 5 << 0.0;
        QTest::newRow("far right removed") << 6 << 3 << 2 << 5 << 0.24;
        QTest::newRow("right open") << 2 << 4 << 3 << 1 << 0.24;
        QTest::newRow("far left removed") << 0 << 4 << 3 << 1 << 0.24;
    }
    void togglesAndPush()
    {
        QFETCH(int, position);
        QFETCH(int, toggled);
        QFETCH(int, rightToggled);
        QFETCH(int, beforePush);
        QFETCH(double, pushDuration);
        const RevealSettings s;
        QCOMPARE(RevealGeometry::toggledPosition(position), toggled);
        QCOMPARE(RevealGeometry::rightToggledPosition(position), rightToggled);
        QCOMPARE(RevealGeometry::positionBeforePush(position), beforePush);
        QVERIFY(qAbs(RevealGeometry(s, kWidth).durationBeforePush(position) - pushDuration) < 1e-9);
    }

    void sideLayers()
    {
        const RevealSettings s;
        const RevealGeometry g(s, kWidth);
        QCOMPARE(g.rearLayerX(0), -40.0);
        QCOMPARE(g.rearLayerX(130), -20.0);
        QCOMPARE(g.rearLayerX(260), 0.0);
        QCOMPARE(g.rearLayerWidth(), 320.0);
        QCOMPARE(g.rightLayerX(0), kWidth - 320 + 40);
        QCOMPARE(g.rightLayerX(-260), kWidth - 320);
    }

    void deployment_data()
    {
        QTest::addColumn<int>("from");
        QTest::addColumn<int>("to");
        QTest::addColumn<bool>("hasRear");
        QTest::addColumn<bool>("hasRight");
        QTest::addColumn<int>("position");
        QTest::addColumn<QString>("changes"); // F+ F- R+ R- G+ G- (front, rear, right)
        const int unknown = kFrontViewPositionUnknown;
        QTest::newRow("first layout, centred") << unknown << 3 << true << false << 3 << "F+";
        QTest::newRow("first layout, menu open") << unknown << 4 << true << false << 4 << "F+ R+";
        QTest::newRow("open the menu") << 3 << 4 << true << false << 4 << "R+";
        QTest::newRow("close the menu") << 4 << 3 << true << false << 3 << "R-";
        QTest::newRow("menu to far right") << 4 << 5 << true << false << 5 << "";
        QTest::newRow("removed at the far right") << 5 << 6 << true << false << 6 << "F-";
        QTest::newRow("back from removed") << 6 << 3 << true << false << 3 << "F+ R-";
        QTest::newRow("no rear: stays centred") << 3 << 4 << false << true << 3 << "";
        QTest::newRow("no right: stays centred") << 3 << 2 << true << false << 3 << "";
        QTest::newRow("open the right") << 3 << 2 << true << true << 2 << "G+";
        QTest::newRow("right to menu") << 2 << 4 << true << true << 4 << "R+ G-";
    }
    void deployment()
    {
        QFETCH(int, from);
        QFETCH(int, to);
        QFETCH(bool, hasRear);
        QFETCH(bool, hasRight);
        QFETCH(int, position);
        QFETCH(QString, changes);
        const RevealDeployment d = RevealDeployment::compute({from, from, from}, to, hasRear, hasRight);
        QCOMPARE(d.position, position);
        QStringList seen;
        const std::pair<QString, RevealDeployment::Change> layers[] = {
            {QStringLiteral("F"), d.front}, {QStringLiteral("R"), d.rear}, {QStringLiteral("G"), d.right}};
        for (const auto &[name, change] : layers) {
            if (change.appears)
                seen << name + u'+';
            if (change.disappears)
                seen << name + u'-';
        }
        QCOMPARE(seen.join(u' '), changes);
    }

    void panDecision_data()
    {
        QTest::addColumn<QList<QPointF>>("moves");
        QTest::addColumn<int>("state");
        using S = RevealViewControllerPanGestureRecognizer::State;
        QTest::newRow("6 sideways drags") << QList<QPointF>{{6, 0}} << int(S::Dragging);
        QTest::newRow("5 sideways is not yet a drag") << QList<QPointF>{{5, 0}} << int(S::Possible);
        QTest::newRow("6 down fails") << QList<QPointF>{{0, 6}} << int(S::Failed);
        QTest::newRow("6 vertical before 5 horizontal fails")
            << QList<QPointF>{{4, 6}, {20, 6}} << int(S::Failed);
        QTest::newRow("small wobble stays undecided") << QList<QPointF>{{3, 3}, {-2, 4}} << int(S::Possible);
        QTest::newRow("sideways first, vertical later keeps dragging")
            << QList<QPointF>{{7, 1}, {8, 40}} << int(S::Dragging);
        QTest::newRow("left drags too") << QList<QPointF>{{-6, 2}} << int(S::Dragging);
    }
    void panDecision()
    {
        QFETCH(QList<QPointF>, moves);
        QFETCH(int, state);
        RevealViewControllerPanGestureRecognizer pan;
        const QPointF start(100, 100);
        pan.touchesBegan(start, 0);
        qint64 t = 0;
        for (const QPointF &m : moves)
            pan.touchesMoved(start + m, t += 16);
        QCOMPARE(int(pan.state()), state);
    }

    void panVelocity()
    {
        RevealViewControllerPanGestureRecognizer pan;
        pan.touchesBegan({0, 0}, 1000);
        for (int i = 1; i <= 10; ++i)
            pan.touchesMoved({i * 10.0, 0}, 1000 + i * 20); // 500 points per second
        pan.touchesEnded({100, 0}, 1200);
        QCOMPARE(pan.horizontalVelocity(), 500.0);
        QCOMPARE(pan.translation(), QPointF(100, 0));
        // Held still before letting go: no flick.
        pan.touchesEnded({100, 0}, 1400);
        QCOMPARE(pan.horizontalVelocity(), 0.0);
    }

    void curves()
    {
        // Critically damped: rises without overshoot and ends exactly at the target.
        qreal previous = 0;
        for (int i = 1; i <= 100; ++i) {
            const qreal v = RevealAnimationCurve::spring(i / 100.0, 1.0, 1.0);
            QVERIFY2(v >= previous - 1e-12 && v <= 1.0 + 1e-12, qPrintable(QString::number(v)));
            previous = v;
        }
        QCOMPARE(RevealAnimationCurve::spring(1.0, 1.0, 1.0), 1.0);
        QVERIFY(RevealAnimationCurve::spring(0.5, 1.0, 1.0) > 0.9);
        // A softer spring swings past the target on its way.
        qreal peak = 0;
        for (int i = 1; i < 100; ++i)
            peak = std::max(peak, RevealAnimationCurve::spring(i / 100.0, 0.5, 1.0));
        QVERIFY(peak > 1.05);
        QVERIFY(RevealAnimationCurve::spring(0.99, 1.5, 1.0) > 0.95);
        QVERIFY(RevealAnimationCurve::easeOut(0.5) > 0.5);
        QCOMPARE(RevealAnimationCurve::easeOut(1.0), 1.0);
    }

    void queueRunsOneAtATime()
    {
        RevealOperationQueue queue;
        QStringList log;
        queue.enqueue([&] { log << QStringLiteral("a"); });
        queue.enqueue([&] { log << QStringLiteral("b"); });
        // An operation that ends itself at once lets the next one run from inside dequeue.
        queue.enqueue([&] {
            log << QStringLiteral("c");
            queue.dequeue();
        });
        queue.enqueue([&] { log << QStringLiteral("d"); });
        QCOMPARE(log, QStringList{QStringLiteral("a")});
        queue.dequeue();
        QCOMPARE(log, (QStringList{QStringLiteral("a"), QStringLiteral("b")}));
        queue.dequeue();
        QCOMPARE(log, (QStringList{QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("c"), QStringLiteral("d")}));
        QCOMPARE(queue.size(), 1);
        queue.dequeue();
        QVERIFY(queue.isEmpty());
        queue.dequeue(); // nothing running: harmless
        QVERIFY(queue.isEmpty());
    }
};

QTEST_GUILESS_MAIN(TestRevealMath)
#include "tst_shell_reveal_math.moc"
