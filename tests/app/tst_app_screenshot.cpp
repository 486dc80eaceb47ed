#include <QImage>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

// The real executable on a virtual X display: its first screen is drawn and photographed.
class TestAppScreenshot : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void firstScreenIsDrawn()
    {
        QTemporaryDir data;
        const QString picture = QStringLiteral(VANTREL_SCREENSHOT_DIR "/first-screen.png");
        QFile::remove(picture);
        QProcess app;
        QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
        env.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("xcb"));
        app.setProcessEnvironment(env);
        app.setProcessChannelMode(QProcess::ForwardedChannels);
        app.start(QStringLiteral("xvfb-run"),
                  {QStringLiteral("-a"), QStringLiteral("-s"), QStringLiteral("-screen 0 1280x1024x24 -nolisten tcp"),
                   QStringLiteral(VANTREL_APP_PATH), QStringLiteral("--screenshot"), picture,
                   QStringLiteral("--data-dir"), data.path()});
        QVERIFY(app.waitForFinished(60000));
        QCOMPARE(app.exitCode(), 0);

        const QImage image(picture);
        QVERIFY2(!image.isNull(), qPrintable(picture));
        QCOMPARE(image.size(), QSize(390, 844)); // phone-sized by default
        // The first screen has the brand colour at the top and white text or background below it;
        // nothing is drawn in solid black (what a colour left unset turns into).
        QCOMPARE(image.pixelColor(10, 10), QColor(49, 187, 234));
        int white = 0, black = 0;
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x) {
                const QColor pixel = image.pixelColor(x, y);
                white += pixel == QColor(Qt::white);
                black += pixel == QColor(Qt::black);
            }
        }
        QVERIFY2(white > 500, "nothing white was drawn");
        QVERIFY2(black < image.width() * image.height() / 100,
                 qPrintable(QStringLiteral("%1 black pixels").arg(black)));
    }
};

QTEST_GUILESS_MAIN(TestAppScreenshot)
#include "tst_app_screenshot.moc"
