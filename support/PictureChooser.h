#pragma once

#include <QObject>
#include <QPointer>
#include <QUrl>

#include <functional>

class PortalFileChooser;
namespace ui {
class ViewController;
}

// How a screen asks the person for a picture file: the desktop's own file chooser when a
// desktop portal runs, otherwise (or when the portal cannot ask) the app's own picker sheet,
// which fits a phone screen and opens in the pictures folder. Both offer the kinds of picture
// the app can read, whatever the letter case of their names.
class PictureChooser : public QObject {
    Q_OBJECT

public:
    using Picked = std::function<void(const QUrl &file)>;

    // Without a portal chooser, one on the session bus is used.
    explicit PictureChooser(PortalFileChooser *portal = nullptr, QObject *parent = nullptr);

    // picked is called with the chosen file; not at all when the person cancels.
    void choose(ui::ViewController *on, const Picked &picked);

    // The picture suffixes and MIME types the app can decode.
    [[nodiscard]] static QStringList pictureSuffixes();
    [[nodiscard]] static QStringList pictureMimeTypes();

private:
    void showSheet(ui::ViewController *on, const Picked &picked);

    PortalFileChooser *m_portal;
};
