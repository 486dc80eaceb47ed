// How closely the front screen follows a drag, frame by frame, in the real QML container.
//
// Drags the front open and closed with a mouse moved once per 60 Hz frame and records, for
// every frame drawn during the drag, how long it took, how far the front was from the finger
// when the frame was synchronised, and how long a move waited for the next frame.

#include "RevealViewController.h"
#include "ui/View.h"
#include "ui/ViewController.h"
#include "ui/Window.h"

#include <QElapsedTimer>
#include <QGuiApplication>
#include <QMutex>
#include <QQuickItem>
#include <QQuickWindow>
#include <QTest>
#include <QTextStream>
#include <algorithm>
#include <cmath>
#include <vector>

namespace {

class FormScreen : public ui::ViewController {
public:
    FormScreen() { setViewUrl(QUrl(QStringLiteral("qrc:/bench/FormScreenView.qml"))); }
};

struct FrameLog {
    QMutex mutex;
    std::vector<qint64> syncAt;   // ns, when the scene was synchronised for a frame
    std::vector<qint64> renderNs; // ns spent rendering each frame
    std::vector<qint64> swapAt;   // ns, when each frame was swapped
    std::vector<double> lag;      // points between the finger's travel and the front's at sync
    qint64 renderStart = 0;
};

double percentile(std::vector<double> values, double p)
{
    if (values.empty())
        return 0;
    std::sort(values.begin(), values.end());
    const auto at = std::min(values.size() - 1, size_t(std::ceil(p * double(values.size())) - 1));
    return values[at];
}

QString figures(const std::vector<double> &values, const char *unit)
{
    return QStringLiteral("p50 %1 %4, p95 %2 %4, max %3 %4")
        .arg(percentile(values, 0.5), 0, 'f', 2)
        .arg(percentile(values, 0.95), 0, 'f', 2)
        .arg(values.empty() ? 0.0 : *std::max_element(values.begin(), values.end()), 0, 'f', 2)
        .arg(QLatin1String(unit));
}

} // namespace

int main(int argc, char **argv)
{
    QGuiApplication app(argc, argv);
    const int drags = argc > 1 ? std::max(1, QString::fromLocal8Bit(argv[1]).toInt()) : 20;

    ui::Window window;
    auto *reveal = new RevealViewController(new FormScreen, new FormScreen);
    window.setRootViewController(reveal);
    window.makeKeyAndVisible();
    QQuickWindow *quick = window.quickWindow();
    if (!quick || !QTest::qWaitForWindowExposed(quick)) {
        QTextStream(stderr) << "bench_shell_drag: the window did not come up\n";
        return 1;
    }
    QTest::qWait(300);

    QElapsedTimer clock;
    clock.start();
    FrameLog log;
    double fingerTravel = 0; // written on the GUI thread, read while it is blocked in sync
    double frontStart = 0;
    bool recording = false;
    QObject::connect(
        quick, &QQuickWindow::beforeSynchronizing, quick,
        [&] {
            if (!recording)
                return;
            QMutexLocker lock(&log.mutex);
            log.syncAt.push_back(clock.nsecsElapsed());
            const double expected = std::clamp(frontStart + fingerTravel, 0.0, reveal->settings().rearViewRevealWidth);
            log.lag.push_back(std::abs(expected - reveal->frontLocation()));
        },
        Qt::DirectConnection);
    QObject::connect(
        quick, &QQuickWindow::beforeRendering, quick,
        [&] {
            QMutexLocker lock(&log.mutex);
            log.renderStart = clock.nsecsElapsed();
        },
        Qt::DirectConnection);
    QObject::connect(
        quick, &QQuickWindow::frameSwapped, quick,
        [&] {
            if (!recording)
                return;
            QMutexLocker lock(&log.mutex);
            const qint64 now = clock.nsecsElapsed();
            log.swapAt.push_back(now);
            log.renderNs.push_back(now - log.renderStart);
        },
        Qt::DirectConnection);

    // One drag covers 240 points in 48 moves, one per frame: open from the left edge, then
    // close from the open position, so every drag stays inside the reveal width.
    constexpr int kSteps = 48;
    constexpr double kTravel = 240;
    constexpr int kFrameMs = 16;
    std::vector<qint64> moveAt;
    std::vector<double> moveToSwapMs, renderMs, lagAll, intervalsMs;
    qint64 dragNs = 0;
    int framesInDrags = 0;
    const int y = quick->height() / 2;
    for (int d = 0; d < drags; ++d) {
        const bool opening = reveal->frontLocation() < 1;
        const int startX = opening ? 10 : int(reveal->frontLocation()) + 40;
        const double direction = opening ? 1 : -1;
        frontStart = reveal->frontLocation();
        QTest::mousePress(quick, Qt::LeftButton, {}, QPoint(startX, y));
        // Past the 5-point decision before recording, as a hand would be.
        QTest::mouseMove(quick, QPoint(startX + int(direction * 6), y));
        QTest::qWait(kFrameMs);
        fingerTravel = direction * 6;
        {
            QMutexLocker lock(&log.mutex);
            log.syncAt.clear();
            log.swapAt.clear();
            log.renderNs.clear();
            log.lag.clear();
        }
        moveAt.clear();
        recording = true;
        const qint64 begin = clock.nsecsElapsed();
        for (int i = 1; i <= kSteps; ++i) {
            fingerTravel = direction * (6 + kTravel * i / kSteps);
            moveAt.push_back(clock.nsecsElapsed());
            QTest::mouseMove(quick, QPoint(startX + int(fingerTravel), y));
            QTest::qWait(kFrameMs);
        }
        dragNs += clock.nsecsElapsed() - begin;
        recording = false;
        QTest::qWait(100); // held still: a slow release
        QTest::mouseRelease(quick, Qt::LeftButton, {}, QPoint(startX + int(fingerTravel), y));
        QTest::qWait(600);
        QMutexLocker lock(&log.mutex);
        framesInDrags += int(log.swapAt.size());
        for (const qint64 at : moveAt) {
            const auto next = std::upper_bound(log.swapAt.begin(), log.swapAt.end(), at);
            if (next != log.swapAt.end())
                moveToSwapMs.push_back(double(*next - at) / 1e6);
        }
        for (const qint64 ns : log.renderNs)
            renderMs.push_back(double(ns) / 1e6);
        for (size_t i = 1; i < log.swapAt.size(); ++i)
            intervalsMs.push_back(double(log.swapAt[i] - log.swapAt[i - 1]) / 1e6);
        // Skip the first sync: it may precede the first recorded move.
        lagAll.insert(lagAll.end(), log.lag.begin() + std::min<size_t>(1, log.lag.size()), log.lag.end());
    }

    {
        QTextStream out(stdout);
        out << "platform " << QGuiApplication::platformName() << ", scene graph "
            << (quick->rendererInterface()->graphicsApi() == QSGRendererInterface::Software ? "software"
                                                                                            : "hardware API")
            << ", window " << quick->width() << "x" << quick->height() << "\n";
        out << drags << " drags of " << kSteps << " moves at " << kFrameMs
            << " ms: " << QString::number(framesInDrags * 1e9 / double(dragNs), 'f', 1) << " frames per second drawn\n";
        out << "frame interval: " << figures(intervalsMs, "ms") << "\n";
        out << "render time:    " << figures(renderMs, "ms") << "\n";
        out << "move to frame:  " << figures(moveToSwapMs, "ms") << "\n";
        out << "front behind the finger at sync: " << figures(lagAll, "pt") << "\n";
    }
    return 0;
}
