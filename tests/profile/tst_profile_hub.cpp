// The profile hub against the local backend: editing and saving, the role change and its
// skills, the menu while editing, the photo, a lost connection and the deletion request.
#include "AccountsTestCase.h"
#include "AlertController.h"
#include "Freelancer.h"
#include "LoginPageTableViewController.h"
#include "MasterProfileViewController.h"
#include "NavigationController.h"
#include "PFUser.h"
#include "PickerField.h"
#include "ProfileFixture.h"
#include "ProfilePhotoEncoder.h"
#include "ProfileTableViewController.h"
#include "RevealViewController.h"
#include "SkillLists.h"
#include "View.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QPainter>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>
#include <array>

namespace {

const QString kInvalidForm = QStringLiteral(
    "Please check the form as one or more of its contents are not valid.  We require each field to be populated and "
    "a valid email address.  The details HAVE NOT Saved.");
const QString kMenuWarning = QStringLiteral(
    "You are currently editing and may changed some of the values.  Press exit to leave without saving or press SAVE "
    "to ensure you dont loose any changes.");
const QString kDeletionWarning = QStringLiteral(
    "You have pressed delete profile. You will be locked out of your account.  Our admin team will be advised to "
    "completely remove your profile and data.  This is ireversible. Do you want to proceed?");

const QString kNotAuthorised = QStringLiteral(
    "Sorry it appears your account has not yet been authorised.  Please contact Vantrel Admin if you are not "
    "authorised within 7 days.");

const QString kEmailWarning = QStringLiteral(
    "Please ensure you have entered a valid email address, as this will be used to send you critical information");

QStringList skillsOf(const QJsonObject &freelancer)
{
    return freelancer.value(QStringLiteral("skills")).toVariant().toStringList();
}

QString roleOf(const QJsonObject &freelancer)
{
    return freelancer[QStringLiteral("freelanceCategory")][QStringLiteral("categoryTitle")].toString();
}

// The notices of one function sent since the outbox had `before` lines.
QList<QJsonObject> noticesAfter(int before)
{
    QList<QJsonObject> notices;
    const QStringList lines = TestBackend::readLines(TestBackend::instance().noticeOutbox());
    for (qsizetype i = before; i < lines.size(); ++i)
        notices << QJsonDocument::fromJson(lines.at(i).toUtf8()).object();
    return notices;
}

QString writePicture(const QTemporaryDir &dir, const QSize &size)
{
    QImage image(size, QImage::Format_RGB32);
    image.fill(QColor(30, 120, 90));
    QPainter(&image).fillRect(QRect(QPoint(0, 0), size / 3), Qt::yellow);
    const QString path = dir.filePath(QStringLiteral("picked.png"));
    return image.save(path, "PNG") ? path : QString();
}

} // namespace

class TestProfileHub : public AccountsTestCase {
    Q_OBJECT

private:
    [[nodiscard]] std::unique_ptr<AccountsFixture> makeFixture() const override
    {
        return std::make_unique<ProfileFixture>();
    }
    ProfileFixture &f() { return static_cast<ProfileFixture &>(AccountsTestCase::f()); }

    MasterProfileViewController *open(ProfileFixture::Member &member, const QString &role = QStringLiteral("Print"),
                                      const QStringList &skills = {QStringLiteral("Writer")})
    {
        member = f().makeFreelancer(role, skills);
        return f().openHub(member);
    }

    // Saves and answers the alert; true when it said "Changes Saved".
    static bool saveAndConfirm(MasterProfileViewController *hub)
    {
        hub->saveButton()->click();
        return AccountsFixture::answer(QStringLiteral("Success"), QStringLiteral("Changes Saved"));
    }

private Q_SLOTS:
    // EDIT opens the form at its first name; the same button, reading "SAVE" then, saves.
    void opensWithTheRecordsAndEditSavesAsItReadsSave()
    {
        ProfileFixture::Member member;
        MasterProfileViewController *hub = open(member);
        QVERIFY(hub);
        ProfileTableViewController *table = hub->profileTable();
        QVERIFY(table);
        QCOMPARE(table->emailAddressTextField()->text(), member.user.username);
        QCOMPARE(table->roleTextField()->text(), QStringLiteral("Print"));
        const auto expectEditing = [&](bool editing) {
            QCOMPARE(table->isTableEditing(), editing);
            QCOMPARE(hub->editButton()->title(), editing ? QStringLiteral("SAVE") : QStringLiteral("EDIT"));
            for (ui::TextField *field : table->textFields())
                QVERIFY2(field->isEnabled() == editing, qPrintable(field->objectName()));
            QCOMPARE(table->whatsAppSwitch()->isEnabled(), editing);
        };
        expectEditing(false);
        hub->editButton()->click();
        expectEditing(true);
        QVERIFY(table->firstNameTextField()->isFirstResponder());
        table->positionTextField()->setText(QStringLiteral("Picture editor"));
        hub->editButton()->click();
        QVERIFY(AccountsFixture::answer(QStringLiteral("Success"), QStringLiteral("Changes Saved")));
        expectEditing(false);
        QCOMPARE(ProfileFixture::serverUser(member.user.objectId).value(QStringLiteral("position")).toString(),
                 QStringLiteral("Picture editor"));
    }

    // The role and dialling-code pickers fill their fields; leaving the address checks it.
    void editingAids()
    {
        ProfileFixture::Member member;
        MasterProfileViewController *hub = open(member);
        QVERIFY(hub);
        ProfileTableViewController *table = hub->profileTable();
        hub->editButton()->click();

        table->roleTextField()->setText({});
        table->roleTextField()->userFocusChanged(true);
        QTRY_VERIFY(table->rolePicker()->sheet());
        QCOMPARE(table->rolePicker()->sheet()->rows(),
                 (QStringList{"Broadcast", "Print", "Multi-Skilled", "Citizen Journalist"}));
        table->rolePicker()->sheet()->setSelectedIndex(3);
        table->rolePicker()->sheet()->done();
        QTRY_COMPARE(table->roleTextField()->text(), QStringLiteral("Citizen Journalist"));
        QTRY_VERIFY(!ui::AlertController::alertOnScreen() && !hub->presentedViewController());

        // Cancel leaves the field as it was before the picker opened.
        table->workCountryCodeTextField()->setText({});
        table->workCountryCodeTextField()->userFocusChanged(true);
        QTRY_VERIFY(table->workCountryCodePicker()->sheet());
        table->workCountryCodePicker()->sheet()->setSelectedIndex(5);
        table->workCountryCodePicker()->sheet()->cancel();
        QTRY_VERIFY(!hub->presentedViewController());
        QCOMPARE(table->workCountryCodeTextField()->text(), QString());

        table->countryCodeTextField()->setText({});
        table->countryCodeTextField()->userFocusChanged(true);
        QTRY_VERIFY(table->countryCodePicker()->sheet());
        ui::PickerSheet *sheet = table->countryCodePicker()->sheet();
        QVERIFY(sheet->rows().first().startsWith(QStringLiteral("None:")));
        const int ghana = int(sheet->rows().indexOf(QRegularExpression(QStringLiteral("^Ghana:.*"))));
        QVERIFY(ghana > 0);
        sheet->setSelectedIndex(ghana);
        sheet->done();
        QTRY_COMPARE(table->countryCodeTextField()->text(), QStringLiteral("+233"));

        // The address rule itself is tested on its own; here: that leaving the field applies it.
        ui::TextField *email = table->emailAddressTextField();
        const auto leaveWith = [email](const QString &address) {
            email->userFocusChanged(true);
            email->setText(address);
            email->userFocusChanged(false);
        };
        leaveWith(QStringLiteral("amara@example.c"));
        QVERIFY(AccountsFixture::answer(QStringLiteral("Error"), kEmailWarning));
        QCOMPARE(email->text(), QStringLiteral("amara@example.c"));
        leaveWith(QStringLiteral("amara@example.co"));
        QTest::qWait(50);
        QVERIFY(!ui::AlertController::alertOnScreen());
    }

    void saveWithoutEditSaysThereIsNothing()
    {
        ProfileFixture::Member member;
        MasterProfileViewController *hub = open(member);
        QVERIFY(hub);
        hub->profileTable()->positionTextField()->setText(QStringLiteral("Changed without EDIT"));
        hub->saveButton()->click();
        ui::AlertController *alert = ProfileFixture::expectAlert(
            QStringLiteral("Admin"), QStringLiteral("There are no changes to save at this moment"),
            {QStringLiteral("Ok")});
        QVERIFY(alert);
        QVERIFY(hub->loadingSpinner()->actInd()->isHidden());
        ProfileFixture::choose(alert, QStringLiteral("Ok"));
        QCOMPARE(ProfileFixture::serverUser(member.user.objectId).value(QStringLiteral("position")).toString(),
                 QStringLiteral("Camera operator"));
    }

    void invalidFormIsNotSaved_data()
    {
        QTest::addColumn<QString>("field");
        QTest::addColumn<QString>("text");
        // clang-format off
        QTest::newRow("no first name") << "firstNameTextField" << "";
        QTest::newRow("no last name") << "lastNameTextField" << "";
        QTest::newRow("no position") << "positionTextField" << "";
        QTest::newRow("no mobile number") << "mobileTelephoneNumberTextField" << "";
        QTest::newRow("e-mail without domain") << "emailAddressTextField" << "amara@example";
        QTest::newRow("10,000-character position") << "positionTextField" << QString(10000, QLatin1Char('p'));
        QTest::newRow("a role no record has (titles match exactly)") << "roleTextField" << "multi-skilled";
        // clang-format on
    }
    void invalidFormIsNotSaved()
    {
        QFETCH(QString, field);
        QFETCH(QString, text);
        ProfileFixture::Member member;
        MasterProfileViewController *hub = open(member);
        QVERIFY(hub);
        hub->editButton()->click();
        auto *input = hub->profileTable()->findChild<ui::TextField *>(field);
        QVERIFY(input);
        input->setText(text);
        hub->profileTable()->lastNameTextField()->setText(
            field == QLatin1String("lastNameTextField") ? text : QStringLiteral("Mensah"));
        hub->saveButton()->click();
        QVERIFY(AccountsFixture::answer(QStringLiteral("Admin"), kInvalidForm));
        // Still editing, with what was typed.
        QVERIFY(hub->profileTable()->isTableEditing());
        QCOMPARE(input->text(), text);
        QCOMPARE(ProfileFixture::serverUser(member.user.objectId).value(QStringLiteral("lastName")).toString(),
                 QStringLiteral("Okafor"));
    }

    void savesTheContactKeys()
    {
        ProfileFixture::Member member;
        MasterProfileViewController *hub = open(member);
        QVERIFY(hub);
        ProfileTableViewController *table = hub->profileTable();
        hub->editButton()->click();
        // Field, what is typed, the user's key and what it holds afterwards: names are trimmed,
        // the rest is kept as typed, and the login name stays.
        const QList<std::array<QString, 4>> fields{
            {"firstNameTextField", "  Ama \n", "firstName", "Ama"},
            {"lastNameTextField", "\tMensah  ", "lastName", "Mensah"},
            {"positionTextField", " Sound recordist ", "position", " Sound recordist "},
            {"emailAddressTextField", "ama.mensah@example.test", "workEmail", "ama.mensah@example.test"},
            {"countryCodeTextField", "+233", "mobileCountryCode", "+233"},
            {"mobileTelephoneNumberTextField", "201234567", "mobileTelephoneNumber", "201234567"},
            {"workCountryCodeTextField", "+44", "officeCountryCode", "+44"},
            {"workTelephoneNumberTextField", "2079460000", "officeTelephoneNumber", "2079460000"},
            {"", "", "username", member.user.username}};
        for (const auto &[field, typed, key, stored] : fields) {
            if (field.isEmpty())
                continue;
            auto *input = table->findChild<ui::TextField *>(field);
            QVERIFY2(input, qPrintable(field));
            input->setText(typed);
        }
        table->whatsAppSwitch()->setOn(true);
        QVERIFY(saveAndConfirm(hub));
        QVERIFY(!table->isTableEditing());
        QCOMPARE(hub->editButton()->title(), QStringLiteral("EDIT"));
        const QJsonObject user = ProfileFixture::serverUser(member.user.objectId);
        for (const auto &[field, typed, key, stored] : fields)
            QCOMPARE(user.value(key).toString(), stored);
        // "Changes Saved" comes once the freelancer record has it too.
        QVERIFY(ProfileFixture::serverFreelancer(member.freelancerId).value(QStringLiteral("isWhatsApp")).toBool());
    }

    void roleChangeSetsTheSkills_data()
    {
        QTest::addColumn<QString>("from");
        QTest::addColumn<QStringList>("skills");
        QTest::addColumn<QString>("to");
        QTest::addColumn<QString>("savedRole");
        QTest::addColumn<QStringList>("savedSkills");
        // Print to Multi-Skilled is the next test; the rule's table is tested on its own.
        // clang-format off
        QTest::newRow("to Citizen Journalist") << "Broadcast" << QStringList{"TV Camera", "TV Sound"}
            << "Citizen Journalist" << "Citizen Journalist" << QStringList{"User-Generator/Live-Streamer"};
        QTest::newRow("no role before") << "" << QStringList() << "Print" << "Print" << QStringList();
        // clang-format on
    }
    void roleChangeSetsTheSkills()
    {
        QFETCH(QString, from);
        QFETCH(QStringList, skills);
        QFETCH(QString, to);
        QFETCH(QString, savedRole);
        QFETCH(QStringList, savedSkills);
        ProfileFixture::Member member;
        MasterProfileViewController *hub = open(member, from, skills);
        QVERIFY(hub);
        hub->editButton()->click();
        hub->profileTable()->roleTextField()->setText(to);
        QVERIFY(saveAndConfirm(hub));
        QCOMPARE(roleOf(ProfileFixture::serverFreelancer(member.freelancerId)), savedRole);
        QCOMPARE(skillsOf(ProfileFixture::serverFreelancer(member.freelancerId)), savedSkills);
    }

    void multiSkilledFillsTheSkillsAndSavingAgainKeepsThem()
    {
        ProfileFixture::Member member;
        MasterProfileViewController *hub = open(member);
        QVERIFY(hub);
        hub->editButton()->click();
        hub->profileTable()->roleTextField()->setText(QStringLiteral("Multi-Skilled"));
        QVERIFY(saveAndConfirm(hub));
        QCOMPARE(skillsOf(ProfileFixture::serverFreelancer(member.freelancerId)),
                 SkillLists::broadcastSkills() + SkillLists::printSkills());
        QCOMPARE(roleOf(ProfileFixture::serverFreelancer(member.freelancerId)), QStringLiteral("Multi-Skilled"));
        QCOMPARE(SkillLists::broadcastSkills().size() + SkillLists::printSkills().size(), 13);
        // The person then trims the list on the skills screen, and saves the profile again.
        QVERIFY(TestBackend::instance()
                    .request("PUT", QStringLiteral("/classes/Freelancer/") + member.freelancerId,
                             {{QStringLiteral("skills"), QJsonArray{QStringLiteral("Writer")}}}, true)
                    .status == 200);
        hub->freelancer()->setSkills({QStringLiteral("Writer")});
        hub->editButton()->click();
        hub->profileTable()->positionTextField()->setText(QStringLiteral("Editor"));
        QVERIFY(saveAndConfirm(hub));
        QCOMPARE(ProfileFixture::serverUser(member.user.objectId).value(QStringLiteral("position")).toString(),
                 QStringLiteral("Editor"));
        QCOMPARE(skillsOf(ProfileFixture::serverFreelancer(member.freelancerId)),
                 QStringList{QStringLiteral("Writer")});
    }

    void menuButtonAsksWhileEditing()
    {
        ProfileFixture::Member member;
        MasterProfileViewController *hub = open(member);
        QVERIFY(hub);
        RevealViewController *reveal = f().reveal();
        const int closed = reveal->frontViewPosition();

        // Not editing: the menu opens at once, and closes again.
        hub->menuButton()->click();
        QTRY_VERIFY(reveal->frontViewPosition() != closed);
        QVERIFY(!ui::AlertController::alertOnScreen());
        hub->menuButton()->click();
        QTRY_COMPARE(reveal->frontViewPosition(), closed);

        hub->editButton()->click();
        hub->profileTable()->positionTextField()->setText(QStringLiteral("Half typed"));
        hub->menuButton()->click();
        ui::AlertController *alert = ProfileFixture::expectAlert(QStringLiteral("Warning"), kMenuWarning,
                                                                 {QStringLiteral("Exit"), QStringLiteral("CANCEL")});
        QVERIFY(alert);
        QCOMPARE(alert->actions().first()->style(), ui::AlertAction::Style::Destructive);
        QCOMPARE(alert->actions().last()->style(), ui::AlertAction::Style::Default);
        ProfileFixture::choose(alert, QStringLiteral("CANCEL"));
        QTest::qWait(100);
        QCOMPARE(reveal->frontViewPosition(), closed);
        QVERIFY(hub->profileTable()->isTableEditing());
        QCOMPARE(hub->profileTable()->positionTextField()->text(), QStringLiteral("Half typed"));

        hub->menuButton()->click();
        alert = ProfileFixture::expectAlert(QStringLiteral("Warning"), kMenuWarning,
                                            {QStringLiteral("Exit"), QStringLiteral("CANCEL")});
        ProfileFixture::choose(alert, QStringLiteral("Exit"));
        QTRY_VERIFY(reveal->frontViewPosition() != closed);
        // Nothing was saved.
        QCOMPARE(ProfileFixture::serverUser(member.user.objectId).value(QStringLiteral("position")).toString(),
                 QStringLiteral("Camera operator"));
    }

    void savedPhotoIsScaledJpeg()
    {
        ProfileFixture::Member member;
        MasterProfileViewController *hub = open(member);
        QVERIFY(hub);
        QTemporaryDir dir;
        const QString path = writePicture(dir, QSize(1000, 701));
        QVERIFY(!path.isEmpty());
        ProfileTableViewController *table = hub->profileTable();
        hub->editButton()->click();
        table->photoPicked(QUrl::fromLocalFile(path));
        QVERIFY(table->hasPhotoChanged());
        const QByteArray expected = ProfilePhotoEncoder::encode(table->profilePictureView()->image());
        QVERIFY(saveAndConfirm(hub));

        const QJsonObject picture =
            ProfileFixture::serverUser(member.user.objectId).value(QStringLiteral("profilePicture")).toObject();
        QCOMPARE(picture.value(QStringLiteral("__type")).toString(), QStringLiteral("File"));
        const QByteArray stored = ProfileFixture::download(picture.value(QStringLiteral("url")).toString());
        QCOMPARE(stored, expected);
        QImage decoded;
        QVERIFY(decoded.loadFromData(stored, "JPEG"));
        QCOMPARE(decoded.size(), QSize(600, 421)); // 701 * 600 / 1000 = 420.6

        // Saving again without a new photo leaves the stored file alone (no new, blurrier copy).
        hub->editButton()->click();
        hub->profileTable()->positionTextField()->setText(QStringLiteral("Photographer"));
        QVERIFY(saveAndConfirm(hub));
        QCOMPARE(ProfileFixture::serverUser(member.user.objectId).value(QStringLiteral("profilePicture")).toObject(),
                 picture);

        // A later visit shows the stored photo.
        m_fixture.reset();
        m_fixture = std::make_unique<ProfileFixture>();
        hub = f().openHub(member);
        QVERIFY(hub);
        QTRY_VERIFY_WITH_TIMEOUT(hub->profileTable()->profilePictureView()->hasImage(), 10000);
        QCOMPARE(hub->profileTable()->profilePictureView()->image().size(), QSize(600, 421));
        QVERIFY(!hub->profileTable()->hasPhotoChanged());
    }

    void changedPhotoIsSavedOnLeaving()
    {
        ProfileFixture::Member member;
        MasterProfileViewController *hub = open(member);
        QVERIFY(hub);
        QTemporaryDir dir;
        hub->editButton()->click();
        hub->profileTable()->photoPicked(QUrl::fromLocalFile(writePicture(dir, QSize(300, 200))));
        QVERIFY(hub->profileTable()->hasPhotoChanged());
        // Leaving for the password change.
        hub->changePasswordButton()->click();
        auto *navigation = hub->navigationController();
        QTRY_COMPARE(navigation->viewControllers().size(), 2);
        QCOMPARE(navigation->topViewController()->storyboardIdentifier(), QStringLiteral("passwordChange"));
        QVERIFY(!hub->profileTable()->hasPhotoChanged());
        QJsonObject picture;
        QTRY_VERIFY_WITH_TIMEOUT(
            !(picture =
                  ProfileFixture::serverUser(member.user.objectId).value(QStringLiteral("profilePicture")).toObject())
                 .isEmpty(),
            10000);
        QImage decoded;
        QVERIFY(
            decoded.loadFromData(ProfileFixture::download(picture.value(QStringLiteral("url")).toString()), "JPEG"));
        QCOMPARE(decoded.size(), QSize(600, 400));
        // Only the photo: the name typed meanwhile was not saved.
        QCOMPARE(ProfileFixture::serverUser(member.user.objectId).value(QStringLiteral("firstName")).toString(),
                 QStringLiteral("Amara"));
    }

    void pickingAFileThatIsNoPictureKeepsThePhoto()
    {
        ProfileFixture::Member member;
        MasterProfileViewController *hub = open(member);
        QVERIFY(hub);
        QTemporaryDir dir;
        ProfileTableViewController *table = hub->profileTable();
        hub->editButton()->click();
        table->photoPicked(QUrl::fromLocalFile(writePicture(dir, QSize(200, 100))));
        const QImage shown = table->profilePictureView()->image();
        QFile text(dir.filePath(QStringLiteral("cv.jpg")));
        QVERIFY(text.open(QIODevice::WriteOnly));
        text.write("Curriculum vitae\n");
        text.close();
        table->setHasPhotoChanged(false);
        table->photoPicked(QUrl::fromLocalFile(text.fileName()));
        ui::AlertController *alert = ui::AlertController::alertOnScreen();
        QVERIFY(alert);
        QCOMPARE(alert->title(), QStringLiteral("Sorry"));
        QVERIFY(alert->message().startsWith(QStringLiteral("That file cannot be used as your photo.")));
        ProfileFixture::choose(alert, QStringLiteral("Ok"));
        QCOMPARE(table->profilePictureView()->image(), shown);
        QVERIFY(!table->hasPhotoChanged());
    }

    void lostConnectionKeepsTheForm()
    {
        ProfileFixture::Member member;
        MasterProfileViewController *hub = open(member);
        QVERIFY(hub);
        ProfileTableViewController *table = hub->profileTable();
        hub->editButton()->click();
        table->positionTextField()->setText(QStringLiteral("Typed before the signal went"));
        f().restartClient(QStringLiteral("http://127.0.0.1:9"));
        QVERIFY(PFUser::currentUser());
        hub->saveButton()->click();
        QVERIFY(QTest::qWaitFor([] { return ui::AlertController::alertOnScreen() != nullptr; }, 30000));
        ui::AlertController *alert = ui::AlertController::alertOnScreen();
        QCOMPARE(alert->title(), QStringLiteral("Error"));
        QVERIFY2(alert->message().startsWith(QStringLiteral("Sorry it appears something has gone wrong\n\n")) &&
                     alert->message().size() > 45,
                 qPrintable(alert->message()));
        ProfileFixture::choose(alert, QStringLiteral("Ok"));
        QVERIFY(hub->loadingSpinner()->actInd()->isHidden());
        QCOMPARE(table->positionTextField()->text(), QStringLiteral("Typed before the signal went"));
        QCOMPARE(table->firstNameTextField()->text(), QStringLiteral("Amara"));
    }

    // Nothing is edited before the records have come; a save that could not store the role and
    // the messaging flag says so instead of "Changes Saved".
    void recordsThatCannotBeSaved()
    {
        // An account without its freelancer record: the hub says so and offers to try again.
        MasterProfileViewController *hub = f().openHub({f().makeUser({{QStringLiteral("isAuthorised"), true}}), {}});
        QVERIFY(hub);
        ui::AlertController *alert = ProfileFixture::waitForAlert();
        QVERIFY(alert && alert->message().endsWith(QStringLiteral("No profile record belongs to this account.")));
        QCOMPARE(AccountsFixture::buttonTitles(alert), (QStringList{"Try Again", "Cancel"}));
        QVERIFY(!hub->editButton()->isEnabled() && !hub->saveButton()->isEnabled());
        ProfileFixture::choose(alert, QStringLiteral("Cancel"));

        // The record goes while the person edits: the save reports the failure.
        ProfileFixture::Member member;
        hub = open(member);
        QVERIFY(hub);
        QVERIFY(hub->saveButton()->isEnabled());
        QCOMPARE(TestBackend::instance()
                     .request("DELETE", QStringLiteral("/classes/Freelancer/") + member.freelancerId, {}, true)
                     .status,
                 200);
        hub->editButton()->click();
        hub->profileTable()->whatsAppSwitch()->setOn(true);
        hub->saveButton()->click();
        alert = ProfileFixture::waitForAlert();
        QVERIFY(alert);
        QCOMPARE(alert->title(), QStringLiteral("Error"));
        QVERIFY2(alert->message().size() > 45, qPrintable(alert->message()));
        ProfileFixture::choose(alert, QStringLiteral("Ok"));
    }

    // The saved password goes under the name the person signs in with, so that remember-me and
    // the fingerprint sign-in keep working once the profile's e-mail address is another one.
    void rememberMeAfterTheProfileEmailChanged()
    {
        m_fixture.reset();
        m_fixture = std::make_unique<ProfileFixture>(/*drawsInterface=*/false, /*withReader=*/true);
        QVERIFY(f().isReady());
        ProfileFixture::Member member = f().makeFreelancer(QStringLiteral("Print"), {});
        MasterProfileViewController *hub = f().openHub(member);
        QVERIFY(hub);
        hub->editButton()->click();
        hub->profileTable()->emailAddressTextField()->setText(QStringLiteral("desk.") + member.user.username);
        QVERIFY(saveAndConfirm(hub));
        PFUser::logOut(); // as the menu's Log Out does

        LoginPageTableViewController *login = f().showLogin();
        QVERIFY(login);
        login->rememberMeSwitch_valueChanged(true);
        login->userNameTextField()->setText(member.user.username);
        login->passwordTextField()->setText(member.user.password);
        login->loginButton()->click();
        QTRY_COMPARE_WITH_TIMEOUT(f().presentedIdentifier(), QStringLiteral("menu"), 20000);
        PFUser::logOut();

        login = f().showLogin();
        QVERIFY(login);
        QTest::qWait(100);
        QVERIFY(!ui::AlertController::alertOnScreen());
        QCOMPARE(login->passwordTextField()->text(), member.user.password);
        login->loginWithBiometricsButton()->click();
        QTRY_COMPARE_WITH_TIMEOUT(f().presentedIdentifier(), QStringLiteral("menu"), 20000);
    }

    void deletionRequestCanBeCancelledOrFlagsNotifiesAndSignsOut()
    {
        ProfileFixture::Member member =
            f().makeFreelancer(QStringLiteral("Print"), {}, {{QStringLiteral("lastName"), QJsonValue::Null}});
        MasterProfileViewController *hub = f().openHub(member);
        QVERIFY(hub);
        const int before = int(TestBackend::readLines(TestBackend::instance().noticeOutbox()).size());
        const QStringList buttons{QStringLiteral("YES DELETE MY PROFILE"), QStringLiteral("cancel")};
        hub->deleteProfileButton()->click();
        ui::AlertController *alert = ProfileFixture::expectAlert(QStringLiteral("Warning"), kDeletionWarning, buttons);
        QVERIFY(alert);
        QCOMPARE(alert->actions().first()->style(), ui::AlertAction::Style::Destructive);
        ProfileFixture::choose(alert, QStringLiteral("cancel"));
        QVERIFY(PFUser::currentUser());
        QVERIFY(ProfileFixture::serverUser(member.user.objectId).value(QStringLiteral("isAuthorised")).toBool());

        hub->deleteProfileButton()->click();
        alert = ProfileFixture::expectAlert(QStringLiteral("Warning"), kDeletionWarning, buttons);
        QList<bool> interaction; // the screen takes nothing while the request is saved
        connect(hub->view(), &ui::View::userInteractionEnabledChanged, this,
                [&interaction, hub] { interaction << hub->view()->isUserInteractionEnabled(); });
        ProfileFixture::choose(alert, QStringLiteral("YES DELETE MY PROFILE"));

        QTRY_VERIFY_WITH_TIMEOUT(hub->presentedViewController(), 20000);
        QCOMPARE(hub->presentedViewController()->storyboardIdentifier(), QStringLiteral("login"));
        QCOMPARE(interaction, (QList<bool>{false, true}));
        QCOMPARE(hub->presentedViewController()->modalPresentationStyle(),
                 ui::ViewController::ModalPresentationStyle::FullScreen);
        QVERIFY(!PFUser::currentUser());
        const QJsonObject user = ProfileFixture::serverUser(member.user.objectId);
        QCOMPARE(user.value(QStringLiteral("isAuthorised")).toBool(true), false);
        QCOMPARE(user.value(QStringLiteral("shouldDeleteAccount")).toBool(), true);

        QList<QJsonObject> notices;
        QTRY_VERIFY_WITH_TIMEOUT(!(notices = noticesAfter(before)).isEmpty(), 10000);
        QJsonObject notice;
        for (const QJsonObject &candidate : std::as_const(notices)) {
            if (candidate.value(QStringLiteral("requestedBy")).toString() == member.user.objectId)
                notice = candidate;
        }
        QVERIFY2(!notice.isEmpty(), QJsonDocument(notices.first()).toJson().constData());
        QCOMPARE(notice.value(QStringLiteral("channel")).toString(), QStringLiteral("email"));
        QCOMPARE(notice.value(QStringLiteral("recipient")).toString(), ProfileFixture::kAdministrator);
        QCOMPARE(notice.value(QStringLiteral("subject")).toString(),
                 QStringLiteral("Delete Freelancer Profile - Vantrel Message"));
        // No last name: both blanks around it stay.
        const QString body = QStringLiteral("There is a new request from Amara  to delete their profile.  Be sure to "
                                            "delete the user and freelancer objects. \n\nPlease delete any messages "
                                            "where to & from user == %1\n\nThe user's email address they used to "
                                            "register was %2")
                                 .arg(member.user.objectId, member.user.username);
        QCOMPARE(notice.value(QStringLiteral("body")).toString(), body);

        // The login page shown now refuses the account.
        auto *loginStack = qobject_cast<ui::NavigationController *>(hub->presentedViewController());
        QVERIFY(loginStack);
        auto *login = qobject_cast<LoginPageTableViewController *>(loginStack->topViewController());
        QVERIFY(login);
        QTRY_COMPARE(login->appearanceState(), ui::ViewController::AppearanceState::Appeared);
        login->userNameTextField()->setText(member.user.username);
        login->passwordTextField()->setText(member.user.password);
        login->loginButton()->click();
        QVERIFY(AccountsFixture::answer(QStringLiteral("Error"), kNotAuthorised));
        QVERIFY(!login->presentedViewController());
    }
};

QTEST_MAIN(TestProfileHub)
#include "tst_profile_hub.moc"
