#include "Control.h"

namespace ui {

Control::Control(const QString &name, QObject *parent)
    : QObject(parent)
{
    setObjectName(name);
}

void Control::setHidden(bool hidden)
{
    if (m_hidden == hidden)
        return;
    m_hidden = hidden;
    Q_EMIT hiddenChanged();
}

void Control::setEnabled(bool enabled)
{
    if (m_enabled == enabled)
        return;
    m_enabled = enabled;
    Q_EMIT enabledChanged();
}

void Control::setTag(int tag)
{
    if (m_tag == tag)
        return;
    m_tag = tag;
    Q_EMIT tagChanged();
}

void Control::setAlpha(qreal alpha)
{
    if (qFuzzyCompare(m_alpha, alpha))
        return;
    m_alpha = alpha;
    Q_EMIT alphaChanged();
}

} // namespace ui
