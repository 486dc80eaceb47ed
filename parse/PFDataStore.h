#pragma once

#include <QByteArray>
#include <QString>
#include <optional>

// The client library's own files (current user's record, installation id, eventually queue)
// in one directory that only the user may enter; every file is readable by the user only and
// replaced atomically, so a crash leaves either the old or the new contents.
class PFDataStore {
public:
    explicit PFDataStore(QString directory);

    [[nodiscard]] QString directory() const { return m_directory; }
    [[nodiscard]] QString pathOf(const QString &name) const;
    [[nodiscard]] std::optional<QByteArray> read(const QString &name) const;
    bool write(const QString &name, const QByteArray &contents);
    bool remove(const QString &name);

private:
    bool ensureDirectory();
    QString m_directory;
};
