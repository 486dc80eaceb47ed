#pragma once

#include <QByteArray>
#include <QString>

// Files the app writes for itself are readable by their owner only.
namespace PrivateFile {
// Creates the parent directory (mode 0700) when missing.
bool ensureParentDirectory(const QString &filePath);
// Sets mode 0600 on an existing file.
bool restrictToOwner(const QString &filePath);
// Writes atomically (temporary file + rename) with mode 0600. Returns false on any failure.
bool write(const QString &filePath, const QByteArray &contents);
} // namespace PrivateFile
