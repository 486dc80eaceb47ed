#pragma once

#include <QByteArray>
#include <QImage>

// Turns a profile photo into what the backend stores: 600 pixels wide, the height following
// the aspect ratio (rounded up), encoded as JPEG at quality 50. A pure function of the image.
class ProfilePhotoEncoder {
public:
    static constexpr int kWidth = 600;
    static constexpr int kQuality = 50;

    // The photo scaled to kWidth; a null image for a null or empty source.
    [[nodiscard]] static QImage scaled(const QImage &photo);
    // The scaled photo as JPEG bytes; empty for a null or empty source.
    [[nodiscard]] static QByteArray encode(const QImage &photo);
};
