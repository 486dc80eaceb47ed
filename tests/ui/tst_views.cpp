#include "AlertController.h"
#include "Button.h"
#include "FilePickerSheet.h"
#include "FirstResponder.h"
#include "NavigationController.h"
#include "PickerSheet.h"
#include "Storyboard.h"
#include "Switch.h"
#include "TextField.h"
#include "Theme.h"
#include "Toolbar.h"
#include "ViewController.h"
#include "ViewTestHelpers.h"
#include "Window.h"

#include <QDir>
#include <QImage>
#include <QQuickItem>
#include <QTemporaryDir>
#include <QQuickWindow>
#include <QTest>

using ViewTest::centreOf;
using ViewTest::findItem;
using ViewTest::typeText;

namespace {

// A login-like screen: two fields with the keyboard "Done" toolbar, a button and a switch.
class LoginTestController : public ui::ViewController {
    Q_OBJECT
    Q_PROPERTY(ui::TextField *userNameTextField READ userNameTextField CONSTANT)
    Q_PROPERTY(ui::TextField *passwordTextField READ passwordTextField CONSTANT)
    Q_PROPERTY(ui::Button *loginButton READ loginButton CONSTANT)
    Q_PROPERTY(ui::Switch *rememberMeSwitch READ rememberMeSwitch CONSTANT)

public:
    LoginTestController()
    {
        setViewUrl(QUrl(QStringLiteral("qrc:/test/LoginTestView.qml")));
        m_password->setSecureTextEntry(true);
        m_password->setTag(99);
        m_loginButton->setTitle(QStringLiteral("Login"));
        for (ui::TextField *field : {m_userName, m_password})
            field->setInputAccessoryView(ui::Toolbar::doneToolbar(this, [this] { doneButtonAction(); }));
        connect(m_loginButton, &ui::Button::clicked, this, &LoginTestController::loginButton_Click);
        connect(m_password, &ui::TextField::returnPressed, this, [this] { ++returns; });
        connect(m_rememberMe, &ui::Switch::valueChanged, this, [this](bool on) { switchChanges << on; });
    }

    [[nodiscard]] ui::TextField *userNameTextField() const { return m_userName; }
    [[nodiscard]] ui::TextField *passwordTextField() const { return m_password; }
    [[nodiscard]] ui::Button *loginButton() const { return m_loginButton; }
    [[nodiscard]] ui::Switch *rememberMeSwitch() const { return m_rememberMe; }

    int logins = 0;
    int returns = 0;
    int cancels = 0;
    QString passwordAtLogin;
    QList<bool> switchChanges;

    void loginButton_Click()
    {
        ++logins;
        passwordAtLogin = m_password->text();
        auto *alert = ui::AlertController::alertControllerWithTitle(QStringLiteral("Error"),
                                                                    QStringLiteral("Please enter some log in details."),
                                                                    ui::AlertController::Style::Alert);
        alert->addAction(ui::AlertAction::actionWithTitle(QStringLiteral("Ok"), ui::AlertAction::Style::Default));
        alert->addAction(ui::AlertAction::actionWithTitle(QStringLiteral("Wipe"), ui::AlertAction::Style::Destructive));
        alert->addAction(ui::AlertAction::actionWithTitle(QStringLiteral("Cancel"), ui::AlertAction::Style::Cancel,
                                                          [this](ui::AlertAction *) { ++cancels; }));
        presentViewController(alert, true);
    }

    void doneButtonAction()
    {
        m_userName->resignFirstResponder();
        m_password->resignFirstResponder();
    }

private:
    ui::TextField *m_userName = new ui::TextField(QStringLiteral("userNameTextField"), this);
    ui::TextField *m_password = new ui::TextField(QStringLiteral("passwordTextField"), this);
    ui::Button *m_loginButton = new ui::Button(QStringLiteral("loginButton"), this);
    ui::Switch *m_rememberMe = new ui::Switch(QStringLiteral("rememberMeSwitch"), this);
};
} // namespace

class TestViews : public QObject {
    Q_OBJECT

private:
    QQuickItem *find(QQuickWindow *window, const char *name)
    {
        return findItem(window->contentItem(), QString::fromLatin1(name));
    }

    // Shows `root` in `window` and answers the drawn window once exposed (null otherwise).
    static QQuickWindow *show(ui::Window &window, ui::ViewController *root)
    {
        window.setRootViewController(root);
        window.makeKeyAndVisible();
        QQuickWindow *quick = window.quickWindow();
        return quick && QTest::qWaitForWindowExposed(quick) ? quick : nullptr;
    }

private Q_SLOTS:
    void init() { ViewTest::failOnQmlWarnings(); }

    void everyComponentCompiles_data()
    {
        QTest::addColumn<QString>("file");
        for (const char *file :
             {"AlertView", "AppWindow", "ControllerView", "EmbeddedView", "FormColumn", "KeyboardToolbar",
              "NavigationView", "OutletActivityIndicator", "OutletBarButton", "OutletButton", "OutletImage",
              "OutletLabel", "OutletSwitch", "OutletTableView", "OutletTextField", "OutletTextView", "PickerSheetView", "ScrollingForm", "FilePickerSheetView",
              "TableCell", "TableSectionHeader"})
            QTest::newRow(file) << QString::fromLatin1(file);
    }

    void everyComponentCompiles()
    {
        QFETCH(QString, file);
        const QString errors = ViewTest::compileErrors(QUrl(QStringLiteral("qrc:/qt/qml/Vantrel/Ui/%1.qml").arg(file)));
        QVERIFY2(errors.isEmpty(), qPrintable(errors));
    }

    void typingAndClickingReachTheController()
    {
        ui::Window window;
        auto *screen = new LoginTestController;
        QQuickWindow *quick = show(window, screen);
        QVERIFY(quick);
        QCOMPARE(quick->size(), ui::Window::kDefaultSize);
        QCOMPARE(screen->view()->width(), qreal(390));

        // Click into the password field by its outlet's name and type.
        QQuickItem *password = find(quick, "passwordTextField");
        QVERIFY(password);
        QTest::mouseClick(quick, Qt::LeftButton, {}, centreOf(password));
        QTRY_VERIFY(screen->passwordTextField()->isFirstResponder());
        typeText(quick, QStringLiteral("S3cret"));
        QCOMPARE(screen->passwordTextField()->text(), QStringLiteral("S3cret"));
        QTest::keyClick(quick, Qt::Key_Return);
        QCOMPARE(screen->returns, 1);

        // The focused field's "Done" toolbar shows and resigns the keyboard.
        QQuickItem *toolbar = find(quick, "doneToolbar");
        QVERIFY(toolbar);
        QTRY_VERIFY(toolbar->isVisible());
        QQuickItem *done = find(quick, "doneButton");
        QVERIFY(done);
        // Laid out inside the window before it is clicked.
        QTRY_VERIFY(done->width() > 0 && done->mapToScene(QPointF(done->width(), 0)).x() <= quick->width());
        QTest::mouseClick(quick, Qt::LeftButton, {}, centreOf(done));
        QTRY_VERIFY(!screen->passwordTextField()->isFirstResponder());
        QTRY_VERIFY(!toolbar->isVisible());

        // Tab moves from the user name to the password field.
        QTest::mouseClick(quick, Qt::LeftButton, {}, centreOf(find(quick, "userNameTextField")));
        QTRY_VERIFY(screen->userNameTextField()->isFirstResponder());
        typeText(quick, QStringLiteral("ann"));
        QTest::keyClick(quick, Qt::Key_Tab);
        QTRY_VERIFY(screen->passwordTextField()->isFirstResponder());
        QCOMPARE(screen->userNameTextField()->text(), QStringLiteral("ann"));

        // Setting the outlet from code shows in the drawn field.
        screen->passwordTextField()->setText({});
        QCOMPARE(password->property("text").toString(), QString());

        QTest::mouseClick(quick, Qt::LeftButton, {}, centreOf(find(quick, "rememberMeSwitch")));
        QCOMPARE(screen->switchChanges, QList<bool>{true});

        // The button runs the controller's action, which shows an alert; Escape cancels it.
        screen->passwordTextField()->setText(QStringLiteral("typed"));
        QVERIFY(screen->passwordTextField()->becomeFirstResponder());
        QTest::mouseClick(quick, Qt::LeftButton, {}, centreOf(find(quick, "loginButton")));
        QCOMPARE(screen->logins, 1);
        QCOMPARE(screen->passwordAtLogin, QStringLiteral("typed"));
        QTRY_VERIFY(find(quick, "alertBox"));
        QTRY_VERIFY(find(quick, "alertBox")->isVisible());
        QVERIFY(!ui::FirstResponder::instance()->current()); // the keyboard went away
        // Titles are drawn in their style's colour: red for a destructive action, the accent otherwise.
        const auto titleColour = [&](const char *name) {
            return find(quick, name)->property("contentItem").value<QQuickItem *>()->property("color").value<QColor>();
        };
        QCOMPARE(titleColour("alertAction_Wipe"), QColor(0xff, 0x3b, 0x30));
        QCOMPARE(titleColour("alertAction_Ok"), ui::Theme::instance()->accentColor());
        QTest::keyClick(quick, Qt::Key_Escape);
        QTRY_COMPARE(screen->cancels, 1);
        QVERIFY(!ui::AlertController::alertOnScreen());
        QTRY_VERIFY(!find(quick, "alertBox"));
        // The screen under the alert kept its drawn items.
        QCOMPARE(find(quick, "passwordTextField"), password);
    }

    void navigationBarAndBackButtonAreDrawn()
    {
        ui::Window window;
        auto *first = new LoginTestController;
        first->setTitle(QStringLiteral("Login"));
        auto *navigation = new ui::NavigationController(first);
        QQuickWindow *quick = show(window, navigation);
        QVERIFY(quick);

        QCOMPARE(find(quick, "navigationTitle")->property("text").toString(), QStringLiteral("Login"));
        QQuickItem *back = find(quick, "backButton");
        QVERIFY(back);
        QVERIFY(!back->isVisible());

        QPointer<LoginTestController> second = new LoginTestController;
        second->setTitle(QStringLiteral("Register"));
        navigation->pushViewController(second, true);
        QTRY_COMPARE(find(quick, "navigationTitle")->property("text").toString(), QStringLiteral("Register"));
        QTRY_VERIFY(back->isVisible());
        // The screen under the bar is told its size: the window less the bar.
        QTRY_COMPARE(second->view()->height(), qreal(844 - 44));

        QTest::mouseClick(quick, Qt::LeftButton, {}, centreOf(back));
        QTRY_COMPARE(navigation->topViewController(), first);
        QTRY_VERIFY(!second);
        QTRY_VERIFY(!back->isVisible());
    }

    // The picker takes the keys from the field that opened it: arrows, typed letters, Return;
    // a tap on a row selects it.
    void pickerSheetTakesKeysAndTaps()
    {
        ui::Window window;
        auto *screen = new LoginTestController;
        QQuickWindow *quick = show(window, screen);
        QVERIFY(quick);
        QVERIFY(screen->userNameTextField()->becomeFirstResponder());

        QString chosen;
        QVERIFY(ui::PickerSheet::showPickerWithTitle(
            "Language", {"English", "French", "German", "Greek"}, 0,
            [&chosen](ui::PickerSheet *, int, const QString &value) { chosen = value; }, {}, screen));
        QQuickItem *wheel = nullptr;
        QTRY_VERIFY((wheel = find(quick, "pickerWheel")));
        QTest::keyClick(quick, Qt::Key_Down);
        QTRY_COMPARE(wheel->property("currentIndex").toInt(), 1);
        QTest::keyClick(quick, 'g');
        QTRY_COMPARE(wheel->property("currentIndex").toInt(), 2);
        QQuickItem *first = find(quick, "pickerRow_0");
        QVERIFY(first);
        QTest::mouseClick(quick, Qt::LeftButton, {}, centreOf(first));
        QTRY_COMPARE(wheel->property("currentIndex").toInt(), 0);
        QTest::keyClick(quick, Qt::Key_Down);
        QTest::keyClick(quick, Qt::Key_Return);
        QTRY_COMPARE(chosen, QStringLiteral("French"));
        QTRY_VERIFY(!find(quick, "pickerSheet"));
    }

    // Return picks the alert's safe button, even with the destructive one added first and a
    // field holding the keyboard when the alert came.
    void returnNeverPicksADestructiveButton()
    {
        ui::Window window;
        auto *screen = new LoginTestController;
        QQuickWindow *quick = show(window, screen);
        QVERIFY(quick && screen->passwordTextField()->becomeFirstResponder());
        QString chosen;
        auto *alert = ui::AlertController::alertControllerWithTitle(QStringLiteral("Warning"), QStringLiteral("Sure?"),
                                                                    ui::AlertController::Style::Alert);
        for (const auto &[title, style] : {std::pair{"YES DELETE MY PROFILE", ui::AlertAction::Style::Destructive},
                                          std::pair{"cancel", ui::AlertAction::Style::Default}})
            alert->addAction(ui::AlertAction::actionWithTitle(QString::fromLatin1(title), style,
                                                              [&chosen](ui::AlertAction *a) { chosen = a->title(); }));
        screen->presentViewController(alert, true);
        QTRY_VERIFY(quick->activeFocusItem() && quick->activeFocusItem()->objectName() == QStringLiteral("alertAction_cancel"));
        QTest::keyClick(quick, Qt::Key_Return);
        QTRY_COMPARE(chosen, QStringLiteral("cancel"));
    }

    // The app's own photo picker: one column that fits a phone; a click picks the file under
    // the pointer, a folder opens.
    void filePickerPicksTheFileUnderThePointer()
    {
        QTemporaryDir dir;
        QVERIFY(dir.isValid() && QDir(dir.path()).mkpath(QStringLiteral("Trips")));
        for (const char *name : {"IMG_0001.JPG", "IMG_0002.jpeg", "A photo with a very long name taken at the conference.png"}) {
            QImage picture(40, 30, QImage::Format_RGB32);
            picture.fill(Qt::darkCyan);
            QVERIFY(picture.save(dir.filePath(QString::fromLatin1(name)), "PNG"));
        }
        ui::Window window;
        auto *screen = new LoginTestController;
        QQuickWindow *quick = show(window, screen);
        QVERIFY(quick);
        QUrl picked;
        ui::FilePickerSheet *sheet = ui::FilePickerSheet::showFilePickerWithTitle(
            QStringLiteral("Choose a photo"), {QStringLiteral("jpg"), QStringLiteral("jpeg"), QStringLiteral("png")},
            QStringLiteral("No pictures in this folder"), [&picked](const QUrl &file) { picked = file; }, screen);
        QVERIFY(sheet);
        sheet->openFolder(dir.path());

        // One column inside the window, folders first, no row over another.
        QQuickItem *second = nullptr;
        QTRY_VERIFY((second = find(quick, "fileEntry_IMG_0001.JPG")));
        QTRY_VERIFY(second->width() > 0);
        qreal bottom = 0;
        for (const char *name : {"fileEntry_Trips", "fileEntry_A photo with a very long name taken at the conference.png",
                                 "fileEntry_IMG_0001.JPG", "fileEntry_IMG_0002.jpeg"}) {
            QQuickItem *entry = find(quick, name);
            QVERIFY2(entry, name);
            const QRectF box = entry->mapRectToScene(QRectF(0, 0, entry->width(), entry->height()));
            QVERIFY(box.left() >= 0 && box.right() <= quick->width() && box.top() >= bottom);
            bottom = box.bottom();
        }
        QTest::mouseClick(quick, Qt::LeftButton, {}, centreOf(second));
        QTRY_COMPARE(picked, QUrl::fromLocalFile(dir.filePath(QStringLiteral("IMG_0001.JPG"))));
        QTRY_VERIFY(!find(quick, "filePickerSheet"));
    }

    void embeddedScreenIsDrawnInItsSlot()
    {
        ui::StoryboardDefinition definition;
        definition.initialIdentifier = QStringLiteral("container");
        definition.scenes.insert(
            QStringLiteral("container"),
            {[] { return new ui::ViewController; },
             QUrl(QStringLiteral("qrc:/test/ContainerTestView.qml")),
             {{QStringLiteral("contactDetails"), {ui::StoryboardSegue::Kind::Embed, QStringLiteral("details")}}}});
        definition.scenes.insert(QStringLiteral("details"), {[] { return new LoginTestController; }});
        ui::Storyboard::registerStoryboard(QStringLiteral("ViewsTest"), definition);

        ui::Window window;
        QQuickWindow *quick =
            show(window, ui::Storyboard::storyboardWithName("ViewsTest")->instantiateInitialViewController());
        QVERIFY(quick);

        auto *child = qobject_cast<LoginTestController *>(
            window.rootViewController()->childViewControllerForSlot(QStringLiteral("contactDetails")));
        QVERIFY(child);
        QCOMPARE(child->appearanceState(), ui::ViewController::AppearanceState::Appeared);
        QQuickItem *button = find(quick, "loginButton");
        QVERIFY(button);
        QVERIFY(button->mapToScene(QPointF(0, 0)).y() >= 100); // inside the slot
        QTRY_COMPARE(child->view()->height(), qreal(844 - 100));
        QTest::mouseClick(quick, Qt::LeftButton, {}, centreOf(button));
        QCOMPARE(child->logins, 1);
        child->presentedViewController()->dismissViewControllerAnimated(false);
    }
};

QTEST_MAIN(TestViews)
#include "tst_views.moc"
