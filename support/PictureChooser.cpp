#include "PictureChooser.h"

#include "FilePickerSheet.h"
#include "PortalFileChooser.h"
#include "ViewController.h"

#include <QImageReader>

namespace {
const QString kTitle = QStringLiteral("Choose a photo");
// Photographs and pictures a person keeps; Qt also reads icon and bitmap formats nobody means.
const QStringList kPictureSuffixes{QStringLiteral("jpg"), QStringLiteral("jpeg"), QStringLiteral("png"),
                                   QStringLiteral("gif"), QStringLiteral("bmp"),  QStringLiteral("webp"),
                                   QStringLiteral("heic"), QStringLiteral("heif"), QStringLiteral("tif"),
                                   QStringLiteral("tiff")};
} // namespace

PictureChooser::PictureChooser(PortalFileChooser *portal, QObject *parent)
    : QObject(parent), m_portal(portal ? portal : new PortalFileChooser(QDBusConnection::sessionBus(), this))
{
}

QStringList PictureChooser::pictureSuffixes()
{
    QStringList readable;
    const QList<QByteArray> formats = QImageReader::supportedImageFormats();
    for (const QString &suffix : kPictureSuffixes) {
        if (formats.contains(suffix.toLatin1()))
            readable.append(suffix);
    }
    return readable;
}

QStringList PictureChooser::pictureMimeTypes()
{
    QStringList types;
    const QList<QByteArray> readable = QImageReader::supportedMimeTypes();
    for (const QByteArray &type : readable) {
        if (type != "image/svg+xml" && type != "image/x-icon" && type != "image/vnd.microsoft.icon")
            types.append(QString::fromLatin1(type));
    }
    return types;
}

void PictureChooser::choose(ui::ViewController *on, const Picked &picked)
{
    if (!on)
        return;
    if (!m_portal->isAvailable()) {
        showSheet(on, picked);
        return;
    }
    QPointer<ui::ViewController> screen(on);
    QPointer<PictureChooser> self(this);
    m_portal->openFile(kTitle, pictureMimeTypes(),
                       [self, screen, picked](PortalFileChooser::Outcome outcome, const QUrl &file) {
                           if (!self || !screen)
                               return;
                           if (outcome == PortalFileChooser::Outcome::Picked)
                               picked(file);
                           else if (outcome == PortalFileChooser::Outcome::Failed)
                               self->showSheet(screen, picked);
                       });
}

void PictureChooser::showSheet(ui::ViewController *on, const Picked &picked)
{
    ui::FilePickerSheet::showFilePickerWithTitle(kTitle, pictureSuffixes(), QStringLiteral("No pictures in this folder"),
                                                 picked, on);
}
