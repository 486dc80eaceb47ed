#pragma once

#include "TextInput.h"

namespace ui {

// A one-line text field.
class TextField : public TextInput {
    Q_OBJECT
    QML_NAMED_ELEMENT(TextFieldOutlet)
    QML_UNCREATABLE("Outlets are owned by their screen controller")
    Q_PROPERTY(QString placeholder READ placeholder WRITE setPlaceholder NOTIFY placeholderChanged)
    Q_PROPERTY(bool secureTextEntry READ isSecureTextEntry WRITE setSecureTextEntry NOTIFY secureTextEntryChanged)

public:
    explicit TextField(const QString &name, QObject *parent = nullptr);

    [[nodiscard]] QString placeholder() const { return m_placeholder; }
    void setPlaceholder(const QString &placeholder);
    [[nodiscard]] bool isSecureTextEntry() const { return m_secureTextEntry; }
    void setSecureTextEntry(bool secure);

Q_SIGNALS:
    void placeholderChanged();
    void secureTextEntryChanged();

private:
    QString m_placeholder;
    bool m_secureTextEntry = false;
};

} // namespace ui
