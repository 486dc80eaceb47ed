#pragma once

#include "TextInput.h"

namespace ui {

// A multi-line text area; read-only when not editable.
class TextView : public TextInput {
    Q_OBJECT
    QML_NAMED_ELEMENT(TextViewOutlet)
    QML_UNCREATABLE("Outlets are owned by their screen controller")
    Q_PROPERTY(bool editable READ isEditable WRITE setEditable NOTIFY editableChanged)

public:
    explicit TextView(const QString &name, QObject *parent = nullptr);

    [[nodiscard]] bool isEditable() const { return m_editable; }
    void setEditable(bool editable);

Q_SIGNALS:
    void editableChanged();

private:
    bool m_editable = true;
};

} // namespace ui
