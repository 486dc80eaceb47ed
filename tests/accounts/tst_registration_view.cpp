// The registration drawn offscreen: a person taps each field, types, turns the pickers by
// wheel, keyboard and touch, meets the address warning, agrees to the terms and taps Submit;
// the account and its Freelancer record are made and the menu comes up. Any QML warning fails.
#include "AccountScenes.h"
#include "AccountsFixture.h"
#include "AlertController.h"
#include "LoginPageTableViewController.h"
#include "NavigationController.h"
#include "PFUser.h"
#include "RegistrationTableViewController.h"
#include "Storyboard.h"
#include "ViewTestHelpers.h"

#include <QJsonArray>
#include <QQuickItem>
#include <QQuickWindow>
#include <QTest>
#include <QUrlQuery>
#include <QUuid>

using ViewTest::centreOf;
using ViewTest::typeText;

class TestRegistrationView : public QObject {
    Q_OBJECT

private:
    QQuickWindow *m_quick = nullptr;

    QQuickItem *item(const QString &name) { return ViewTest::visibleItem(m_quick, name); }

    // Scrolls the form so that the item is in view, then taps it.
    void tap(const QString &name)
    {
        QQuickItem *target = item(name);
        QVERIFY2(target, qPrintable(name));
        auto *form = item(QStringLiteral("registrationForm"));
        QVERIFY(form);
        auto *content = qvariant_cast<QQuickItem *>(form->property("contentItem"));
        const qreal y = target->mapToItem(content, QPointF(0, 0)).y();
        const qreal most = std::max(0.0, form->property("contentHeight").toReal() - form->height());
        form->setProperty("contentY", std::clamp(y - form->height() / 3, 0.0, most));
        QTest::qWait(20);
        ViewTest::tap(m_quick, target);
    }

    void tapAndType(const QString &name, ui::TextField *outlet, const QString &text)
    {
        tap(name);
        QTRY_VERIFY2(outlet->isFirstResponder(), qPrintable(name));
        typeText(m_quick, text);
        QCOMPARE(outlet->text(), text);
    }

    void wheel(QQuickItem *target, int notches)
    {
        const QPoint at = centreOf(target);
        QWheelEvent event(at, m_quick->mapToGlobal(at), QPoint(), QPoint(0, -120 * notches), Qt::NoButton,
                          Qt::NoModifier, Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(m_quick, &event);
    }

private Q_SLOTS:
    void init() { ViewTest::failOnQmlWarnings(); }

    void fillingTheFormByTouchRegisters()
    {
        REQUIRE_BACKEND();
        AccountsFixture fixture(/*drawsInterface=*/true);
        QVERIFY(fixture.isReady());
        LoginPageTableViewController *login = fixture.showLogin();
        QVERIFY(login);
        m_quick = fixture.window().quickWindow();
        QVERIFY(m_quick);
        QVERIFY(QTest::qWaitForWindowExposed(m_quick));

        QQuickItem *registerButton = nullptr;
        QTRY_VERIFY((registerButton = item(QStringLiteral("registerButton"))));
        ViewTest::tap(m_quick, registerButton);
        RegistrationTableViewController *screen = nullptr;
        QTRY_VERIFY(
            (screen = qobject_cast<RegistrationTableViewController *>(fixture.navigation()->topViewController())));
        QTRY_VERIFY_WITH_TIMEOUT(screen->submitButton()->isEnabled(), 15000);
        QTRY_VERIFY(item(QStringLiteral("roleTextField")));
        QCOMPARE(item(QStringLiteral("firstNameTextField"))->property("maximumLength").toInt(),
                 RegistrationTableViewController::kMaximumFieldLength);

        // The field with the keyboard stays clear of the "Done" toolbar: the form scrolls it into
        // view, on a desktop and on a short phone.
        QVERIFY(screen->firstNameTextField()->isFirstResponder()); // the form's first field
        for (const QSize size : {QSize(1280, 800), QSize(390, 560)}) {
            m_quick->resize(size);
            for (ui::TextField *field :
                 {screen->confirmPasswordTextField(), screen->firstNameTextField(), screen->homeTownTextField()}) {
                QVERIFY(field->becomeFirstResponder());
                QQuickItem *drawn = item(field->objectName());
                QQuickItem *toolbar = nullptr;
                QTRY_VERIFY((toolbar = item(QStringLiteral("doneToolbar"))));
                QTRY_VERIFY2(drawn->mapToScene(QPointF()).y() >= 44 &&
                                 drawn->mapToScene(QPointF(0, drawn->height())).y() <= toolbar->mapToScene(QPointF()).y(),
                             qPrintable(field->objectName()));
            }
        }
        screen->homeTownTextField()->resignFirstResponder();
        m_quick->resize(390, 844);

        // Role: the wheel turns the picker one row, Done (by touch) writes it.
        tap(QStringLiteral("roleTextField"));
        QQuickItem *wheelItem = nullptr;
        QTRY_VERIFY((wheelItem = item(QStringLiteral("pickerWheel"))));
        QCOMPARE(screen->roleTextField()->text(), QStringLiteral("Broadcast"));
        wheel(wheelItem, 1);
        QTRY_COMPARE(wheelItem->property("currentIndex").toInt(), 1);
        ViewTest::tap(m_quick, item(QStringLiteral("pickerDone")));
        QTRY_COMPARE(screen->roleTextField()->text(), QStringLiteral("Print"));
        QTRY_VERIFY(!item(QStringLiteral("pickerSheet")));

        const QString email =
            QStringLiteral("v%1@example.test").arg(QUuid::createUuid().toString(QUuid::Id128).left(12));
        tapAndType(QStringLiteral("firstNameTextField"), screen->firstNameTextField(), QStringLiteral("Ada"));
        tapAndType(QStringLiteral("lastNameTextField"), screen->lastNameTextField(), QStringLiteral("Okafor"));

        // A wrong address left for a picker field: its alert comes, Return closes it, and no
        // picker is left half open behind it.
        tapAndType(QStringLiteral("emailAddressTextField"), screen->emailAddressTextField(), QStringLiteral("ada@x"));
        tap(QStringLiteral("countryCodeTextField"));
        QTRY_VERIFY(ui::AlertController::alertOnScreen());
        QTRY_VERIFY(item(QStringLiteral("alertBox")));
        QTest::keyClick(m_quick, Qt::Key_Return);
        QTRY_VERIFY(!item(QStringLiteral("alertBox")));
        QTest::qWait(50);
        QVERIFY(!item(QStringLiteral("pickerSheet")));
        QVERIFY(screen->countryCodeTextField()->text().isEmpty());
        screen->emailAddressTextField()->setText({});
        tapAndType(QStringLiteral("emailAddressTextField"), screen->emailAddressTextField(), email);

        // Mobile code: three rows down by keyboard, Return chooses.
        tap(QStringLiteral("countryCodeTextField"));
        QTRY_VERIFY(item(QStringLiteral("pickerWheel")));
        QVERIFY(!ui::AlertController::alertOnScreen()); // the address was valid on leaving it
        // The sheet takes the keys from the field that opened it.
        QTRY_VERIFY(m_quick->activeFocusItem() &&
                    QByteArray(m_quick->activeFocusItem()->metaObject()->className()).startsWith("PickerSheetView"));
        for (int i = 0; i < 3; ++i)
            QTest::keyClick(m_quick, Qt::Key_Down);
        QTest::keyClick(m_quick, Qt::Key_Return);
        QTRY_COMPARE(screen->countryCodeTextField()->text(), screen->countryCodes().at(3).dial_code);
        QTRY_VERIFY(!item(QStringLiteral("pickerSheet")));
        tapAndType(QStringLiteral("mobileNumberTextField"), screen->mobileNumberTextField(), QStringLiteral("5550101"));

        // Home country: the prefill is taken as it is with Done.
        tapAndType(QStringLiteral("homeTownTextField"), screen->homeTownTextField(), QStringLiteral("Lagos"));
        tap(QStringLiteral("homeCountryTextField"));
        QTRY_VERIFY(item(QStringLiteral("pickerDone")));
        ViewTest::tap(m_quick, item(QStringLiteral("pickerDone")));
        QTRY_COMPARE(screen->homeCountryTextField()->text(), screen->countries().first());
        QTRY_VERIFY(!item(QStringLiteral("pickerSheet")));

        tapAndType(QStringLiteral("passwordTextField"), screen->passwordTextField(), QStringLiteral("Secret1x"));
        tapAndType(QStringLiteral("confirmPasswordTextField"), screen->confirmPasswordTextField(),
                   QStringLiteral("Secret1x"));
        tap(QStringLiteral("confirmSwitch"));
        QTRY_VERIFY(screen->confirmSwitch()->isOn());

        QQuickItem *submit = item(QStringLiteral("submitButton"));
        QVERIFY(submit);
        ViewTest::tap(m_quick, submit);
        QTRY_COMPARE_WITH_TIMEOUT(fixture.presentedIdentifier(), QStringLiteral("menu"), 20000);

        QUrlQuery query;
        query.addQueryItem(QStringLiteral("where"), QStringLiteral("{\"username\":\"%1\"}").arg(email));
        const QJsonArray users =
            TestBackend::instance()
                .request("GET", QStringLiteral("/users?") + query.toString(QUrl::FullyEncoded), {}, true)
                .body.object()
                .value(QStringLiteral("results"))
                .toArray();
        QCOMPARE(users.size(), 1);
        QCOMPARE(users.first().toObject().value(QStringLiteral("mobileTelephoneNumber")).toString(),
                 QStringLiteral("5550101"));
        QCOMPARE(users.first().toObject().value(QStringLiteral("mobileCountryCode")).toString(),
                 screen->countryCodes().at(3).dial_code);
    }
};

QTEST_MAIN(TestRegistrationView)
#include "tst_registration_view.moc"
