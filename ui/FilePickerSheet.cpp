#include "FilePickerSheet.h"

#include "View.h"

#include <QDir>
#include <QPointer>
#include <QStandardPaths>

namespace ui {

FilePickerSheet::FilePickerSheet(const QString &title, const QStringList &suffixes, const QString &emptyText,
                                 Picked picked, QObject *parent)
    : ViewController(parent), m_listing(new FolderListing(suffixes, this)), m_emptyText(emptyText),
      m_picked(std::move(picked))
{
    setTitle(title);
    setModalPresentationStyle(ModalPresentationStyle::OverFullScreen);
    setViewUrl(QUrl(QStringLiteral("qrc:/qt/qml/Vantrel/Ui/FilePickerSheetView.qml")));
    const QString pictures = picturesFolder();
    m_listing->setFolder(pictures.isEmpty() ? homeFolder() : pictures);
}

FilePickerSheet *FilePickerSheet::showFilePickerWithTitle(const QString &title, const QStringList &suffixes,
                                                          const QString &emptyText, Picked picked,
                                                          ViewController *origin)
{
    if (!origin)
        return nullptr;
    auto *sheet = new FilePickerSheet(title, suffixes, emptyText, std::move(picked));
    origin->presentViewController(sheet, true);
    if (!sheet->presentingViewController()) {
        delete sheet;
        return nullptr;
    }
    return sheet;
}

QString FilePickerSheet::picturesFolder()
{
    const QString pictures = QStandardPaths::writableLocation(QStandardPaths::PicturesLocation);
    // Without a pictures folder of its own the desktop answers the home folder.
    return !pictures.isEmpty() && QDir(pictures).exists() && pictures != homeFolder() ? pictures : QString();
}

QString FilePickerSheet::homeFolder()
{
    return QDir::homePath();
}

void FilePickerSheet::viewDidLoad()
{
    view()->setBackgroundColor(Qt::transparent);
}

void FilePickerSheet::activate(int row)
{
    if (m_finishing || row < 0 || row >= m_listing->rowCount())
        return;
    if (m_listing->isFolder(row)) {
        m_listing->setFolder(m_listing->path(row));
        return;
    }
    m_finishing = true;
    const QUrl file = QUrl::fromLocalFile(m_listing->path(row));
    Picked picked = m_picked;
    dismissViewControllerAnimated(true, [picked, file] {
        if (picked)
            picked(file);
    });
}

void FilePickerSheet::openFolder(const QString &path)
{
    if (!path.isEmpty())
        m_listing->setFolder(path);
}

void FilePickerSheet::goUp()
{
    m_listing->goUp();
}

void FilePickerSheet::cancel()
{
    if (m_finishing)
        return;
    m_finishing = true;
    dismissViewControllerAnimated(true);
}

} // namespace ui
