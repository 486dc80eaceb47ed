#pragma once

#include "Control.h"

#include <QImage>
#include <QUrl>

namespace ui {

// An image shown from a file or resource URL, or from an image held in memory (a picked or
// downloaded picture). The in-memory image wins when both are set.
class ImageView : public Control {
    Q_OBJECT
    QML_NAMED_ELEMENT(ImageViewOutlet)
    QML_UNCREATABLE("Outlets are owned by their screen controller")
    Q_PROPERTY(QUrl source READ source WRITE setSource NOTIFY sourceChanged)
    Q_PROPERTY(QImage image READ image WRITE setImage NOTIFY imageChanged)
    Q_PROPERTY(bool hasImage READ hasImage NOTIFY imageChanged)
    Q_PROPERTY(qreal cornerRadius READ cornerRadius WRITE setCornerRadius NOTIFY cornerRadiusChanged)

public:
    explicit ImageView(const QString &name, QObject *parent = nullptr);

    [[nodiscard]] QUrl source() const { return m_source; }
    void setSource(const QUrl &source);
    [[nodiscard]] QImage image() const { return m_image; }
    void setImage(const QImage &image);
    [[nodiscard]] bool hasImage() const { return !m_image.isNull(); }
    [[nodiscard]] qreal cornerRadius() const { return m_cornerRadius; }
    void setCornerRadius(qreal radius);

Q_SIGNALS:
    void sourceChanged();
    void imageChanged();
    void cornerRadiusChanged();

private:
    QUrl m_source;
    QImage m_image;
    qreal m_cornerRadius = 0;
};

} // namespace ui
