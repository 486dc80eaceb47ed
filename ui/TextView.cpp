#include "TextView.h"

namespace ui {

TextView::TextView(const QString &name, QObject *parent)
    : TextInput(name, parent)
{
}

void TextView::setEditable(bool editable)
{
    if (m_editable == editable)
        return;
    m_editable = editable;
    Q_EMIT editableChanged();
}

} // namespace ui
