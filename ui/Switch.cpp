#include "Switch.h"

namespace ui {

Switch::Switch(const QString &name, QObject *parent)
    : Control(name, parent)
{
}

void Switch::setOn(bool on)
{
    if (m_on == on)
        return;
    m_on = on;
    Q_EMIT onChanged();
}

void Switch::setOn(bool on, bool animated)
{
    Q_UNUSED(animated) // the QML switch animates every change
    setOn(on);
}

void Switch::userToggled(bool on)
{
    if (isHidden() || !isEnabled() || m_on == on)
        return;
    setOn(on);
    Q_EMIT valueChanged(on);
}

} // namespace ui
