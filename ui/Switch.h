#pragma once

#include "Control.h"

namespace ui {

// An on/off switch. valueChanged() reports only the user's changes, not the controller's.
class Switch : public Control {
    Q_OBJECT
    QML_NAMED_ELEMENT(SwitchOutlet)
    QML_UNCREATABLE("Outlets are owned by their screen controller")
    Q_PROPERTY(bool on READ isOn WRITE setOn NOTIFY onChanged)

public:
    explicit Switch(const QString &name, QObject *parent = nullptr);

    [[nodiscard]] bool isOn() const { return m_on; }
    void setOn(bool on);
    void setOn(bool on, bool animated);

    Q_INVOKABLE void userToggled(bool on);

Q_SIGNALS:
    void onChanged();
    void valueChanged(bool on);

private:
    bool m_on = false;
};

} // namespace ui
