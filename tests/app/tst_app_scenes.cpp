#include "AppConfiguration.h"
#include "AppStoryboards.h"
#include "Storyboard.h"
#include "ViewTestHelpers.h"
#include "ui/ViewController.h"

#include <QTest>
#include <memory>

// Every scene of every storyboard the app registers can be drawn with what the executable
// links: a QML module whose plugin is missing from the link shows up here, not as a blank
// screen after sign-in.
class TestAppScenes : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { AppStoryboards::registerAll(AppConfiguration{}); }

    void everySceneHasAViewThatCompiles_data()
    {
        QTest::addColumn<QString>("storyboard");
        QTest::addColumn<QString>("scene");
        const QStringList storyboards = ui::Storyboard::registeredNames();
        QVERIFY(storyboards.contains(AppStoryboards::kMain));
        QVERIFY(storyboards.contains(AppStoryboards::kMenu));
        for (const QString &storyboard : storyboards) {
            for (const QString &scene : ui::Storyboard::storyboardWithName(storyboard)->sceneIdentifiers())
                QTest::newRow(qPrintable(storyboard + QLatin1Char('/') + scene)) << storyboard << scene;
        }
    }
    void everySceneHasAViewThatCompiles()
    {
        QFETCH(QString, storyboard);
        QFETCH(QString, scene);
        const std::unique_ptr<ui::ViewController> controller(
            ui::Storyboard::storyboardWithName(storyboard)->instantiateViewControllerWithIdentifier(scene));
        QVERIFY(controller);
        QVERIFY2(controller->viewUrl().isValid(), "the scene has no view");
        const QString errors = ViewTest::compileErrors(controller->viewUrl());
        QVERIFY2(errors.isEmpty(), qPrintable(errors));
    }
};

QTEST_MAIN(TestAppScenes)
#include "tst_app_scenes.moc"
