#pragma once

#include <QAbstractListModel>
#include <QDateTime>
#include <QStringList>
#include <QtQml/qqmlregistration.h>

namespace ui {

// The entries of one folder for a file picker: its sub-folders first, then the files whose
// suffix is one of the wanted ones (letter case ignored: "IMG_1.JPG" is a jpg), each group in
// natural order ("2.png" before "10.png"). Hidden entries are left out.
class FolderListing : public QAbstractListModel {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Made by the file picker")
    Q_PROPERTY(QString folder READ folder NOTIFY folderChanged)
    Q_PROPERTY(QString folderName READ folderName NOTIFY folderChanged)
    Q_PROPERTY(bool canGoUp READ canGoUp NOTIFY folderChanged)
    Q_PROPERTY(QString error READ error NOTIFY folderChanged)

public:
    enum Role { NameRole = Qt::UserRole + 1, PathRole, UrlRole, IsFolderRole, DetailRole };

    explicit FolderListing(const QStringList &suffixes, QObject *parent = nullptr);

    [[nodiscard]] int rowCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

    [[nodiscard]] QString folder() const { return m_folder; }
    [[nodiscard]] QString folderName() const;
    [[nodiscard]] bool canGoUp() const;
    // Why the folder shows nothing it should (it cannot be read); empty otherwise.
    [[nodiscard]] QString error() const { return m_error; }

    // Lists the folder; false (and an error) when it cannot be read.
    bool setFolder(const QString &path);
    bool goUp();
    [[nodiscard]] bool isFolder(int row) const;
    [[nodiscard]] QString path(int row) const;
    // Whether a file name carries one of the wanted suffixes.
    [[nodiscard]] bool accepts(const QString &fileName) const;

Q_SIGNALS:
    void folderChanged();

private:
    struct Entry {
        QString name;
        QString path;
        bool isFolder = false;
        qint64 size = 0;
        QDateTime modified;
    };

    QStringList m_suffixes;
    QString m_folder;
    QString m_error;
    QList<Entry> m_entries;
};

} // namespace ui
