#include "TextInput.h"

#include "FirstResponder.h"
#include "Toolbar.h"

namespace ui {

TextInput::TextInput(const QString &name, QObject *parent)
    : Control(name, parent)
{
}

TextInput::~TextInput()
{
    if (FirstResponder::instance()->current() == this)
        FirstResponder::instance()->setCurrent(nullptr);
}

void TextInput::setText(const QString &text)
{
    if (m_text == text)
        return;
    m_text = text;
    Q_EMIT textChanged();
}

void TextInput::setTextColor(const QColor &color)
{
    if (m_textColor == color)
        return;
    m_textColor = color;
    Q_EMIT textColorChanged();
}

void TextInput::setReturnKeyType(ReturnKeyType type)
{
    if (m_returnKeyType == type)
        return;
    m_returnKeyType = type;
    Q_EMIT returnKeyTypeChanged();
}

void TextInput::setKeyboardType(KeyboardType type)
{
    if (m_keyboardType == type)
        return;
    m_keyboardType = type;
    Q_EMIT keyboardTypeChanged();
}

void TextInput::setInputAccessoryView(Toolbar *toolbar)
{
    if (m_inputAccessoryView == toolbar)
        return;
    m_inputAccessoryView = toolbar;
    Q_EMIT inputAccessoryViewChanged();
}

bool TextInput::isFirstResponder() const
{
    return FirstResponder::instance()->current() == this;
}

bool TextInput::becomeFirstResponder()
{
    if (isHidden() || !isEnabled())
        return false;
    if (isFirstResponder())
        return true;
    if (TextInput *previous = FirstResponder::instance()->current())
        previous->resignFirstResponder();
    FirstResponder::instance()->setCurrent(this);
    Q_EMIT editingDidBegin();
    return true;
}

bool TextInput::resignFirstResponder()
{
    if (!isFirstResponder())
        return true;
    FirstResponder::instance()->setCurrent(nullptr);
    Q_EMIT editingDidEnd();
    return true;
}

void TextInput::userEditedText(const QString &text)
{
    if (m_text == text)
        return;
    setText(text);
    Q_EMIT editingChanged(text);
}

void TextInput::userPressedReturn()
{
    Q_EMIT returnPressed();
}

void TextInput::userFocusChanged(bool focused)
{
    if (focused)
        becomeFirstResponder();
    else
        resignFirstResponder();
}

} // namespace ui
