#pragma once

#include "Control.h"

#include <QColor>
#include <QFont>
#include <QRectF>

namespace ui {

// A text label. Its frame matters where a helper lays it out itself (e.g. a table's
// background text); labels placed by a QML view ignore it.
class Label : public Control {
    Q_OBJECT
    QML_NAMED_ELEMENT(LabelOutlet)
    QML_UNCREATABLE("Outlets are owned by their screen controller")
    Q_PROPERTY(QString text READ text WRITE setText NOTIFY textChanged)
    Q_PROPERTY(QColor textColor READ textColor WRITE setTextColor NOTIFY textColorChanged)
    Q_PROPERTY(QFont font READ font WRITE setFont NOTIFY fontChanged)
    Q_PROPERTY(int numberOfLines READ numberOfLines WRITE setNumberOfLines NOTIFY numberOfLinesChanged)
    Q_PROPERTY(Qt::Alignment textAlignment READ textAlignment WRITE setTextAlignment NOTIFY textAlignmentChanged)
    Q_PROPERTY(QRectF frame READ frame WRITE setFrame NOTIFY frameChanged)

public:
    explicit Label(const QString &name, QObject *parent = nullptr);

    [[nodiscard]] QString text() const { return m_text; }
    void setText(const QString &text);
    [[nodiscard]] QColor textColor() const { return m_textColor; }
    void setTextColor(const QColor &color);
    [[nodiscard]] QFont font() const { return m_font; }
    void setFont(const QFont &font);
    // 0 means as many lines as the text needs.
    [[nodiscard]] int numberOfLines() const { return m_numberOfLines; }
    void setNumberOfLines(int lines);
    [[nodiscard]] Qt::Alignment textAlignment() const { return m_textAlignment; }
    void setTextAlignment(Qt::Alignment alignment);
    [[nodiscard]] QRectF frame() const { return m_frame; }
    void setFrame(const QRectF &frame);

    // Shrinks or grows the frame to the text's size, wrapping at the current width when
    // more than one line is allowed; the origin stays.
    void sizeToFit();

Q_SIGNALS:
    void textChanged();
    void textColorChanged();
    void fontChanged();
    void numberOfLinesChanged();
    void textAlignmentChanged();
    void frameChanged();

private:
    QString m_text;
    QColor m_textColor = Qt::black;
    QFont m_font;
    int m_numberOfLines = 1;
    Qt::Alignment m_textAlignment = Qt::AlignLeft;
    QRectF m_frame;
};

} // namespace ui
