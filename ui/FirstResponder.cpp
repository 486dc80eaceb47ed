#include "FirstResponder.h"

#include "TextInput.h"

#include <QQmlEngine>

namespace ui {

FirstResponder *FirstResponder::instance()
{
    static FirstResponder *responder = new FirstResponder;
    return responder;
}

FirstResponder *FirstResponder::create(QQmlEngine *, QJSEngine *)
{
    auto *responder = instance();
    QQmlEngine::setObjectOwnership(responder, QQmlEngine::CppOwnership);
    return responder;
}

void FirstResponder::setCurrent(TextInput *input)
{
    if (m_current == input)
        return;
    TextInput *previous = m_current;
    m_current = input;
    if (previous)
        Q_EMIT previous->firstResponderChanged();
    if (input)
        Q_EMIT input->firstResponderChanged();
    Q_EMIT currentChanged();
}

} // namespace ui
