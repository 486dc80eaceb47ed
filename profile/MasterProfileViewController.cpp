#include "MasterProfileViewController.h"

#include "AccountServices.h"
#include "AlertController.h"
#include "DeletionNotice.h"
#include "FreelanceCategory.h"
#include "Freelancer.h"
#include "NavigationItem.h"
#include "OneButtonAlert.h"
#include "PFCloud.h"
#include "PFError.h"
#include "PFFileObject.h"
#include "ProfileLogging.h"
#include "ProfilePhotoEncoder.h"
#include "ProfileTableViewController.h"
#include "RecordLookups.h"
#include "RevealViewController.h"
#include "RoleChange.h"
#include "StoryboardSegue.h"
#include "User.h"

namespace {

std::shared_ptr<User> signedInUser()
{
    return std::dynamic_pointer_cast<User>(PFUser::currentUser());
}

} // namespace

MasterProfileViewController::MasterProfileViewController(QObject *parent)
    : ui::ViewController(parent), m_editButton(new ui::BarButtonItem(QStringLiteral("editButton"), this)),
      m_menuButton(new ui::BarButtonItem(QStringLiteral("menuButton"), this)),
      m_saveButton(new ui::BarButtonItem(QStringLiteral("saveButton"), this)),
      m_changePasswordButton(new ui::Button(QStringLiteral("changePasswordButton"), this)),
      m_deleteProfileButton(new ui::Button(QStringLiteral("deleteProfileButton"), this)),
      m_loadingSpinner(new ActivitySpinner(this))
{
    m_editButton->setTitle(QStringLiteral("EDIT"));
    m_saveButton->setTitle(QStringLiteral("Save"));
    m_saveButton->setStyle(ui::BarButtonItem::Style::Done);
    m_menuButton->setTitle(QStringLiteral("\u2630"));
    m_changePasswordButton->setTitle(QStringLiteral("Change Password"));
    m_deleteProfileButton->setTitle(QStringLiteral("Delete Profile"));
    m_deleteProfileButton->setTitleColor(QColor(0xd0, 0x21, 0x2a));
    connect(m_editButton, &ui::BarButtonItem::clicked, this, &MasterProfileViewController::editButton_Click);
    connect(m_saveButton, &ui::BarButtonItem::clicked, this, &MasterProfileViewController::saveButton_Click);
    connect(m_menuButton, &ui::BarButtonItem::clicked, this, &MasterProfileViewController::attemptMenuOpen);
    connect(m_changePasswordButton, &ui::Button::clicked, this,
            &MasterProfileViewController::changePasswordButton_Click);
    connect(m_deleteProfileButton, &ui::Button::clicked, this, &MasterProfileViewController::deleteProfileButton_Click);
    navigationItem()->setLeftBarButtonItem(m_menuButton);
    navigationItem()->setRightBarButtonItem(m_editButton);
    // Nothing can be edited or saved before the records have come, nor saved twice at once.
    m_loadingSpinner->holdWhileSpinning({m_editButton, m_saveButton});
    updateSaveButtons();
}

MasterProfileViewController::~MasterProfileViewController() = default;

void MasterProfileViewController::prepareForSegue(ui::StoryboardSegue *segue, QObject *sender)
{
    ui::ViewController::prepareForSegue(segue, sender);
    if (segue->identifier() == kTableSegue)
        m_profileTable = qobject_cast<ProfileTableViewController *>(segue->destinationViewController());
}

void MasterProfileViewController::viewDidLoad()
{
    ui::ViewController::viewDidLoad();
    setTitle(QStringLiteral("My Profile"));
    navigationItem()->setLargeTitleDisplayMode(ui::NavigationItem::LargeTitleDisplayMode::Never);
    if (!m_profileTable)
        qCWarning(lcProfile) << "the profile screen has no contact-details table";
    if (const std::shared_ptr<User> user = signedInUser())
        load(user);
}

void MasterProfileViewController::load(const std::shared_ptr<User> &user)
{
    if (m_profileTable)
        m_profileTable->showUser(*user);
    m_pendingLoads = 2;
    m_loadFailure.clear();
    Q_EMIT loadingChanged();
    updateSaveButtons();

    QPointer<MasterProfileViewController> self(this);
    freelancerQuery(user).findObjectsInBackgroundWithBlock(
        [self](const QList<PFObjectPtr> &objects, const PFError *error) {
            if (!self)
                return;
            if (error)
                qCWarning(lcProfile) << "the freelancer record could not be loaded:" << error->localizedDescription();
            else if (objects.isEmpty())
                qCWarning(lcProfile) << "the signed-in user has no freelancer record";
            self->m_freelancer = objects.isEmpty() ? nullptr : std::dynamic_pointer_cast<Freelancer>(objects.first());
            if (self->m_freelancer && self->m_profileTable)
                self->m_profileTable->showFreelancer(*self->m_freelancer);
            if (!self->m_freelancer && self->m_loadFailure.isEmpty())
                self->m_loadFailure = error ? error->localizedDescription()
                                            : QStringLiteral("No profile record belongs to this account.");
            self->finishLoad();
        });
    FreelanceCategory::query().findObjectsInBackgroundWithBlock(
        [self](const QList<PFObjectPtr> &objects, const PFError *error) {
            if (!self)
                return;
            if (error) {
                qCWarning(lcProfile) << "the roles could not be loaded:" << error->localizedDescription();
                if (self->m_loadFailure.isEmpty())
                    self->m_loadFailure = error->localizedDescription();
            }
            self->m_categories.clear();
            for (const PFObjectPtr &object : objects) {
                if (auto category = std::dynamic_pointer_cast<FreelanceCategory>(object))
                    self->m_categories.append(category);
            }
            self->finishLoad();
        });
}

void MasterProfileViewController::finishLoad()
{
    if (m_pendingLoads == 0 || --m_pendingLoads > 0)
        return;
    Q_EMIT loadingChanged();
    updateSaveButtons();
    if (!canSave())
        offerToLoadAgain();
}

bool MasterProfileViewController::canSave() const
{
    return m_pendingLoads == 0 && m_freelancer && !m_categories.isEmpty();
}

void MasterProfileViewController::updateSaveButtons()
{
    const bool enabled = canSave() && !m_loadingSpinner->isSpinning();
    m_editButton->setEnabled(enabled);
    m_saveButton->setEnabled(enabled);
}

void MasterProfileViewController::offerToLoadAgain()
{
    qCWarning(lcProfile) << "the profile cannot be edited:" << m_loadFailure;
    auto *alert = ui::AlertController::alertControllerWithTitle(
        QStringLiteral("Error"),
        QStringLiteral("Your profile could not be loaded, so it cannot be changed at the moment.\n\n") +
            m_loadFailure,
        ui::AlertController::Style::Alert);
    QPointer<MasterProfileViewController> self(this);
    alert->addAction(ui::AlertAction::actionWithTitle(QStringLiteral("Try Again"), ui::AlertAction::Style::Default,
                                                      [self](ui::AlertAction *) {
                                                          if (const std::shared_ptr<User> user = signedInUser();
                                                              self && user)
                                                              self->load(user);
                                                      }));
    alert->addAction(ui::AlertAction::actionWithTitle(QStringLiteral("Cancel"), ui::AlertAction::Style::Cancel));
    presentViewController(alert, true);
    if (!alert->parent())
        delete alert;
}

void MasterProfileViewController::setEditing(bool editing)
{
    if (m_profileTable) {
        m_profileTable->setTableEditing(editing);
        if (editing)
            m_profileTable->firstNameTextField()->becomeFirstResponder();
    }
    m_editButton->setTitle(editing ? QStringLiteral("SAVE") : QStringLiteral("EDIT"));
}

void MasterProfileViewController::editButton_Click()
{
    // While editing the button reads "SAVE", and saves.
    if (m_profileTable && m_profileTable->isTableEditing())
        saveButton_Click();
    else
        setEditing(true);
}

void MasterProfileViewController::saveButton_Click()
{
    if (m_loadingSpinner->isSpinning())
        return;
    m_loadingSpinner->show(view(), QStringLiteral("Saving\u2026"));
    if (!m_profileTable || !m_profileTable->isTableEditing()) {
        OneButtonAlert::show(this, QStringLiteral("Admin"),
                             QStringLiteral("There are no changes to save at this moment"), QStringLiteral("Ok"));
        stopSpinner();
        return;
    }
    const auto category = RoleChange::categoryForRole(m_categories, m_profileTable->roleTextField()->text());
    if (!m_profileTable->isFormValid() || !category) {
        // clang-format off
        OneButtonAlert::show(this, QStringLiteral("Admin"), QStringLiteral("Please check the form as one or more of its contents are not valid.  We require each field to be populated and a valid email address.  The details HAVE NOT Saved."), QStringLiteral("Ok"));
        // clang-format on
        stopSpinner();
        return;
    }
    const std::shared_ptr<User> user = signedInUser();
    if (!user || !m_freelancer) {
        qCWarning(lcProfile) << "nobody is signed in, or the profile record has not come; nothing was saved";
        stopSpinner();
        return;
    }
    writeUserKeys(*user);
    RoleChange::apply(*m_freelancer, category);
    m_freelancer->setIsWhatsApp(m_profileTable->whatsAppSwitch()->isOn());
    // An unchanged photo stays as it is stored: no second encoding, no new file.
    const bool photoChanged = m_profileTable->hasPhotoChanged();
    if (photoChanged)
        setPhoto(*user);

    // Both records must be saved before the screen says so.
    QPointer<MasterProfileViewController> self(this);
    auto outcome = std::make_shared<SaveOutcome>();
    const auto finished = [self, outcome, photoChanged](const QString &record, bool succeeded, const PFError *error) {
        if (!succeeded && outcome->failure.isNull()) {
            outcome->failure = error ? error->localizedDescription() : QStringLiteral("The server did not answer.");
            qCWarning(lcProfile).noquote() << "the" << record << "was not saved:" << outcome->failure;
        }
        if (--outcome->pending > 0 || !self)
            return;
        self->saveFinishedWith(outcome->failure, photoChanged);
    };
    m_freelancer->saveInBackgroundWithBlock(
        [finished](bool succeeded, const PFError *error) { finished(QStringLiteral("profile record"), succeeded, error); });
    user->saveInBackgroundWithBlock(
        [finished](bool succeeded, const PFError *error) { finished(QStringLiteral("contact details"), succeeded, error); });
    setEditing(false);
}

void MasterProfileViewController::saveFinishedWith(const QString &failure, bool photoChanged)
{
    const bool succeeded = failure.isNull();
    if (succeeded) {
        if (photoChanged && m_profileTable)
            m_profileTable->setHasPhotoChanged(false);
        OneButtonAlert::show(this, QStringLiteral("Success"), QStringLiteral("Changes Saved"), QStringLiteral("Ok"));
    } else {
        OneButtonAlert::show(this, QStringLiteral("Error"),
                             QStringLiteral("Sorry it appears something has gone wrong\n\n") + failure,
                             QStringLiteral("Ok"));
    }
    stopSpinner();
    Q_EMIT saveFinished(succeeded);
}

void MasterProfileViewController::writeUserKeys(User &user) const
{
    user.setFirstName(m_profileTable->firstNameTextField()->text().trimmed());
    user.setLastName(m_profileTable->lastNameTextField()->text().trimmed());
    user.setPosition(m_profileTable->positionTextField()->text());
    user.setWorkEmail(m_profileTable->emailAddressTextField()->text());
    user.setMobileTelephoneNumber(m_profileTable->mobileTelephoneNumberTextField()->text());
    user.setMobileCountryCode(m_profileTable->countryCodeTextField()->text());
    user.setOfficeTelephoneNumber(m_profileTable->workTelephoneNumberTextField()->text());
    user.setOfficeCountryCode(m_profileTable->workCountryCodeTextField()->text());
}

void MasterProfileViewController::setPhoto(User &user) const
{
    const QImage photo = m_profileTable ? m_profileTable->profilePictureView()->image() : QImage();
    const QByteArray jpeg = ProfilePhotoEncoder::encode(photo);
    if (jpeg.isEmpty()) {
        qCInfo(lcProfile) << "no photo to store";
        return;
    }
    user.setProfilePicture(PFFileObject::fileObjectWithData(jpeg));
}

void MasterProfileViewController::viewWillDisappear(bool animated)
{
    ui::ViewController::viewWillDisappear(animated);
    if (!m_profileTable || !m_profileTable->hasPhotoChanged())
        return;
    if (const std::shared_ptr<User> user = signedInUser()) {
        setPhoto(*user);
        user->saveInBackgroundWithBlock([](bool succeeded, const PFError *error) {
            if (!succeeded)
                qCWarning(lcProfile) << "the new photo was not saved:"
                                     << (error ? error->localizedDescription() : QString());
        });
    }
    m_profileTable->setHasPhotoChanged(false);
}

void MasterProfileViewController::attemptMenuOpen()
{
    if (!m_profileTable || !m_profileTable->isTableEditing()) {
        revealToggle();
        return;
    }
    qCInfo(lcProfile) << "table is editing at the mo";
    // clang-format off
    auto *alert = ui::AlertController::alertControllerWithTitle(QStringLiteral("Warning"), QStringLiteral("You are currently editing and may changed some of the values.  Press exit to leave without saving or press SAVE to ensure you dont loose any changes."), ui::AlertController::Style::Alert);
    // clang-format on
    QPointer<MasterProfileViewController> self(this);
    alert->addAction(ui::AlertAction::actionWithTitle(QStringLiteral("Exit"), ui::AlertAction::Style::Destructive,
                                                      [self](ui::AlertAction *) {
                                                          if (self)
                                                              self->revealToggle();
                                                      }));
    alert->addAction(ui::AlertAction::actionWithTitle(QStringLiteral("CANCEL"), ui::AlertAction::Style::Default));
    presentViewController(alert, true);
    if (!alert->parent())
        delete alert;
}

void MasterProfileViewController::revealToggle()
{
    if (auto *reveal = qobject_cast<RevealViewController *>(revealViewController()))
        reveal->revealToggle(m_menuButton);
}

void MasterProfileViewController::changePasswordButton_Click()
{
    if (PFUser::currentUser())
        performSegueWithIdentifier(kChangePasswordSegue, this);
}

void MasterProfileViewController::deleteProfileButton_Click()
{
    // clang-format off
    auto *alert = ui::AlertController::alertControllerWithTitle(QStringLiteral("Warning"), QStringLiteral("You have pressed delete profile. You will be locked out of your account.  Our admin team will be advised to completely remove your profile and data.  This is ireversible. Do you want to proceed?"), ui::AlertController::Style::Alert);
    // clang-format on
    QPointer<MasterProfileViewController> self(this);
    alert->addAction(ui::AlertAction::actionWithTitle(QStringLiteral("YES DELETE MY PROFILE"),
                                                      ui::AlertAction::Style::Destructive, [self](ui::AlertAction *) {
                                                          if (self)
                                                              self->requestDeletion();
                                                      }));
    alert->addAction(ui::AlertAction::actionWithTitle(QStringLiteral("cancel"), ui::AlertAction::Style::Default));
    presentViewController(alert, true);
    if (!alert->parent())
        delete alert;
}

void MasterProfileViewController::requestDeletion()
{
    const std::shared_ptr<User> user = signedInUser();
    if (!user)
        return;
    user->setIsAuthorised(false);
    user->setShouldDeleteAccount(true);
    PFCloud::callFunctionInBackground(DeletionNotice::functionName(),
                                      DeletionNotice::parameters(*user, AccountServices::current().administratorEmail),
                                      [](const QVariant &result, const PFError *error) {
                                          if (error)
                                              qCWarning(lcProfile) << "the deletion notice was not sent:"
                                                                   << error->localizedDescription();
                                          else
                                              qCInfo(lcProfile) << "the deletion notice was sent:" << result.toString();
                                      });

    // The screen takes nothing else until the request is saved.
    view()->setUserInteractionEnabled(false);
    m_loadingSpinner->show(view());
    QPointer<MasterProfileViewController> self(this);
    user->saveInBackgroundWithBlock([self](bool succeeded, const PFError *error) {
        if (!self)
            return;
        self->stopSpinner();
        self->view()->setUserInteractionEnabled(true);
        if (!succeeded) {
            qCWarning(lcProfile) << "the deletion request was not saved:"
                                 << (error ? error->localizedDescription() : QString());
            return;
        }
        PFUser::logOut();
        self->presentFullScreen(QStringLiteral("Registration"), QStringLiteral("login"));
    });
}

void MasterProfileViewController::stopSpinner()
{
    m_loadingSpinner->actInd()->stopAnimating();
    updateSaveButtons();
}
