#pragma once

#include <QUrl>

class AppConfiguration;
class UrlOpener;

// What the registration screen needs from outside: the operator's terms page and the URL
// opener it is opened with (nullptr: the app's standard one, UrlOpener::shared()).
struct RegistrationSettings {
    QUrl termsPage;
    UrlOpener *urlOpener = nullptr;

    // The terms page of the configured operator's web site, opened with the standard opener.
    [[nodiscard]] static RegistrationSettings fromConfiguration(const AppConfiguration &configuration);
};
