#pragma once

#include <QUrl>

// The system's URL opener: web pages in the browser, "tel:" and "mailto:" links in the
// handler the desktop has for them. Screens use shared(); tests install their own
// instance (a subclass that records instead of launching anything).
class UrlOpener {
public:
    UrlOpener() = default;
    virtual ~UrlOpener() = default;
    UrlOpener(const UrlOpener &) = delete;
    UrlOpener &operator=(const UrlOpener &) = delete;

    // The instance in use: the one set last, or a system opener made on first use.
    static UrlOpener *shared();
    // Replaces the instance in use (nullptr goes back to the system opener). The caller
    // keeps ownership and clears it before destroying it.
    static void setShared(UrlOpener *opener);

    // A valid URL with a scheme and a host, whose scheme the system has a handler for.
    [[nodiscard]] virtual bool canOpenURL(const QUrl &url) const;
    // Hands the URL to the system; false when it was refused or no handler took it.
    virtual bool openURL(const QUrl &url);

protected:
    // Whether the desktop has a handler for the scheme ("https", "tel", ...).
    [[nodiscard]] virtual bool handlesScheme(const QString &scheme) const;
};
