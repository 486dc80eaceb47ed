#include "Label.h"

#include <QFontMetricsF>
#include <QStringList>

#include <cmath>

namespace ui {

Label::Label(const QString &name, QObject *parent)
    : Control(name, parent)
{
}

void Label::setText(const QString &text)
{
    if (m_text == text)
        return;
    m_text = text;
    Q_EMIT textChanged();
}

void Label::setTextColor(const QColor &color)
{
    if (m_textColor == color)
        return;
    m_textColor = color;
    Q_EMIT textColorChanged();
}

void Label::setFont(const QFont &font)
{
    if (m_font == font)
        return;
    m_font = font;
    Q_EMIT fontChanged();
}

void Label::setNumberOfLines(int lines)
{
    if (m_numberOfLines == lines)
        return;
    m_numberOfLines = lines;
    Q_EMIT numberOfLinesChanged();
}

void Label::setTextAlignment(Qt::Alignment alignment)
{
    if (m_textAlignment == alignment)
        return;
    m_textAlignment = alignment;
    Q_EMIT textAlignmentChanged();
}

void Label::setFrame(const QRectF &frame)
{
    if (m_frame == frame)
        return;
    m_frame = frame;
    Q_EMIT frameChanged();
}

void Label::sizeToFit()
{
    const QFontMetricsF metrics(m_font);
    QSizeF size;
    if (m_numberOfLines == 1) {
        size = QSizeF(metrics.horizontalAdvance(m_text), metrics.height());
    } else {
        const qreal width = m_frame.width() > 0 ? m_frame.width() : 1e6;
        const QRectF bounds = metrics.boundingRect(QRectF(0, 0, width, 1e6),
                                                   Qt::TextWordWrap | int(m_textAlignment), m_text);
        size = bounds.size();
        if (m_numberOfLines > 1)
            size.setHeight(std::min(size.height(), m_numberOfLines * metrics.lineSpacing()));
    }
    setFrame(QRectF(m_frame.topLeft(), QSizeF(std::ceil(size.width()), std::ceil(size.height()))));
}

} // namespace ui
