#include "ProfilePhotoReader.h"

#include <QFileInfo>
#include <QImageReader>

ProfilePhotoReader::Result ProfilePhotoReader::read(const QString &path)
{
    const QFileInfo file(path);
    if (!file.isFile() || !file.isReadable())
        return {{}, QStringLiteral("The file cannot be read.")};

    QImageReader reader(path);
    reader.setAutoTransform(true);
    if (!reader.canRead())
        return {{}, QStringLiteral("The file is not a picture.")};

    QSize size = reader.size();
    if (size.isValid() && reader.transformation().testFlag(QImageIOHandler::TransformationRotate90))
        size.transpose();
    if (size.isValid() && size.height() > qint64(size.width()) * kMaximumTallness)
        return {{}, QStringLiteral("The picture is too narrow for a photo.")};
    if (size.isValid() && (size.width() > kMaximumSide || size.height() > kMaximumSide)) {
        QSize target = size.scaled(kMaximumSide, kMaximumSide, Qt::KeepAspectRatio);
        if (reader.transformation().testFlag(QImageIOHandler::TransformationRotate90))
            target.transpose();
        reader.setScaledSize(target.expandedTo(QSize(1, 1)));
    }

    QImage image = reader.read();
    if (image.isNull())
        return {{}, reader.errorString()};
    return {image, {}};
}
