#pragma once

#include "FolderListing.h"
#include "ViewController.h"

#include <QUrl>

#include <functional>

namespace ui {

// A sheet that fits a phone screen for picking one file: a folder's entries in one column
// (name, with size and date on a line below), the folder's name with a way up, and shortcuts
// to the pictures folder and home. A tap or click on a folder opens it; on a file, picks it.
// Picking dismisses the sheet, then hands over the file; Cancel only dismisses it.
class FilePickerSheet : public ViewController {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("File pickers are made in C++")
    Q_PROPERTY(ui::FolderListing *listing READ listing CONSTANT)
    Q_PROPERTY(QString picturesFolder READ picturesFolder CONSTANT)
    Q_PROPERTY(QString homeFolder READ homeFolder CONSTANT)
    Q_PROPERTY(QString emptyText READ emptyText CONSTANT)

public:
    using Picked = std::function<void(const QUrl &file)>;

    // Opens in the pictures folder when there is one, else in the home folder; files with
    // other suffixes than these are not listed.
    // emptyText is shown for a folder without any such file.
    FilePickerSheet(const QString &title, const QStringList &suffixes, const QString &emptyText, Picked picked,
                    QObject *parent = nullptr);

    // Makes a sheet and presents it on origin; nullptr when the presentation is refused.
    static FilePickerSheet *showFilePickerWithTitle(const QString &title, const QStringList &suffixes,
                                                    const QString &emptyText, Picked picked, ViewController *origin);

    [[nodiscard]] FolderListing *listing() const { return m_listing; }
    [[nodiscard]] QString emptyText() const { return m_emptyText; }
    [[nodiscard]] static QString picturesFolder();
    [[nodiscard]] static QString homeFolder();

    // A tap on a row: a folder opens, a file is picked.
    Q_INVOKABLE void activate(int row);
    Q_INVOKABLE void openFolder(const QString &path);
    Q_INVOKABLE void goUp();
    Q_INVOKABLE void cancel();

protected:
    void viewDidLoad() override;

private:
    FolderListing *m_listing;
    QString m_emptyText;
    Picked m_picked;
    bool m_finishing = false;
};

} // namespace ui
