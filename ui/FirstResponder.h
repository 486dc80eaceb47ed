#pragma once

#include "TextInput.h"

#include <QObject>
#include <QPointer>
#include <QtQml/qqmlregistration.h>

class QQmlEngine;
class QJSEngine;

namespace ui {

// The one text input that holds keyboard focus in the window, if any. The window draws the
// focused input's keyboard toolbar from here.
class FirstResponder : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    Q_PROPERTY(ui::TextInput *current READ current NOTIFY currentChanged)

public:
    static FirstResponder *instance();
    static FirstResponder *create(QQmlEngine *, QJSEngine *);

    [[nodiscard]] TextInput *current() const { return m_current; }
    void setCurrent(TextInput *input);

Q_SIGNALS:
    void currentChanged();

private:
    FirstResponder() = default;
    QPointer<TextInput> m_current;
};

} // namespace ui
