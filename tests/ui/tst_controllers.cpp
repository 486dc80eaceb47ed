#include "AlertController.h"
#include "Button.h"
#include "ControllerListModel.h"
#include "FolderListing.h"
#include "NavigationController.h"
#include "NavigationItem.h"
#include "PickerSheet.h"
#include "RecordingController.h"
#include "Storyboard.h"
#include "Switch.h"
#include "TextField.h"
#include "Window.h"

#include <QAbstractItemModelTester>
#include <QDir>
#include <QTemporaryDir>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QTest>

using Style = ui::ViewController::ModalPresentationStyle;

namespace {

// A source screen that hands a value to every destination it segues to.
class SourceController : public RecordingController {
    Q_OBJECT
public:
    using RecordingController::RecordingController;
    QString valueToPass = QStringLiteral("passed");
    QStringList prepared; // identifier, source, destination name of each prepareForSegue
    QObject *lastSender = nullptr;

    void prepareForSegue(ui::StoryboardSegue *segue, QObject *sender) override;
};

// A destination that records what it had been given by the time its view loaded.
class DestinationController : public RecordingController {
    Q_OBJECT
public:
    using RecordingController::RecordingController;
    QString value;
    QString valueAtLoad;

protected:
    void viewDidLoad() override
    {
        valueAtLoad = value;
        RecordingController::viewDidLoad();
    }
};

void SourceController::prepareForSegue(ui::StoryboardSegue *segue, QObject *sender)
{
    prepared = {segue->identifier(), segue->sourceViewController()->objectName(),
                segue->destinationViewController()->objectName()};
    lastSender = sender;
    if (auto *destination = qobject_cast<DestinationController *>(segue->destinationViewController()))
        destination->value = valueToPass;
}

class RevealLikeContainer : public ui::ViewController {
    Q_OBJECT
public:
    using ui::ViewController::ViewController;
    [[nodiscard]] bool isRevealContainer() const override { return true; }
};

} // namespace

class TestControllers : public QObject {
    Q_OBJECT

private:
    QStringList m_log;
    std::unique_ptr<ui::Window> m_window;

    // A visible window (drawing nothing) whose root is returned.
    RecordingController *showRoot()
    {
        m_window = std::make_unique<ui::Window>();
        m_window->setDrawsInterface(false);
        auto *root = new RecordingController(QStringLiteral("root"), &m_log);
        m_window->setRootViewController(root);
        m_window->makeKeyAndVisible();
        m_log.clear();
        return root;
    }

    static void settle()
    {
        for (int i = 0; i < 3; ++i)
            QCoreApplication::processEvents();
    }

    static void registerTestStoryboard()
    {
        ui::StoryboardDefinition definition;
        definition.initialIdentifier = QStringLiteral("nav");
        definition.scenes.insert(QStringLiteral("nav"),
                                 {[] { return new ui::NavigationController; }, {}, {}, QStringLiteral("source")});
        definition.scenes.insert(
            QStringLiteral("source"),
            {[] { return new SourceController(QStringLiteral("source"), nullptr); },
             QUrl(QStringLiteral("qrc:/test/Source.qml")),
             {{QStringLiteral("details"), {ui::StoryboardSegue::Kind::Push, QStringLiteral("destination")}},
              {QStringLiteral("change"), {ui::StoryboardSegue::Kind::Modal, QStringLiteral("destination")}},
              {QStringLiteral("broken"), {ui::StoryboardSegue::Kind::Push, QStringLiteral("missing")}}}});
        definition.scenes.insert(
            QStringLiteral("container"),
            {[] { return new SourceController(QStringLiteral("container"), nullptr); },
             {},
             {{QStringLiteral("contactDetails"), {ui::StoryboardSegue::Kind::Embed, QStringLiteral("destination")}}}});
        definition.scenes.insert(QStringLiteral("destination"),
                                 {[] { return new DestinationController(QStringLiteral("destination"), nullptr); }});
        ui::Storyboard::registerStoryboard(QStringLiteral("Test"), definition);
    }

private Q_SLOTS:
    void initTestCase() { registerTestStoryboard(); }

    void cleanup()
    {
        m_window.reset();
        m_log.clear();
        settle();
        QVERIFY(!ui::AlertController::alertOnScreen());
    }

    void lifecycleOrderOfPresentation_data()
    {
        QTest::addColumn<int>("style");
        QTest::addColumn<QStringList>("presenting");
        QTest::addColumn<QStringList>("dismissing");

        QTest::newRow("full screen covers the presenter")
            << int(Style::FullScreen)
            << QStringList{"root.viewWillDisappear", "modal.viewDidLoad",   "modal.viewWillAppear",
                           "root.viewDidDisappear",  "modal.viewDidAppear", "completion"}
            << QStringList{"modal.viewWillDisappear", "root.viewWillAppear", "modal.viewDidDisappear",
                           "root.viewDidAppear", "completion"};
        QTest::newRow("over full screen leaves the presenter on screen")
            << int(Style::OverFullScreen)
            << QStringList{"modal.viewDidLoad", "modal.viewWillAppear", "modal.viewDidAppear", "completion"}
            << QStringList{"modal.viewWillDisappear", "modal.viewDidDisappear", "completion"};
    }

    void lifecycleOrderOfPresentation()
    {
        QFETCH(int, style);
        QFETCH(QStringList, presenting);
        QFETCH(QStringList, dismissing);

        RecordingController *root = showRoot();
        QPointer<RecordingController> modal = new RecordingController(QStringLiteral("modal"), &m_log);
        modal->setModalPresentationStyle(Style(style));

        root->presentViewController(modal, true, [this] { m_log.append(QStringLiteral("completion")); });
        QCOMPARE(root->presentedViewController(), modal.data());
        QCOMPARE(modal->presentingViewController(), root);
        settle();
        QCOMPARE(m_log, presenting);
        QCOMPARE(m_window->presentationStack(), (QList<ui::ViewController *>{root, modal}));

        m_log.clear();
        modal->dismissViewControllerAnimated(true, [this] { m_log.append(QStringLiteral("completion")); });
        QVERIFY(!root->presentedViewController());
        settle();
        QCOMPARE(m_log, dismissing);
        QCOMPARE(m_window->presentationStack(), QList<ui::ViewController *>{root});
        QTRY_VERIFY(!modal); // the presenter owned it
    }

    void dismissingFromBelowRemovesTheWholeChain()
    {
        RecordingController *root = showRoot();
        auto *first = new RecordingController(QStringLiteral("first"), &m_log);
        auto *second = new RecordingController(QStringLiteral("second"), &m_log);
        first->setModalPresentationStyle(Style::FullScreen);
        root->presentViewController(first, false);
        settle();
        first->presentViewController(second, false);
        settle();
        QCOMPARE(m_window->presentationStack().size(), 3);

        m_log.clear();
        root->dismissViewControllerAnimated(false);
        settle();
        QCOMPARE(m_window->presentationStack(), QList<ui::ViewController *>{root});
        QVERIFY(m_log.contains("second.viewDidDisappear"));
        QVERIFY(m_log.contains("first.viewDidDisappear"));
        QCOMPARE(m_log.last(), QStringLiteral("root.viewDidAppear"));
    }

    void presentingWhilePresentingIsRefused()
    {
        RecordingController *root = showRoot();
        auto *first = new RecordingController(QStringLiteral("first"), &m_log);
        root->presentViewController(first, false);
        bool completed = false;
        QPointer<RecordingController> second = new RecordingController(QStringLiteral("second"), &m_log);
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression("Attempt to present .* which is already presenting"));
        root->presentViewController(second, false, [&completed] { completed = true; });
        settle();
        QVERIFY(!completed);
        QCOMPARE(root->presentedViewController(), first);
        QVERIFY(!second->presentingViewController());
        delete second;
    }

    void alertOnScreenRefusesAnyOtherPresentation()
    {
        RecordingController *root = showRoot();
        auto *screen = new RecordingController(QStringLiteral("screen"), &m_log);
        screen->setModalPresentationStyle(Style::FullScreen);
        root->presentViewController(screen, false);
        settle();

        auto *first =
            ui::AlertController::alertControllerWithTitle("Error", "first", ui::AlertController::Style::Alert);
        first->addAction(ui::AlertAction::actionWithTitle("Ok", ui::AlertAction::Style::Default));
        bool firstShown = false;
        ui::TextField field(QStringLiteral("userNameTextField"));
        QVERIFY(field.becomeFirstResponder());
        screen->presentViewController(first, true, [&firstShown] { firstShown = true; });
        QVERIFY(!field.isFirstResponder()); // the keyboard goes away under the alert
        settle();
        QVERIFY(firstShown);
        QCOMPARE(ui::AlertController::alertOnScreen(), first);

        // A second alert is refused, whether from the same screen, from the one underneath, or
        // from a screen that presents nothing at all (only the alert on screen stands in its way).
        RecordingController loner(QStringLiteral("loner"), &m_log);
        for (ui::ViewController *presenter :
             {static_cast<ui::ViewController *>(screen), static_cast<ui::ViewController *>(root),
              static_cast<ui::ViewController *>(&loner)}) {
            std::unique_ptr<ui::AlertController> second(
                ui::AlertController::alertControllerWithTitle("Error", "second", ui::AlertController::Style::Alert));
            bool secondShown = false;
            QTest::ignoreMessage(QtWarningMsg, QRegularExpression("Attempt to present .* which is already presenting"));
            presenter->presentViewController(second.get(), true, [&secondShown] { secondShown = true; });
            settle();
            QVERIFY(!secondShown);
            QCOMPARE(ui::AlertController::alertOnScreen(), first);
            QVERIFY(!second->presentingViewController());
        }
    }

    void choosingAnActionDismissesThenRunsTheHandler()
    {
        RecordingController *root = showRoot();
        auto *alert =
            ui::AlertController::alertControllerWithTitle("Confirm", "Sure?", ui::AlertController::Style::Alert);
        QStringList ran;
        bool alertGoneWhenHandled = false;
        alert->addAction(ui::AlertAction::actionWithTitle("OK", ui::AlertAction::Style::Default,
                                                          [&ran](ui::AlertAction *a) { ran << a->title(); }));
        alert->addAction(
            ui::AlertAction::actionWithTitle("Cancel", ui::AlertAction::Style::Cancel, [&](ui::AlertAction *a) {
                ran << a->title();
                alertGoneWhenHandled = !root->presentedViewController() && !ui::AlertController::alertOnScreen();
            }));
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression("only have one action with the cancel style"));
        alert->addAction(ui::AlertAction::actionWithTitle("Cancel again", ui::AlertAction::Style::Cancel));
        QCOMPARE(alert->actions().size(), 2);
        // Two buttons: the cancel one is drawn first.
        QCOMPARE(alert->orderedActions().first()->title(), QStringLiteral("Cancel"));

        root->presentViewController(alert, true);
        settle();
        QVERIFY(alert->cancel()); // what Escape does
        QVERIFY(ran.isEmpty());   // not before the alert has gone
        settle();
        QCOMPARE(ran, QStringList{"Cancel"});
        QVERIFY(alertGoneWhenHandled);

        // The way is free for the next alert.
        auto *next = ui::AlertController::alertControllerWithTitle("Info", "next", ui::AlertController::Style::Alert);
        root->presentViewController(next, false);
        QCOMPARE(ui::AlertController::alertOnScreen(), next);
        QVERIFY(!next->cancel()); // no cancel action: Escape does nothing
        next->dismissViewControllerAnimated(false);
    }

    // Return never chooses a destructive action; Escape chooses the way out when there is one.
    void alertKeysChooseTheSafeAction_data()
    {
        QTest::addColumn<QStringList>("actions"); // "title:style", style d(efault), c(ancel) or x (destructive)
        QTest::addColumn<QString>("onReturn");    // empty: Return does nothing
        QTest::addColumn<QString>("onEscape");
        // clang-format off
        QTest::newRow("one Ok") << QStringList{"Ok:d"} << "Ok" << "Ok";
        QTest::newRow("one destructive Ok") << QStringList{"Ok:x"} << "" << "Ok";
        QTest::newRow("destructive added first") << QStringList{"YES DELETE MY PROFILE:x", "cancel:d"} << "cancel" << "cancel";
        QTest::newRow("destructive added last") << QStringList{"Stay On Page:d", "EXIT:x"} << "Stay On Page" << "Stay On Page";
        QTest::newRow("default, destructive, cancel") << QStringList{"Ok:d", "Wipe:x", "Cancel:c"} << "Ok" << "Cancel";
        QTest::newRow("cancel and destructive") << QStringList{"Wipe:x", "Cancel:c"} << "Cancel" << "Cancel";
        QTest::newRow("two safe ways") << QStringList{"Copy:d", "Share:d"} << "Copy" << "";
        QTest::newRow("only destructive ways") << QStringList{"Wipe:x", "Burn:x"} << "" << "";
        // clang-format on
    }
    void alertKeysChooseTheSafeAction()
    {
        QFETCH(QStringList, actions);
        QFETCH(QString, onReturn);
        QFETCH(QString, onEscape);
        const QHash<QChar, ui::AlertAction::Style> styles{{u'd', ui::AlertAction::Style::Default},
                                                          {u'c', ui::AlertAction::Style::Cancel},
                                                          {u'x', ui::AlertAction::Style::Destructive}};
        ui::AlertController alert(QStringLiteral("Warning"), {}, ui::AlertController::Style::Alert);
        for (const QString &action : actions)
            alert.addAction(ui::AlertAction::actionWithTitle(action.section(u':', 0, 0), styles.value(action.back())));
        const auto title = [](ui::AlertAction *action) { return action ? action->title() : QString(); };
        QCOMPARE(title(alert.preferredAction()), onReturn);
        QCOMPARE(title(alert.escapeAction()), onEscape);
    }

    void storyboardInstantiatesByIdentifier_data()
    {
        QTest::addColumn<QString>("storyboard");
        QTest::addColumn<QString>("identifier");
        QTest::addColumn<QString>("className"); // empty: nothing made
        QTest::addColumn<QString>("error");

        QTest::newRow("scene") << "Test"
                               << "source"
                               << "SourceController" << QString();
        QTest::newRow("navigation scene with its root") << "Test"
                                                        << "nav"
                                                        << "ui::NavigationController" << QString();
        QTest::newRow("initial") << "Test" << QString() << "ui::NavigationController" << QString();
        QTest::newRow("unknown identifier")
            << "Test"
            << "nowhere" << QString()
            << "Storyboard 'Test' doesn't contain a view controller with identifier 'nowhere'";
        QTest::newRow("unknown storyboard") << "Elsewhere"
                                            << "source" << QString() << "Could not find a storyboard named 'Elsewhere'";
    }

    void storyboardInstantiatesByIdentifier()
    {
        QFETCH(QString, storyboard);
        QFETCH(QString, identifier);
        QFETCH(QString, className);
        QFETCH(QString, error);

        if (!error.isEmpty())
            QTest::ignoreMessage(QtCriticalMsg, qPrintable(error));
        ui::Storyboard *board = ui::Storyboard::storyboardWithName(storyboard);
        std::unique_ptr<ui::ViewController> controller;
        if (board) {
            controller.reset(identifier.isEmpty() ? board->instantiateInitialViewController()
                                                  : board->instantiateViewControllerWithIdentifier(identifier));
        }
        if (className.isEmpty()) {
            QVERIFY(!controller);
            return;
        }
        QVERIFY(controller);
        QCOMPARE(QString::fromLatin1(controller->metaObject()->className()), className);
        QCOMPARE(controller->storyboard(), board);
        if (auto *navigation = qobject_cast<ui::NavigationController *>(controller.get())) {
            QCOMPARE(navigation->viewControllers().size(), 1);
            QCOMPARE(navigation->topViewController()->storyboardIdentifier(), QStringLiteral("source"));
            QCOMPARE(navigation->topViewController()->navigationController(), navigation);
        } else {
            QCOMPARE(controller->viewUrl(), QUrl("qrc:/test/Source.qml"));
        }
    }

    void seguesHandOverWhatPrepareSets_data()
    {
        QTest::addColumn<QString>("identifier");
        QTest::addColumn<QString>("expectedPlace");

        QTest::newRow("push") << "details"
                              << "pushed";
        QTest::newRow("modal") << "change"
                               << "presented";
        QTest::newRow("embed") << "contactDetails"
                               << "embedded";
    }

    void seguesHandOverWhatPrepareSets()
    {
        QFETCH(QString, identifier);
        QFETCH(QString, expectedPlace);

        showRoot();
        ui::Storyboard *board = ui::Storyboard::storyboardWithName(QStringLiteral("Test"));
        SourceController *source = nullptr;
        QObject sender;
        if (expectedPlace == QLatin1String("embedded")) {
            // Embed segues run while the container's view loads, before it appears.
            source = static_cast<SourceController *>(board->instantiateViewControllerWithIdentifier("container"));
            source->valueToPass = QStringLiteral("embedded value");
            m_window->setRootViewController(source);
        } else {
            auto *navigation = static_cast<ui::NavigationController *>(board->instantiateInitialViewController());
            m_window->setRootViewController(navigation);
            source = static_cast<SourceController *>(navigation->topViewController());
            source->valueToPass = identifier + QStringLiteral(" value");
            source->performSegueWithIdentifier(identifier, &sender);
            QCOMPARE(source->lastSender, &sender);
        }
        settle();

        QCOMPARE(source->prepared, (QStringList{identifier, source->objectName(), "destination"}));
        DestinationController *destination = nullptr;
        if (expectedPlace == QLatin1String("pushed")) {
            destination = qobject_cast<DestinationController *>(source->navigationController()->topViewController());
            QVERIFY(destination);
            QCOMPARE(destination->navigationController(), source->navigationController());
        } else if (expectedPlace == QLatin1String("presented")) {
            destination = qobject_cast<DestinationController *>(source->presentedViewController());
            QVERIFY(destination);
            QCOMPARE(destination->modalPresentationStyle(), Style::FullScreen);
        } else {
            destination = qobject_cast<DestinationController *>(source->childViewControllerForSlot(identifier));
            QVERIFY(destination);
            QCOMPARE(destination->parentViewController(), source);
        }
        QCOMPARE(destination->valueAtLoad, source->valueToPass);
        QCOMPARE(destination->appearanceState(), ui::ViewController::AppearanceState::Appeared);
    }

    void unknownSegueIsLoggedAndIgnored()
    {
        showRoot();
        auto *navigation = static_cast<ui::NavigationController *>(
            ui::Storyboard::storyboardWithName("Test")->instantiateInitialViewController());
        m_window->setRootViewController(navigation);
        ui::ViewController *source = navigation->topViewController();

        QTest::ignoreMessage(QtCriticalMsg, QRegularExpression("has no segue with identifier 'nowhere'"));
        source->performSegueWithIdentifier("nowhere");
        QTest::ignoreMessage(QtCriticalMsg,
                             QRegularExpression("doesn't contain a view controller with identifier 'missing'"));
        source->performSegueWithIdentifier("broken");
        settle();
        QCOMPARE(navigation->viewControllers().size(), 1);
        QVERIFY(!source->presentedViewController());

        RecordingController loose(QStringLiteral("loose"), nullptr);
        QTest::ignoreMessage(QtCriticalMsg, QRegularExpression("has no segue with identifier 'details'"));
        loose.performSegueWithIdentifier("details");
    }

    void navigationPushAndPop()
    {
        showRoot();
        auto *first = new RecordingController(QStringLiteral("first"), &m_log);
        auto *navigation = new ui::NavigationController(first);
        m_window->setRootViewController(navigation);
        settle();
        QVERIFY(!navigation->isBackButtonVisible());

        m_log.clear();
        QPointer<RecordingController> second = new RecordingController(QStringLiteral("second"), &m_log);
        navigation->pushViewController(second, true);
        settle();
        QCOMPARE(m_log, (QStringList{"first.viewWillDisappear", "second.viewDidLoad", "second.viewWillAppear",
                                     "first.viewDidDisappear", "second.viewDidAppear"}));
        QCOMPARE(navigation->topViewController(), second.data());
        QVERIFY(navigation->isBackButtonVisible());
        QSignalSpy backButton(navigation, &ui::NavigationController::backButtonVisibleChanged);
        second->navigationItem()->setHidesBackButton(true, true);
        QVERIFY(!navigation->isBackButtonVisible());
        QCOMPARE(backButton.size(), 1);

        auto *third = new RecordingController(QStringLiteral("third"), &m_log);
        navigation->pushViewController(third, false);
        settle();
        m_log.clear();
        QCOMPARE(navigation->popViewControllerAnimated(true), third);
        settle();
        QCOMPARE(m_log, (QStringList{"third.viewWillDisappear", "second.viewWillAppear", "third.viewDidDisappear",
                                     "second.viewDidAppear"}));

        const QList<ui::ViewController *> popped = navigation->popToRootViewControllerAnimated(true);
        QCOMPARE(popped, QList<ui::ViewController *>{second.data()});
        QVERIFY(!navigation->popViewControllerAnimated(true)); // the root stays
        QTRY_VERIFY(!second);                                  // nobody else held it
        QCOMPARE(navigation->viewControllers(), QList<ui::ViewController *>{first});
    }

    void revealContainerIsFoundThroughParents()
    {
        RevealLikeContainer reveal;
        auto *navigation = new ui::NavigationController;
        auto *screen = new RecordingController(QStringLiteral("screen"), nullptr);
        reveal.addChildViewController(navigation, QStringLiteral("front"));
        navigation->pushViewController(screen, false);

        QCOMPARE(screen->revealViewController(), &reveal);
        QCOMPARE(navigation->revealViewController(), &reveal);
        QVERIFY(!reveal.revealViewController());
        screen->removeFromParentViewController();
        QVERIFY(!screen->revealViewController());
        delete screen;
    }

    void pickerSheetHandsOverTheChosenRowAfterClosing_data()
    {
        QTest::addColumn<int>("initial");
        QTest::addColumn<int>("choose"); // -2: cancel
        QTest::addColumn<QString>("outcome");

        QTest::newRow("done with the initial row") << 1 << -1 << "done 1 Print";
        QTest::newRow("done after turning the wheel") << 0 << 3 << "done 3 Citizen Journalist";
        QTest::newRow("initial selection past the end is clamped") << 9 << -1 << "done 3 Citizen Journalist";
        QTest::newRow("turning past the start is clamped") << 2 << -5 << "done 0 Broadcast";
        QTest::newRow("cancel") << 1 << -2 << "cancelled";
    }

    void pickerSheetHandsOverTheChosenRowAfterClosing()
    {
        QFETCH(int, initial);
        QFETCH(int, choose);
        QFETCH(QString, outcome);

        RecordingController *root = showRoot();
        QString result;
        bool closedFirst = false;
        ui::PickerSheet *sheet = ui::PickerSheet::showPickerWithTitle(
            "Role", {"Broadcast", "Print", "Multi-Skilled", "Citizen Journalist"}, initial,
            [&](ui::PickerSheet *, int index, const QString &value) {
                result = QStringLiteral("done %1 %2").arg(index).arg(value);
                closedFirst = !root->presentedViewController();
            },
            [&](ui::PickerSheet *) {
                result = QStringLiteral("cancelled");
                closedFirst = !root->presentedViewController();
            },
            root);
        QVERIFY(sheet);
        QCOMPARE(root->presentedViewController(), sheet);
        settle();
        if (choose == -2) {
            sheet->cancel();
        } else {
            if (choose != -1)
                sheet->setSelectedIndex(choose);
            sheet->done();
            sheet->done(); // a second tap does nothing more
        }
        QVERIFY(result.isEmpty());
        settle();
        QCOMPARE(result, outcome);
        QVERIFY(closedFirst);
    }

    // Typing jumps to the first row that starts with what was typed; the same letter again
    // moves on to the next row with it.
    void pickerSheetJumpsToTypedRows_data()
    {
        QTest::addColumn<QString>("typed");
        QTest::addColumn<int>("row");
        QTest::newRow("a letter") << "u" << 4;
        QTest::newRow("the start of a name") << "united s" << 5;
        QTest::newRow("letter case ignored") << "GER" << 2;
        QTest::newRow("the same letter again") << "gg" << 2;
        QTest::newRow("and again") << "ggg" << 3;
        QTest::newRow("round to the first again") << "gggg" << 1;
        QTest::newRow("no row") << "x" << 0;
    }
    void pickerSheetJumpsToTypedRows()
    {
        QFETCH(QString, typed);
        QFETCH(int, row);
        ui::PickerSheet sheet(QStringLiteral("Country Code"),
                              {"None:  : ", "Ghana:  +233 : GH", "Germany:  +49 : DE", "Greece:  +30 : GR",
                               "United Kingdom:  +44 : GB", "United States:  +1 : US"},
                              0, {});
        for (const QChar key : typed)
            sheet.keyboardSearch(key);
        QCOMPARE(sheet.selectedIndex(), row);
    }

    // The photo picker's list: folders first, then the pictures whatever the letter case of
    // their names, in natural order; hidden entries and other files are left out.
    void folderListingShowsFoldersThenPictures()
    {
        QTemporaryDir dir;
        QVERIFY(dir.isValid());
        QVERIFY(QDir(dir.path()).mkpath(QStringLiteral("Trips")) && QDir(dir.path()).mkpath(QStringLiteral(".cache")));
        for (const char *name : {"b.JPG", "a.png", "10.jpeg", "2.jpeg", "notes.txt", ".hidden.png", "scan.Png.pdf"}) {
            QFile file(dir.filePath(QString::fromLatin1(name)));
            QVERIFY(file.open(QIODevice::WriteOnly));
        }
        ui::FolderListing listing({QStringLiteral("jpg"), QStringLiteral("jpeg"), QStringLiteral("png")});
        QAbstractItemModelTester tester(&listing, QAbstractItemModelTester::FailureReportingMode::QtTest);
        QVERIFY(listing.setFolder(dir.path()));
        QStringList names;
        for (int row = 0; row < listing.rowCount(); ++row)
            names << listing.data(listing.index(row), ui::FolderListing::NameRole).toString();
        QCOMPARE(names, (QStringList{"Trips", "2.jpeg", "10.jpeg", "a.png", "b.JPG"}));
        QVERIFY(!listing.setFolder(dir.filePath(QStringLiteral("gone"))));
        QVERIFY(!listing.error().isEmpty());
        QCOMPARE(listing.rowCount(), 0);
    }

    void pickerSheetIsRefusedUnderAnAlert()
    {
        RecordingController *root = showRoot();
        root->presentViewController(new ui::AlertController("Info", "", ui::AlertController::Style::Alert), false);
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression("which is already presenting"));
        QVERIFY(!ui::PickerSheet::showPickerWithTitle("Role", {"Print"}, 0, {}, {}, root));
        root->dismissViewControllerAnimated(false);
    }

    void controllerListChangesOnlyItsTail()
    {
        ui::ViewController a, b, c;
        ui::ControllerListModel model;
        QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::QtTest);
        QSignalSpy inserted(&model, &QAbstractItemModel::rowsInserted);
        QSignalSpy removed(&model, &QAbstractItemModel::rowsRemoved);
        QSignalSpy reset(&model, &QAbstractItemModel::modelReset);

        model.setControllers({&a, &b});
        model.setControllers({&a, &c}); // b replaced: row 0 untouched
        QCOMPARE(model.rowCount(), 2);
        QCOMPARE(model.data(model.index(1), ui::ControllerListModel::ControllerRole).value<ui::ViewController *>(), &c);
        QCOMPARE(removed.size(), 1);
        QCOMPARE(removed.last().at(1).toInt(), 1);
        model.setControllers({&a, &c}); // no change, no signal
        model.setControllers({});
        QCOMPARE(model.rowCount(), 0);
        QCOMPARE(inserted.size(), 2);
        QCOMPARE(removed.size(), 2);
        QCOMPARE(reset.size(), 0);
    }
};

QTEST_MAIN(TestControllers)
#include "tst_controllers.moc"
