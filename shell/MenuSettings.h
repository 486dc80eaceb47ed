#pragma once

#include <QUrl>

class UrlOpener;
class UserDefaults;

// What the side menu needs from outside: where the operator's contact page is, and the
// services it reads and opens through (nullptr: the app's standard ones).
struct MenuSettings {
    QUrl contactPage;
    UserDefaults *userDefaults = nullptr;
    UrlOpener *urlOpener = nullptr;
};
