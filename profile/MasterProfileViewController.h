#pragma once

#include "ActivitySpinner.h"
#include "BarButtonItem.h"
#include "Button.h"
#include "ProfileTableViewController.h"
#include "ViewController.h"

#include <QPointer>
#include <QtQml/qqmlregistration.h>
#include <memory>

class FreelanceCategory;
class Freelancer;
class User;

// The front screen of the signed-in app: the contact details (the embedded table) with the
// buttons around them. It switches the table between reading and editing, saves the user's
// contact keys, the freelancer's role and messaging flag and the photo, leads to the password
// change and files the request to delete the account.
class MasterProfileViewController : public ui::ViewController {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Screen controllers are made in C++")
    Q_PROPERTY(ui::BarButtonItem *editButton READ editButton CONSTANT)
    Q_PROPERTY(ui::BarButtonItem *menuButton READ menuButton CONSTANT)
    Q_PROPERTY(ui::BarButtonItem *saveButton READ saveButton CONSTANT)
    Q_PROPERTY(ui::Button *changePasswordButton READ changePasswordButton CONSTANT)
    Q_PROPERTY(ui::Button *deleteProfileButton READ deleteProfileButton CONSTANT)
    Q_PROPERTY(ActivitySpinner *loadingSpinner READ loadingSpinner CONSTANT)
    Q_PROPERTY(bool loading READ isLoading NOTIFY loadingChanged)

public:
    // The embed segue that captures the contact-details table, and the one to the password change.
    static inline const QString kTableSegue = QStringLiteral("Table");
    static inline const QString kChangePasswordSegue = QStringLiteral("change");

    explicit MasterProfileViewController(QObject *parent = nullptr);
    ~MasterProfileViewController() override;

    [[nodiscard]] ui::BarButtonItem *editButton() const { return m_editButton; }
    [[nodiscard]] ui::BarButtonItem *menuButton() const { return m_menuButton; }
    [[nodiscard]] ui::BarButtonItem *saveButton() const { return m_saveButton; }
    [[nodiscard]] ui::Button *changePasswordButton() const { return m_changePasswordButton; }
    [[nodiscard]] ui::Button *deleteProfileButton() const { return m_deleteProfileButton; }
    [[nodiscard]] ActivitySpinner *loadingSpinner() const { return m_loadingSpinner; }
    [[nodiscard]] ProfileTableViewController *profileTable() const { return m_profileTable; }
    [[nodiscard]] QList<std::shared_ptr<FreelanceCategory>> categories() const { return m_categories; }
    [[nodiscard]] std::shared_ptr<Freelancer> freelancer() const { return m_freelancer; }
    // The freelancer and the categories are still on their way.
    [[nodiscard]] bool isLoading() const { return m_pendingLoads > 0; }

    void prepareForSegue(ui::StoryboardSegue *segue, QObject *sender) override;

public Q_SLOTS:
    void editButton_Click();
    void saveButton_Click();
    void attemptMenuOpen();
    void changePasswordButton_Click();
    void deleteProfileButton_Click();

Q_SIGNALS:
    void loadingChanged();
    // The user's save finished (the alert is on its way).
    void saveFinished(bool succeeded);

protected:
    void viewDidLoad() override;
    void viewWillDisappear(bool animated) override;

private:
    // How one save of both records ends: the first failure, if any.
    struct SaveOutcome {
        int pending = 2;
        QString failure;
    };

    void load(const std::shared_ptr<User> &user);
    void finishLoad();
    // Saving needs the freelancer record and the roles.
    [[nodiscard]] bool canSave() const;
    void updateSaveButtons();
    void offerToLoadAgain();
    void setEditing(bool editing);
    void writeUserKeys(User &user) const;
    void saveFinishedWith(const QString &failure, bool photoChanged);
    void setPhoto(User &user) const;
    void revealToggle();
    void requestDeletion();
    void stopSpinner();

    ui::BarButtonItem *m_editButton;
    ui::BarButtonItem *m_menuButton;
    ui::BarButtonItem *m_saveButton;
    ui::Button *m_changePasswordButton;
    ui::Button *m_deleteProfileButton;
    ActivitySpinner *m_loadingSpinner;
    QPointer<ProfileTableViewController> m_profileTable;
    QList<std::shared_ptr<FreelanceCategory>> m_categories;
    std::shared_ptr<Freelancer> m_freelancer;
    int m_pendingLoads = 0;
    QString m_loadFailure;
};
