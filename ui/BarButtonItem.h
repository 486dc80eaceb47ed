#pragma once

#include "Control.h"

#include <QUrl>

namespace ui {

// A button in a navigation bar or toolbar, or a flexible space between such buttons.
class BarButtonItem : public Control {
    Q_OBJECT
    QML_NAMED_ELEMENT(BarButtonItemOutlet)
    QML_UNCREATABLE("Outlets are owned by their screen controller")
    Q_PROPERTY(QString title READ title WRITE setTitle NOTIFY titleChanged)
    Q_PROPERTY(QUrl image READ image WRITE setImage NOTIFY imageChanged)
    Q_PROPERTY(Style style READ style WRITE setStyle NOTIFY styleChanged)
    Q_PROPERTY(bool flexibleSpace READ isFlexibleSpace CONSTANT)

public:
    enum class Style { Plain, Done };
    Q_ENUM(Style)

    explicit BarButtonItem(const QString &name, QObject *parent = nullptr);
    // A space that takes the free width of a toolbar.
    static BarButtonItem *flexibleSpace(QObject *parent);

    [[nodiscard]] QString title() const { return m_title; }
    void setTitle(const QString &title);
    [[nodiscard]] QUrl image() const { return m_image; }
    void setImage(const QUrl &image);
    [[nodiscard]] Style style() const { return m_style; }
    void setStyle(Style style);
    [[nodiscard]] bool isFlexibleSpace() const { return m_flexibleSpace; }

    Q_INVOKABLE void click();

Q_SIGNALS:
    void titleChanged();
    void imageChanged();
    void styleChanged();
    void clicked();

private:
    QString m_title;
    QUrl m_image;
    Style m_style = Style::Plain;
    bool m_flexibleSpace = false;
};

} // namespace ui
