#include "MenuController.h"

#include "LinkOpener.h"
#include "Message.h"
#include "PFUser.h"
#include "ShellLogging.h"
#include "UrlOpener.h"
#include "UserDefaults.h"
#include "ui/Label.h"
#include "ui/Storyboard.h"
#include "ui/TableView.h"

#include <QPointer>
#include <QStandardItemModel>
#include <array>

namespace {

enum Role { TitleRole = Qt::UserRole + 1, EnabledRole, SegueRole };

struct Row {
    const char *title;
    const char *segue;
};

// The menu's layout: rows 0 to 11 lead to front screens through their segues.
constexpr std::array<Row, MenuController::kRowCount> kRows{{
    {"My Profile", "menuProfile"},
    {"My Location", "menuMap"},
    {"Messages", "menuMessages"},
    {"My Skills", "menuSkills"},
    {"Languages", "menuLanguages"},
    {"Equipment", "menuEquipment"},
    {"Availability", "menuAvailability"},
    {"My CV", "menuCV"},
    {"Work Summary", "menuWorkSummary"},
    {"Work Examples", "menuWorkExamples"},
    {"Social Media", "menuSocialMedia"},
    {"Live Stream", "menuLiveStream"},
    {"Preview Profile", ""},
    {"Contact Us", ""},
    {"Log Out", ""},
}};

const QColor kSystemRed(255, 59, 48);

} // namespace

QString MenuController::segueForRow(int row)
{
    return row >= 0 && row < kRowCount ? QString::fromLatin1(kRows.at(row).segue) : QString();
}

QString MenuController::titleForRow(int row)
{
    return row >= 0 && row < kRowCount ? QString::fromLatin1(kRows.at(row).title) : QString();
}

MenuController::MenuController(MenuSettings settings, QObject *parent)
    : ui::TableViewController(parent), m_settings(std::move(settings)), m_rows(new QStandardItemModel(this)),
      m_versionLabel(new ui::Label(QStringLiteral("versionLabel"), this)),
      m_messageLabel(new ui::Label(QStringLiteral("messageLabel"), this))
{
    setViewUrl(QUrl(QStringLiteral("qrc:/qt/qml/Vantrel/Shell/MenuView.qml")));
    m_rows->setItemRoleNames({{TitleRole, "title"}, {EnabledRole, "rowEnabled"}, {SegueRole, "segue"}});
    for (int row = 0; row < kRowCount; ++row) {
        auto *item = new QStandardItem;
        item->setData(titleForRow(row), TitleRole);
        item->setData(segueForRow(row), SegueRole);
        m_rows->appendRow(item);
    }
    updateRows();
    tableView()->setModel(m_rows);
    m_messageLabel->setText(titleForRow(kMessagesRow));
    m_messageLabel->setTextColor(Qt::white);
    m_versionLabel->setTextColor(Qt::white);
    connect(tableView(), &ui::TableView::rowSelected, this, &MenuController::tableViewDidSelectRowAtIndexPath);
}

void MenuController::setStoryboardSegues(const QStringList &identifiers)
{
    m_storyboardSegues = identifiers;
    updateRows();
}

bool MenuController::isRowEnabled(int row) const
{
    if (row < 0 || row >= kRowCount)
        return false;
    // The profile preview is its own storyboard: the row waits until the app has one.
    if (row == kProfilePreviewRow)
        return ui::Storyboard::hasStoryboard(kProfilePreviewStoryboard);
    const QString segue = segueForRow(row);
    return segue.isEmpty() || m_storyboardSegues.contains(segue);
}

void MenuController::updateRows()
{
    for (int row = 0; row < kRowCount; ++row)
        m_rows->item(row)->setData(isRowEnabled(row), EnabledRole);
}

void MenuController::viewDidLoad()
{
    UserDefaults *defaults = m_settings.userDefaults ? m_settings.userDefaults : UserDefaults::standardUserDefaults();
    const QString version = defaults ? defaults->stringForKey(QStringLiteral("version_number")) : QString();
    m_versionLabel->setText(QStringLiteral("version ") + version + QStringLiteral(" alpha"));
}

void MenuController::viewDidAppear(bool animated)
{
    ui::TableViewController::viewDidAppear(animated);
    refreshUnreadIndicator();
}

void MenuController::refreshUnreadIndicator()
{
    m_messageLabel->setTextColor(Qt::white);
    const quint64 check = ++m_unreadCheck;
    const PFUserPtr user = PFUser::currentUser();
    if (!user) {
        Q_EMIT unreadCheckFinished();
        return;
    }
    PFQuery query = Message::query();
    query.whereKey(QStringLiteral("to"), PFObjectPtr(user))
        .includeKey(QStringLiteral("from"))
        .includeKey(QStringLiteral("to"));
    QPointer<MenuController> self(this);
    query.findObjectsInBackgroundWithBlock([self, check](const QList<PFObjectPtr> &objects, const PFError *error) {
        // A later check (the menu shown again) has the last word.
        if (!self || check != self->m_unreadCheck)
            return;
        if (error) {
            qCInfo(lcMenu).noquote() << "unread check failed:" << error->localizedDescription();
        } else {
            for (const PFObjectPtr &object : objects) {
                if (object && !object->boolForKey(QStringLiteral("hasBeenRead")))
                    self->m_messageLabel->setTextColor(kSystemRed);
            }
        }
        Q_EMIT self->unreadCheckFinished();
    });
}

void MenuController::tableViewDidSelectRowAtIndexPath(int row, int section)
{
    if (section != 0 || !isRowEnabled(row))
        return;
    switch (row) {
    case kProfilePreviewRow:
        presentProfilePreview();
        return;
    case kContactRow:
        openContactPage();
        return;
    case kLogOutRow:
        logOut();
        return;
    default:
        performSegueWithIdentifier(segueForRow(row), this);
        return;
    }
}

void MenuController::presentProfilePreview()
{
    presentFullScreen(kProfilePreviewStoryboard, QStringLiteral("profile"));
}

void MenuController::openContactPage()
{
    UrlOpener *opener = m_settings.urlOpener ? m_settings.urlOpener : UrlOpener::shared();
    if (!LinkOpener::open(m_settings.contactPage, *opener, this))
        qCInfo(lcMenu) << "Something has gone wrong.";
}

void MenuController::logOut()
{
    PFUser::logOut();
    presentFullScreen(QStringLiteral("Registration"), QStringLiteral("login"));
}
