#include "PrivateFile.h"

#include <QDir>
#include <QFileInfo>
#include <QSaveFile>

namespace PrivateFile {

bool ensureParentDirectory(const QString &filePath)
{
    const QString dir = QFileInfo(filePath).absolutePath();
    if (QFileInfo::exists(dir))
        return true;
    if (!QDir().mkpath(dir))
        return false;
    return QFile::setPermissions(dir, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
}

bool restrictToOwner(const QString &filePath)
{
    if (!QFileInfo::exists(filePath))
        return false;
    return QFile::setPermissions(filePath, QFile::ReadOwner | QFile::WriteOwner);
}

bool write(const QString &filePath, const QByteArray &contents)
{
    if (!ensureParentDirectory(filePath))
        return false;
    QSaveFile file(filePath);
    if (!file.open(QIODevice::WriteOnly))
        return false;
    file.setPermissions(QFile::ReadOwner | QFile::WriteOwner);
    if (file.write(contents) != contents.size())
        return false;
    return file.commit() && restrictToOwner(filePath);
}

} // namespace PrivateFile
