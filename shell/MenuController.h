#pragma once

#include "MenuSettings.h"
#include "ui/TableViewController.h"

#include <QStringList>
#include <QtQml/qqmlregistration.h>

Q_MOC_INCLUDE("ui/Label.h")

class QStandardItemModel;
namespace ui {
class Label;
}

// The side menu, the rear screen of the reveal container: fifteen rows (the front screens,
// then the profile preview, the contact page and log out), the version line, and a messages
// label that turns red while the signed-in user has an unread received message.
class MenuController : public ui::TableViewController {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Made by the storyboard")
    Q_PROPERTY(ui::Label *versionLabel READ versionLabel CONSTANT)
    Q_PROPERTY(ui::Label *messageLabel READ messageLabel CONSTANT)
    Q_PROPERTY(int messagesRow READ messagesRow CONSTANT)

public:
    static constexpr int kRowCount = 15;
    static constexpr int kMessagesRow = 2;
    static constexpr int kProfilePreviewRow = 12;
    static inline const QString kProfilePreviewStoryboard = QStringLiteral("ProfilePreview");
    static constexpr int kContactRow = 13;
    static constexpr int kLogOutRow = 14;

    // The storyboard segue that row 0 to 11 performs (empty for the rows handled in code).
    [[nodiscard]] static QString segueForRow(int row);
    [[nodiscard]] static QString titleForRow(int row);

    explicit MenuController(MenuSettings settings = {}, QObject *parent = nullptr);

    // The segues the menu's scene defines: rows whose segue is missing are shown disabled.
    void setStoryboardSegues(const QStringList &identifiers);
    [[nodiscard]] bool isRowEnabled(int row) const;

    [[nodiscard]] ui::Label *versionLabel() const { return m_versionLabel; }
    [[nodiscard]] ui::Label *messageLabel() const { return m_messageLabel; }
    [[nodiscard]] int messagesRow() const { return kMessagesRow; }

    // Sets the messages label white, then red if an unread received message exists.
    void refreshUnreadIndicator();

public Q_SLOTS:
    void tableViewDidSelectRowAtIndexPath(int row, int section = 0);

Q_SIGNALS:
    // The unread check answered (or failed); the label has its final colour.
    void unreadCheckFinished();

protected:
    void viewDidLoad() override;
    void viewDidAppear(bool animated) override;

private:
    void updateRows();
    void presentProfilePreview();
    void openContactPage();
    void logOut();

    MenuSettings m_settings;
    QStringList m_storyboardSegues;
    QStandardItemModel *m_rows;
    ui::Label *m_versionLabel;
    ui::Label *m_messageLabel;
    quint64 m_unreadCheck = 0;
};
