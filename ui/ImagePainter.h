#pragma once

#include <QImage>
#include <QQuickPaintedItem>
#include <QtQml/qqmlregistration.h>

namespace ui {

// Draws an in-memory image (which QML's Image cannot show) scaled to fit or to fill.
class ImagePainter : public QQuickPaintedItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QImage image READ image WRITE setImage NOTIFY imageChanged)
    Q_PROPERTY(bool fill READ fill WRITE setFill NOTIFY fillChanged)
    Q_PROPERTY(qreal radius READ radius WRITE setRadius NOTIFY radiusChanged)

public:
    explicit ImagePainter(QQuickItem *parent = nullptr);

    [[nodiscard]] QImage image() const { return m_image; }
    void setImage(const QImage &image);
    // True: cover the item, cropping; false: fit inside it.
    [[nodiscard]] bool fill() const { return m_fill; }
    void setFill(bool fill);

    // Rounds the corners of the drawn area.
    [[nodiscard]] qreal radius() const { return m_radius; }
    void setRadius(qreal radius);

    void paint(QPainter *painter) override;

Q_SIGNALS:
    void imageChanged();
    void fillChanged();
    void radiusChanged();

private:
    QImage m_image;
    bool m_fill = false;
    qreal m_radius = 0;
};

} // namespace ui
