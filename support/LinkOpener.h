#pragma once

#include <QUrl>

class UrlOpener;
namespace ui {
class ViewController;
}

// Opens one of the operator's web pages (the terms, the contact page) in the system's browser.
// When no browser takes it, the person is told so on `on` and offered to copy the address, so
// that a press on the link never ends in silence.
class LinkOpener {
public:
    // True when the page was handed to a browser.
    static bool open(const QUrl &page, UrlOpener &opener, ui::ViewController *on);
};
