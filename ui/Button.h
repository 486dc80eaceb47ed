#pragma once

#include "Control.h"

#include <QColor>
#include <QUrl>

namespace ui {

// A push button. QML calls click() when the user taps it; controllers connect to clicked().
class Button : public Control {
    Q_OBJECT
    QML_NAMED_ELEMENT(ButtonOutlet)
    QML_UNCREATABLE("Outlets are owned by their screen controller")
    Q_PROPERTY(QString title READ title WRITE setTitle NOTIFY titleChanged)
    Q_PROPERTY(QColor titleColor READ titleColor WRITE setTitleColor NOTIFY titleColorChanged)
    Q_PROPERTY(QColor backgroundColor READ backgroundColor WRITE setBackgroundColor NOTIFY backgroundColorChanged)
    Q_PROPERTY(QUrl image READ image WRITE setImage NOTIFY imageChanged)
    Q_PROPERTY(qreal cornerRadius READ cornerRadius WRITE setCornerRadius NOTIFY cornerRadiusChanged)
    Q_PROPERTY(Qt::Alignment contentHorizontalAlignment READ contentHorizontalAlignment WRITE
                   setContentHorizontalAlignment NOTIFY contentHorizontalAlignmentChanged)
    Q_PROPERTY(bool selected READ isSelected WRITE setSelected NOTIFY selectedChanged)

public:
    explicit Button(const QString &name, QObject *parent = nullptr);

    [[nodiscard]] QString title() const { return m_title; }
    void setTitle(const QString &title);
    [[nodiscard]] QColor titleColor() const { return m_titleColor; }
    void setTitleColor(const QColor &color);
    [[nodiscard]] QColor backgroundColor() const { return m_backgroundColor; }
    void setBackgroundColor(const QColor &color);
    [[nodiscard]] QUrl image() const { return m_image; }
    void setImage(const QUrl &image);
    [[nodiscard]] qreal cornerRadius() const { return m_cornerRadius; }
    void setCornerRadius(qreal radius);
    [[nodiscard]] Qt::Alignment contentHorizontalAlignment() const { return m_contentHorizontalAlignment; }
    void setContentHorizontalAlignment(Qt::Alignment alignment);
    [[nodiscard]] bool isSelected() const { return m_selected; }
    void setSelected(bool selected);

    // The user tapped the button; ignored while it is hidden or disabled.
    Q_INVOKABLE void click();

Q_SIGNALS:
    void titleChanged();
    void titleColorChanged();
    void backgroundColorChanged();
    void imageChanged();
    void cornerRadiusChanged();
    void contentHorizontalAlignmentChanged();
    void selectedChanged();
    void clicked();

private:
    QString m_title;
    QColor m_titleColor = Qt::transparent;      // transparent: the theme's accent colour
    QColor m_backgroundColor = Qt::transparent; // transparent: no background
    QUrl m_image;
    qreal m_cornerRadius = 0;
    Qt::Alignment m_contentHorizontalAlignment = Qt::AlignHCenter;
    bool m_selected = false;
};

} // namespace ui
