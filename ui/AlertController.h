#pragma once

#include "AlertAction.h"
#include "TextField.h"
#include "ViewController.h"

#include <QPointer>

namespace ui {

// An alert (or action sheet): a title, a message, optional text fields and buttons.
// Only one alert is on screen in the whole window at a time; presenting any controller
// while one shows is refused. Choosing a button dismisses the alert, then runs the
// button's handler.
//
// Keys: Return chooses the preferred action, which is never a destructive one; Escape
// chooses the action that backs out (see escapeAction).
class AlertController : public ViewController {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Alerts are made in C++")
    Q_PROPERTY(QString message READ message WRITE setMessage NOTIFY messageChanged)
    Q_PROPERTY(Style preferredStyle READ preferredStyle CONSTANT)
    Q_PROPERTY(QList<ui::AlertAction *> actions READ actions NOTIFY actionsChanged)
    Q_PROPERTY(QList<ui::AlertAction *> orderedActions READ orderedActions NOTIFY actionsChanged)
    Q_PROPERTY(QList<ui::TextField *> textFields READ textFields NOTIFY textFieldsChanged)
    Q_PROPERTY(ui::AlertAction *preferredAction READ preferredAction NOTIFY actionsChanged)

public:
    enum class Style { ActionSheet, Alert };
    Q_ENUM(Style)

    AlertController(const QString &title, const QString &message, Style style, QObject *parent = nullptr);
    static AlertController *alertControllerWithTitle(const QString &title, const QString &message, Style style);

    // The alert on screen now, if any.
    static AlertController *alertOnScreen();

    [[nodiscard]] QString message() const { return m_message; }
    void setMessage(const QString &message);
    [[nodiscard]] Style preferredStyle() const { return m_style; }

    // The alert takes ownership. A second cancel action is refused, as the platform does.
    void addAction(AlertAction *action);
    [[nodiscard]] QList<AlertAction *> actions() const { return m_actions; }
    // The order the buttons are drawn in: with two buttons the cancel one comes first, with
    // more it comes last.
    [[nodiscard]] QList<AlertAction *> orderedActions() const;
    [[nodiscard]] AlertAction *cancelAction() const;
    // The action Return chooses: the one set, else the first of the default style, else the
    // cancel one. Never a destructive action (an alert with only destructive buttons has none).
    [[nodiscard]] AlertAction *preferredAction() const;
    // A destructive action is refused.
    void setPreferredAction(AlertAction *action);
    // The action Escape chooses: the cancel one; without one, the only button, or the only
    // button that is not destructive; otherwise none.
    [[nodiscard]] AlertAction *escapeAction() const;

    void addTextFieldWithConfigurationHandler(const std::function<void(TextField *)> &configure = {});
    [[nodiscard]] QList<TextField *> textFields() const { return m_textFields; }

    // The user chose an action (drawn buttons call this).
    Q_INVOKABLE void choose(ui::AlertAction *action);
    // Return and Escape: choose preferredAction / escapeAction; false when there is none.
    Q_INVOKABLE bool choosePreferred();
    Q_INVOKABLE bool cancel();

Q_SIGNALS:
    void messageChanged();
    void actionsChanged();
    void textFieldsChanged();

protected:
    void viewDidLoad() override;

private:
    friend class ViewController;
    static void setAlertOnScreen(AlertController *alert);
    bool chooseIfAny(AlertAction *action);

    QString m_message;
    Style m_style;
    QList<AlertAction *> m_actions;
    QList<TextField *> m_textFields;
    QPointer<AlertAction> m_preferredAction;
    bool m_choosing = false;
};

} // namespace ui
