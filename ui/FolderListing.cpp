#include "FolderListing.h"

#include <QCollator>
#include <QDir>
#include <QFileInfo>
#include <QLocale>
#include <QUrl>

#include <algorithm>

namespace ui {

FolderListing::FolderListing(const QStringList &suffixes, QObject *parent) : QAbstractListModel(parent)
{
    for (const QString &suffix : suffixes)
        m_suffixes.append(suffix.toLower());
}

int FolderListing::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_entries.size());
}

QVariant FolderListing::data(const QModelIndex &index, int role) const
{
    if (!index.isValid() || index.row() >= m_entries.size())
        return {};
    const Entry &entry = m_entries.at(index.row());
    switch (role) {
    case Qt::DisplayRole:
    case NameRole:
        return entry.name;
    case PathRole:
        return entry.path;
    case UrlRole:
        return QUrl::fromLocalFile(entry.path);
    case IsFolderRole:
        return entry.isFolder;
    case DetailRole:
        if (entry.isFolder)
            return QStringLiteral("Folder");
        return QLocale().formattedDataSize(entry.size) + QStringLiteral(" \u00b7 ") +
               QLocale().toString(entry.modified.date(), QLocale::ShortFormat);
    default:
        return {};
    }
}

QHash<int, QByteArray> FolderListing::roleNames() const
{
    return {{NameRole, "name"}, {PathRole, "path"}, {UrlRole, "url"}, {IsFolderRole, "isFolder"}, {DetailRole, "detail"}};
}

QString FolderListing::folderName() const
{
    const QString name = QFileInfo(m_folder).fileName();
    return name.isEmpty() ? m_folder : name;
}

bool FolderListing::canGoUp() const
{
    return !m_folder.isEmpty() && !QDir(m_folder).isRoot();
}

bool FolderListing::accepts(const QString &fileName) const
{
    return m_suffixes.contains(QFileInfo(fileName).suffix().toLower());
}

bool FolderListing::setFolder(const QString &path)
{
    const QDir dir(path);
    const QFileInfoList infos =
        dir.entryInfoList(QDir::AllDirs | QDir::Files | QDir::NoDotAndDotDot | QDir::Readable);
    QList<Entry> entries;
    for (const QFileInfo &info : infos) {
        if (info.isDir() || accepts(info.fileName()))
            entries.append({info.fileName(), info.absoluteFilePath(), info.isDir(), info.size(), info.lastModified()});
    }
    // The C locale compares plain code points: natural order needs a language.
    const QLocale locale = QLocale().language() == QLocale::C ? QLocale(QLocale::English) : QLocale();
    QCollator collator(locale);
    collator.setNumericMode(true);
    collator.setCaseSensitivity(Qt::CaseInsensitive);
    std::sort(entries.begin(), entries.end(), [&collator](const Entry &a, const Entry &b) {
        if (a.isFolder != b.isFolder)
            return a.isFolder;
        return collator.compare(a.name, b.name) < 0;
    });

    beginResetModel();
    m_folder = dir.absolutePath();
    m_entries = entries;
    m_error = dir.exists() && dir.isReadable() ? QString() : QStringLiteral("This folder cannot be opened.");
    endResetModel();
    Q_EMIT folderChanged();
    return m_error.isEmpty();
}

bool FolderListing::goUp()
{
    QDir dir(m_folder);
    return canGoUp() && dir.cdUp() && setFolder(dir.absolutePath());
}

bool FolderListing::isFolder(int row) const
{
    return row >= 0 && row < m_entries.size() && m_entries.at(row).isFolder;
}

QString FolderListing::path(int row) const
{
    return row >= 0 && row < m_entries.size() ? m_entries.at(row).path : QString();
}

} // namespace ui
