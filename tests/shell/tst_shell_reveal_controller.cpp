#include "MenuController.h"
#include "RevealAnimatedTransitioning.h"
#include "RevealContextTransitionObject.h"
#include "RevealLayer.h"
#include "RevealStateRestoration.h"
#include "RevealViewController.h"
#include "RevealViewControllerDelegate.h"
#include "ShellScenes.h"
#include "ui/BarButtonItem.h"
#include "ui/NavigationController.h"
#include "ui/Storyboard.h"
#include "ui/View.h"

#include <QPointer>
#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

// Writes down every callback, in order, as "name position" lines.
class RecordingDelegate : public RevealViewControllerDelegate {
public:
    QStringList calls;
    QList<QList<qreal>> progress; // location, progress, over-progress of each pan callback
    bool allowPan = true;
    bool allowTap = true;
    RevealAnimatedTransitioning *transition = nullptr;

    void revealControllerWillMoveToPosition(RevealViewController *, int p) override { calls << u"will %1"_s.arg(p); }
    void revealControllerDidMoveToPosition(RevealViewController *, int p) override { calls << u"did %1"_s.arg(p); }
    void revealControllerAnimateToPosition(RevealViewController *, int p) override { calls << u"animate %1"_s.arg(p); }
    bool revealControllerPanGestureShouldBegin(RevealViewController *) override { return allowPan; }
    bool revealControllerTapGestureShouldBegin(RevealViewController *) override { return allowTap; }
    void revealControllerPanGestureBegan(RevealViewController *) override { calls << u"pan began"_s; }
    void revealControllerPanGestureEnded(RevealViewController *) override { calls << u"pan ended"_s; }
    void revealControllerPanGestureMovedToLocation(RevealViewController *, qreal l, qreal p, qreal o) override
    {
        progress << QList<qreal>{l, p, o};
    }
    // Only the short form: the long form must reach it.
    void revealControllerPanGestureEndedToLocation(RevealViewController *, qreal l, qreal p) override
    {
        calls << u"ended at %1 progress %2"_s.arg(l).arg(p);
    }
    void revealControllerWillAddViewController(RevealViewController *, ui::ViewController *, RevealOperation op,
                                               bool animated) override
    {
        calls << u"will add %1 %2"_s.arg(int(op)).arg(animated);
    }
    void revealControllerDidAddViewController(RevealViewController *, ui::ViewController *, RevealOperation op,
                                              bool animated) override
    {
        calls << u"did add %1 %2"_s.arg(int(op)).arg(animated);
    }
    RevealAnimatedTransitioning *revealControllerAnimationControllerForOperation(RevealViewController *,
                                                                                 RevealOperation, ui::ViewController *,
                                                                                 ui::ViewController *) override
    {
        return transition;
    }
};

// A replacement animation of the delegate's own that finishes when told to.
class ManualTransition : public RevealAnimatedTransitioning {
public:
    RevealContextTransitionObject *context = nullptr;
    double transitionDuration(RevealContextTransitionObject *) const override { return 1; }
    void animateTransition(RevealContextTransitionObject *c) override { context = c; }
};

// A front screen with a menu button, wired the way every front screen wires it.
class FrontScreen : public ui::ViewController {
public:
    ui::BarButtonItem *menuButton = new ui::BarButtonItem(u"menuButton"_s, this);
    bool wired = false;

protected:
    void viewDidLoad() override { wired = RevealViewController::wireMenuButton(this, menuButton); }
};

// A container on screen in a 390 x 844 view, with a plain rear and front.
struct Shown {
    ui::ViewController *rear = new ui::ViewController;
    ui::ViewController *front = new ui::ViewController;
    std::unique_ptr<RevealViewController> reveal;
    RecordingDelegate delegate;

    explicit Shown(ui::ViewController *right = nullptr) : reveal(std::make_unique<RevealViewController>(rear, front))
    {
        if (right)
            reveal->setRightViewController(right);
        reveal->setDelegate(&delegate);
        reveal->view()->setSize(390, 844);
        reveal->beginAppearanceTransition(true, false);
        reveal->endAppearanceTransition();
        delegate.calls.clear();
    }
    ~Shown() { reveal->setDelegate(nullptr); }
};

} // namespace

class TestRevealController : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void positionBeforeTheViewLoadsIsOnlyStored()
    {
        RevealViewController reveal(new ui::ViewController, new ui::ViewController);
        reveal.setFrontViewPosition(FrontRightShift, true);
        QCOMPARE(reveal.frontViewPosition(), int(FrontRightShift));
        QCOMPARE(reveal.frontLocation(), 0.0);
        QCOMPARE(reveal.pendingOperations(), 0);
        reveal.view()->setSize(390, 844);
        // Loading applies it at once.
        QCOMPARE(reveal.frontLocation(), 260.0);
        QVERIFY(reveal.rearLayer()->isDeployed());
        QVERIFY(reveal.frontLayer()->isDeployed());
        QVERIFY(!reveal.rightLayer()->isDeployed());
    }

    void toggleOpensAndClosesWithAnimation()
    {
        Shown s;
        QVERIFY(!s.reveal->rearLayer()->isDeployed());
        QCOMPARE(s.rear->appearanceState(), ui::ViewController::AppearanceState::Disappeared);
        s.reveal->revealToggle();
        QCOMPARE(s.reveal->frontViewPosition(), int(FrontRightShift));
        QVERIFY(s.reveal->frontLocation() < 260); // still on its way
        QCOMPARE(s.rear->appearanceState(), ui::ViewController::AppearanceState::Appearing);
        QTRY_COMPARE(s.reveal->pendingOperations(), 0);
        QCOMPARE(s.reveal->frontLocation(), 260.0);
        QCOMPARE(s.rear->appearanceState(), ui::ViewController::AppearanceState::Appeared);
        QCOMPARE(s.delegate.calls, (QStringList{"will 4", "animate 4", "did 4"}));

        s.reveal->revealToggleAnimated(false);
        QCOMPARE(s.reveal->frontLocation(), 0.0);
        QVERIFY(!s.reveal->rearLayer()->isDeployed());
        QCOMPARE(s.rear->appearanceState(), ui::ViewController::AppearanceState::Disappeared);
    }

    void aSideWithoutAScreenCannotOpen()
    {
        Shown s;
        s.reveal->rightRevealToggleAnimated(false);
        QCOMPARE(s.reveal->frontViewPosition(), int(FrontCentred));
        QCOMPARE(s.reveal->frontLocation(), 0.0);
        // No position change: no "will", but the move still runs and ends.
        QCOMPARE(s.delegate.calls, (QStringList{"animate 3", "did 3"}));
    }

    void queuedOperationsNeverOverlap()
    {
        Shown s;
        // Whatever is asked at once runs one after another: each move starts after the
        // previous one has ended.
        s.reveal->revealToggle();
        s.reveal->revealToggle();
        s.reveal->setFrontViewController(new ui::ViewController, true);
        s.reveal->revealToggle();
        QCOMPARE(s.reveal->pendingOperations(), 4);
        QTRY_COMPARE_WITH_TIMEOUT(s.reveal->pendingOperations(), 0, 5000);
        // A toggle reads the position when it is asked for: the last one saw the menu open.
        QCOMPARE(s.delegate.calls, (QStringList{"will 4", "animate 4", "did 4", "will 3", "animate 3", "did 3",
                                                "will add 2 1", "did add 2 1", "animate 3", "did 3"}));
        QCOMPARE(s.reveal->frontLocation(), 0.0);
    }

    void pushingAFrontScreenTakesThreeOperations()
    {
        Shown s;
        s.reveal->setFrontViewPosition(FrontRightShift, false);
        s.delegate.calls.clear();
        QPointer<ui::ViewController> old = s.front;
        auto *next = new ui::ViewController;
        s.reveal->pushFrontViewController(next, true);
        QCOMPARE(s.reveal->pendingOperations(), 3);
        QCOMPARE(next->parent(), s.reveal.get()); // kept while it waits
        QCOMPARE(s.reveal->frontViewPosition(), int(FrontFarRight));
        QTRY_COMPARE_WITH_TIMEOUT(s.reveal->pendingOperations(), 0, 5000);
        QCOMPARE(s.delegate.calls, (QStringList{"will 5", "animate 5", "did 5", "will add 2 0", "did add 2 0", "will 3",
                                                "animate 3", "did 3"}));
        QCOMPARE(s.reveal->frontViewController(), next);
        QCOMPARE(next->parentViewController(), s.reveal.get());
        QCOMPARE(next->appearanceState(), ui::ViewController::AppearanceState::Appeared);
        QTRY_VERIFY(!old); // the old front is released
        QCOMPARE(s.reveal->frontLocation(), 0.0);
        QVERIFY(!s.reveal->rearLayer()->isDeployed());
    }

    void pushingWithoutAnimationSwapsInPlace()
    {
        Shown s;
        s.reveal->setFrontViewPosition(FrontRightShift, false);
        auto *next = new ui::ViewController;
        s.reveal->pushFrontViewController(next, false);
        QCOMPARE(s.reveal->frontViewController(), next);
        QCOMPARE(s.reveal->frontViewPosition(), int(FrontRightShift));
        QCOMPARE(s.reveal->pendingOperations(), 0);
    }

    void replacementFadesTheNewScreenIn()
    {
        Shown s;
        QPointer<ui::ViewController> old = s.front;
        auto *next = new ui::ViewController;
        s.reveal->setFrontViewController(next, true);
        RevealLayer *layer = s.reveal->frontLayer();
        QCOMPARE(layer->controller(), next);
        QCOMPARE(layer->outgoingController(), old.data());
        QVERIFY(layer->opacity() < 0.5);
        QTRY_COMPARE(s.reveal->pendingOperations(), 0);
        QCOMPARE(layer->opacity(), 1.0);
        QVERIFY(!layer->outgoingController());
        QCOMPARE(s.delegate.calls, (QStringList{"will add 2 1", "did add 2 1"}));

        // The delegate's own animation is used instead, and the queue waits for it.
        ManualTransition manual;
        s.delegate.transition = &manual;
        auto *third = new ui::ViewController;
        s.reveal->setFrontViewController(third, true);
        QVERIFY(manual.context);
        QCOMPARE(manual.context->toViewController(), third);
        QCOMPARE(manual.context->fromViewController(), next);
        QVERIFY(manual.context->isAnimated() && !manual.context->isInteractive());
        s.reveal->revealToggle();
        QTest::qWait(50);
        QCOMPARE(s.reveal->frontViewPosition(), int(FrontCentred)); // the toggle waits its turn
        manual.context->completeTransition(true);
        QTRY_COMPARE(s.reveal->frontViewPosition(), int(FrontRightShift));
        QTRY_COMPARE(s.reveal->pendingOperations(), 0);
    }

    void dragFollowsTheFingerWithResistance()
    {
        Shown s;
        QVERIFY(s.reveal->panGestureShouldBegin({100, 400}, 6));
        s.reveal->panGestureBegan({100, 400});
        QCOMPARE(s.reveal->pendingOperations(), 1); // the drag holds the queue
        QVERIFY(!s.reveal->isUserInteractionEnabled());
        s.reveal->panGestureMoved(200);
        QCOMPARE(s.reveal->frontLocation(), 200.0);
        QVERIFY(s.reveal->rearLayer()->isDeployed());
        s.reveal->panGestureMoved(380);
        QCOMPARE(s.reveal->frontLocation(), 320.0);
        QCOMPARE(s.delegate.progress.last(), (QList<qreal>{320.0, 320.0 / 260.0, 1.0}));
        // A toggle asked for meanwhile waits for the drag to end.
        s.reveal->revealToggle();
        QCOMPARE(s.reveal->pendingOperations(), 2);
        s.reveal->panGestureEnded(0);
        QVERIFY(s.reveal->isUserInteractionEnabled());
        QCOMPARE(s.reveal->frontViewPosition(), int(FrontCentred)); // bounced back
        QTRY_COMPARE_WITH_TIMEOUT(s.reveal->pendingOperations(), 0, 5000);
        QCOMPARE(s.reveal->frontViewPosition(), int(FrontRightShift)); // then the toggle
        QCOMPARE(s.delegate.calls.mid(0, 3),
                 (QStringList{"pan began", "pan ended", u"ended at 320 progress %1"_s.arg(320.0 / 260.0)}));
    }

    void dragWithoutARightScreenStaysAtZero()
    {
        Shown s;
        s.reveal->setFrontViewPosition(FrontRightShift, false);
        s.reveal->panGestureBegan({300, 400});
        s.reveal->panGestureMoved(-400);
        QCOMPARE(s.reveal->frontLocation(), 0.0);
        s.reveal->panGestureEnded(-600);
        QCOMPARE(s.reveal->frontViewPosition(), int(FrontCentred));
        QTRY_COMPARE(s.reveal->pendingOperations(), 0);
    }

    void panShouldBegin_data()
    {
        QTest::addColumn<qreal>("border");
        QTest::addColumn<bool>("withRight");
        QTest::addColumn<int>("position");
        QTest::addColumn<qreal>("touchX");
        QTest::addColumn<qreal>("translation");
        QTest::addColumn<bool>("delegateAllows");
        QTest::addColumn<bool>("begins");
        QTest::newRow("anywhere without a border") << 0.0 << false << 3 << 200.0 << 10.0 << true << true;
        QTest::newRow("inside a 20-point border") << 20.0 << false << 3 << 15.0 << 10.0 << true << true;
        QTest::newRow("outside a 20-point border") << 20.0 << false << 3 << 30.0 << 10.0 << true << false;
        QTest::newRow("right border needs a right screen") << 20.0 << false << 3 << 380.0 << -10.0 << true << false;
        QTest::newRow("right border with a right screen") << 20.0 << true << 3 << 380.0 << -10.0 << true << true;
        QTest::newRow("leftwards at the centre needs a right screen")
            << 0.0 << false << 3 << 200.0 << -10.0 << true << false;
        QTest::newRow("leftwards when open closes") << 0.0 << false << 4 << 300.0 << -10.0 << true << true;
        QTest::newRow("the delegate refuses") << 0.0 << false << 3 << 200.0 << 10.0 << false << false;
    }
    void panShouldBegin()
    {
        QFETCH(qreal, border);
        QFETCH(bool, withRight);
        QFETCH(int, position);
        QFETCH(qreal, touchX);
        QFETCH(qreal, translation);
        QFETCH(bool, delegateAllows);
        QFETCH(bool, begins);
        Shown s(withRight ? new ui::ViewController : nullptr);
        s.reveal->setSettings({.draggableBorderWidth = border});
        s.reveal->setFrontViewPosition(position, false);
        s.delegate.allowPan = delegateAllows;
        QCOMPARE(s.reveal->panGestureShouldBegin({touchX, 400}, translation), begins);
    }

    void tapClosesOnlyADisplacedFront()
    {
        Shown s;
        QVERIFY(!s.reveal->tapGestureShouldBegin());
        s.reveal->tapGestureRecognized();
        QCOMPARE(s.reveal->pendingOperations(), 0);
        QVERIFY(s.delegate.calls.isEmpty());
        s.reveal->setFrontViewPosition(FrontRightShift, false);
        s.delegate.allowTap = false;
        QVERIFY(!s.reveal->tapGestureShouldBegin());
        s.delegate.allowTap = true;
        s.reveal->tapGestureRecognized();
        QCOMPARE(s.reveal->frontViewPosition(), int(FrontCentred));
        QTRY_COMPARE(s.reveal->frontLocation(), 0.0);
    }

    void menuButtonTogglesItsContainer()
    {
        auto *screen = new FrontScreen;
        auto *navigation = new ui::NavigationController(screen);
        RevealViewController reveal(new ui::ViewController, navigation);
        reveal.view()->setSize(390, 844);
        reveal.beginAppearanceTransition(true, false);
        reveal.endAppearanceTransition();
        QVERIFY(screen->isViewLoaded());
        QVERIFY(screen->wired);
        QCOMPARE(screen->revealViewController(), &reveal);
        screen->menuButton->click();
        QCOMPARE(reveal.frontViewPosition(), int(FrontRightShift));

        FrontScreen alone;
        alone.loadViewIfNeeded();
        QVERIFY(!alone.wired);
    }

    void storyboardFillsTheContainerAndMenuRowsPushToTheFront()
    {
        ui::StoryboardDefinition definition;
        definition.initialIdentifier = u"menu"_s;
        definition.scenes.insert(u"menu"_s, ShellScenes::revealScene(u"side"_s, u"start"_s));
        definition.scenes.insert(u"side"_s, ShellScenes::menuScene({}, {{u"menuMap"_s, u"map"_s}}));
        definition.scenes.insert(u"start"_s, {[] { return new ui::ViewController; }});
        definition.scenes.insert(u"map"_s, {[] { return new FrontScreen; }});
        ui::Storyboard::registerStoryboard(u"ShellTest"_s, definition);

        std::unique_ptr<ui::ViewController> root(
            ui::Storyboard::storyboardWithName(u"ShellTest"_s)->instantiateInitialViewController());
        auto *reveal = qobject_cast<RevealViewController *>(root.get());
        QVERIFY(reveal);
        reveal->view()->setSize(390, 844);
        auto *menu = qobject_cast<MenuController *>(reveal->rearViewController());
        QVERIFY(menu);
        QCOMPARE(reveal->frontViewController()->storyboardIdentifier(), u"start"_s);
        QVERIFY(!reveal->rightViewController());
        reveal->beginAppearanceTransition(true, false);
        reveal->endAppearanceTransition();

        QVERIFY(menu->isRowEnabled(1));
        QVERIFY(!menu->isRowEnabled(0)); // its screen is not wired yet
        // The preview row waits for the preview's storyboard.
        QVERIFY(!menu->isRowEnabled(MenuController::kProfilePreviewRow));
        ui::Storyboard::registerStoryboard(MenuController::kProfilePreviewStoryboard, definition);
        QVERIFY(menu->isRowEnabled(MenuController::kProfilePreviewRow));
        menu->tableViewDidSelectRowAtIndexPath(0);
        QCOMPARE(reveal->pendingOperations(), 0);
        reveal->revealToggleAnimated(false);
        menu->tableViewDidSelectRowAtIndexPath(1);
        QCOMPARE(reveal->pendingOperations(), 3);
        QTRY_COMPARE_WITH_TIMEOUT(reveal->pendingOperations(), 0, 5000);
        auto *map = dynamic_cast<FrontScreen *>(reveal->frontViewController());
        QVERIFY(map);
        QCOMPARE(map->storyboardIdentifier(), u"map"_s);
        QVERIFY(map->wired);
        QCOMPARE(reveal->frontViewPosition(), int(FrontCentred));
    }

    void restorationKeepsEveryProperty()
    {
        Shown s;
        const RevealSettings settings{.rearViewRevealWidth = 300,
                                      .stableDragOnOverdraw = true,
                                      .toggleAnimationType = 1,
                                      .frontViewShadowOffset = QSizeF(1, 3),
                                      .frontViewShadowColor = Qt::red};
        s.reveal->setSettings(settings);
        s.reveal->setFrontViewPosition(FrontRightShift, false);
        const QVariantMap state = RevealStateRestoration::encode(*s.reveal);
        QCOMPARE(state.size(), 28); // every setting has its key, besides the screens, position and interaction

        QVERIFY(!RevealStateRestoration::viewControllerWithRestorationIdentifier(u"other"_s));
        std::unique_ptr<RevealViewController> restored(
            RevealStateRestoration::viewControllerWithRestorationIdentifier(u"RevealViewController"_s));
        QVERIFY(restored);
        RevealStateRestoration::decode(state, *restored);
        QCOMPARE(restored->settings(), settings);
        QCOMPARE(restored->frontViewPosition(), int(FrontRightShift));
        QCOMPARE(restored->frontViewController(), s.front);

        // Keys by their names; values of the wrong type, and unknown positions, are ignored.
        RevealViewController fresh;
        RevealStateRestoration::decode({{u"_rearViewRevealWidth"_s, u"wide"_s},
                                        {u"_rightViewRevealWidth"_s, 100},
                                        {u"_frontViewShadowColor"_s, u"no colour"_s},
                                        {u"_frontViewPosition"_s, 99}},
                                       fresh);
        QCOMPARE(fresh.settings(), RevealSettings{.rightViewRevealWidth = 100});
        QCOMPARE(fresh.frontViewPosition(), int(FrontCentred));
    }
};

QTEST_MAIN(TestRevealController)
#include "tst_shell_reveal_controller.moc"
