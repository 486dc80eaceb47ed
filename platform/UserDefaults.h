#pragma once

#include <QSettings>
#include <QString>
#include <QVariant>
#include <memory>

// The app's few preferences ("version_number", "deviceToken", "rememberMe", "username",
// "hasLoginKey"), kept in an INI file in the app's data directory with owner-only access.
class UserDefaults {
public:
    explicit UserDefaults(const QString &filePath);

    // The instance the running app uses; set once at start-up (tests set their own).
    static UserDefaults *standardUserDefaults();
    static void setStandardUserDefaults(UserDefaults *defaults);

    [[nodiscard]] QVariant objectForKey(const QString &key) const;
    [[nodiscard]] QString stringForKey(const QString &key) const; // empty when absent or not text
    [[nodiscard]] bool boolForKey(const QString &key) const;      // false when absent
    [[nodiscard]] bool hasKey(const QString &key) const;
    void setObject(const QVariant &value, const QString &key);
    void setBool(bool value, const QString &key);
    void removeObjectForKey(const QString &key);
    void synchronize();

    [[nodiscard]] QString filePath() const;

private:
    std::unique_ptr<QSettings> m_settings;
};
