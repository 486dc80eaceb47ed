#include "PFDataStore.h"

#include "PFLogging.h"

#include <QDir>
#include <QFile>
#include <cstdio>

namespace {
constexpr QFileDevice::Permissions kUserOnly = QFileDevice::ReadOwner | QFileDevice::WriteOwner;
}

PFDataStore::PFDataStore(QString directory) : m_directory(std::move(directory)) {}

QString PFDataStore::pathOf(const QString &name) const
{
    return QDir(m_directory).filePath(name);
}

std::optional<QByteArray> PFDataStore::read(const QString &name) const
{
    QFile file(pathOf(name));
    if (!file.open(QIODevice::ReadOnly))
        return std::nullopt;
    return file.readAll();
}

bool PFDataStore::ensureDirectory()
{
    QDir dir(m_directory);
    if (!dir.exists() && !dir.mkpath(QStringLiteral("."))) {
        qCWarning(lcParseStore) << "cannot create the data directory" << m_directory;
        return false;
    }
    return QFile::setPermissions(m_directory, QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner);
}

bool PFDataStore::write(const QString &name, const QByteArray &contents)
{
    if (!ensureDirectory())
        return false;
    const QString target = pathOf(name);
    const QString temporary = target + QStringLiteral(".new");
    QFile::remove(temporary);
    QFile file(temporary);
    // Created with owner-only permissions: never readable by others, not even for a moment.
    if (!file.open(QIODevice::WriteOnly | QIODevice::NewOnly, kUserOnly) || file.write(contents) != contents.size() ||
        !file.flush()) {
        qCWarning(lcParseStore) << "cannot write" << temporary << file.errorString();
        file.remove();
        return false;
    }
    file.close();
    if (std::rename(QFile::encodeName(temporary).constData(), QFile::encodeName(target).constData()) != 0) {
        qCWarning(lcParseStore) << "cannot replace" << target;
        QFile::remove(temporary);
        return false;
    }
    return true;
}

bool PFDataStore::remove(const QString &name)
{
    const QString path = pathOf(name);
    return !QFile::exists(path) || QFile::remove(path);
}
