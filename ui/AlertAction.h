#pragma once

#include <QObject>
#include <QtQml/qqmlregistration.h>

#include <functional>

namespace ui {

// One button of an alert and what it does once the alert has gone.
class AlertAction : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Alert actions are made in C++")
    Q_PROPERTY(QString title READ title CONSTANT)
    Q_PROPERTY(Style style READ style CONSTANT)
    Q_PROPERTY(bool enabled READ isEnabled WRITE setEnabled NOTIFY enabledChanged)

public:
    enum class Style { Default, Cancel, Destructive };
    Q_ENUM(Style)
    using Handler = std::function<void(AlertAction *)>;

    AlertAction(const QString &title, Style style, Handler handler = {}, QObject *parent = nullptr);
    static AlertAction *actionWithTitle(const QString &title, Style style, Handler handler = {});

    [[nodiscard]] QString title() const { return m_title; }
    [[nodiscard]] Style style() const { return m_style; }
    [[nodiscard]] bool isEnabled() const { return m_enabled; }
    void setEnabled(bool enabled);

    // Runs the handler, if there is one.
    void run();

Q_SIGNALS:
    void enabledChanged();

private:
    QString m_title;
    Style m_style;
    Handler m_handler;
    bool m_enabled = true;
};

} // namespace ui
