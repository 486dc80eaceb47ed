#pragma once

#include "Control.h"
#include "Toolbar.h"

#include <QColor>
#include <QPointer>

namespace ui {

// What text fields and text views share: the text, its colour, the keyboard's Return key,
// an optional toolbar shown above the keyboard, and keyboard focus ("first responder").
// The QML components report what the user does through the user*() methods; the signals
// are what screen controllers connect to.
class TextInput : public Control {
    Q_OBJECT
    QML_NAMED_ELEMENT(TextInputOutlet)
    QML_UNCREATABLE("Outlets are owned by their screen controller")
    Q_PROPERTY(QString text READ text WRITE setText NOTIFY textChanged)
    Q_PROPERTY(QColor textColor READ textColor WRITE setTextColor NOTIFY textColorChanged)
    Q_PROPERTY(bool firstResponder READ isFirstResponder NOTIFY firstResponderChanged)
    Q_PROPERTY(ReturnKeyType returnKeyType READ returnKeyType WRITE setReturnKeyType NOTIFY returnKeyTypeChanged)
    Q_PROPERTY(KeyboardType keyboardType READ keyboardType WRITE setKeyboardType NOTIFY keyboardTypeChanged)
    Q_PROPERTY(ui::Toolbar *inputAccessoryView READ inputAccessoryView WRITE setInputAccessoryView NOTIFY
                   inputAccessoryViewChanged)

public:
    enum class ReturnKeyType { Default, Go, Next, Done, Send, Search };
    Q_ENUM(ReturnKeyType)
    enum class KeyboardType { Default, EmailAddress, PhonePad, NumberPad, URL };
    Q_ENUM(KeyboardType)

    explicit TextInput(const QString &name, QObject *parent = nullptr);
    ~TextInput() override;

    [[nodiscard]] QString text() const { return m_text; }
    void setText(const QString &text);
    [[nodiscard]] QColor textColor() const { return m_textColor; }
    void setTextColor(const QColor &color);
    [[nodiscard]] ReturnKeyType returnKeyType() const { return m_returnKeyType; }
    void setReturnKeyType(ReturnKeyType type);
    [[nodiscard]] KeyboardType keyboardType() const { return m_keyboardType; }
    void setKeyboardType(KeyboardType type);
    [[nodiscard]] Toolbar *inputAccessoryView() const { return m_inputAccessoryView; }
    void setInputAccessoryView(Toolbar *toolbar);

    [[nodiscard]] bool isFirstResponder() const;
    // Takes keyboard focus, taking it away from whichever input held it.
    Q_INVOKABLE bool becomeFirstResponder();
    Q_INVOKABLE bool resignFirstResponder();

    // Called by the QML components for what the user did.
    Q_INVOKABLE void userEditedText(const QString &text);
    Q_INVOKABLE void userPressedReturn();
    Q_INVOKABLE void userFocusChanged(bool focused);

Q_SIGNALS:
    void textChanged();
    void textColorChanged();
    void firstResponderChanged();
    void returnKeyTypeChanged();
    void keyboardTypeChanged();
    void inputAccessoryViewChanged();
    // User actions.
    void editingChanged(const QString &text);
    void editingDidBegin();
    void editingDidEnd();
    void returnPressed();

private:
    QString m_text;
    QColor m_textColor = Qt::black;
    ReturnKeyType m_returnKeyType = ReturnKeyType::Default;
    KeyboardType m_keyboardType = KeyboardType::Default;
    QPointer<Toolbar> m_inputAccessoryView;
};

} // namespace ui
