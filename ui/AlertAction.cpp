#include "AlertAction.h"

namespace ui {

AlertAction::AlertAction(const QString &title, Style style, Handler handler, QObject *parent)
    : QObject(parent)
    , m_title(title)
    , m_style(style)
    , m_handler(std::move(handler))
{
}

AlertAction *AlertAction::actionWithTitle(const QString &title, Style style, Handler handler)
{
    return new AlertAction(title, style, std::move(handler));
}

void AlertAction::setEnabled(bool enabled)
{
    if (m_enabled == enabled)
        return;
    m_enabled = enabled;
    Q_EMIT enabledChanged();
}

void AlertAction::run()
{
    if (m_handler)
        m_handler(this);
}

} // namespace ui
