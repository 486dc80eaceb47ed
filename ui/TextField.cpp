#include "TextField.h"

namespace ui {

TextField::TextField(const QString &name, QObject *parent)
    : TextInput(name, parent)
{
}

void TextField::setPlaceholder(const QString &placeholder)
{
    if (m_placeholder == placeholder)
        return;
    m_placeholder = placeholder;
    Q_EMIT placeholderChanged();
}

void TextField::setSecureTextEntry(bool secure)
{
    if (m_secureTextEntry == secure)
        return;
    m_secureTextEntry = secure;
    Q_EMIT secureTextEntryChanged();
}

} // namespace ui
