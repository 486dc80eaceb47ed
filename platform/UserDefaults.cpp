#include "UserDefaults.h"

#include "PrivateFile.h"

namespace {
UserDefaults *s_standard = nullptr;
}

UserDefaults::UserDefaults(const QString &filePath)
    : m_settings(std::make_unique<QSettings>(filePath, QSettings::IniFormat))
{
    PrivateFile::ensureParentDirectory(filePath);
}

UserDefaults *UserDefaults::standardUserDefaults()
{
    return s_standard;
}

void UserDefaults::setStandardUserDefaults(UserDefaults *defaults)
{
    s_standard = defaults;
}

QVariant UserDefaults::objectForKey(const QString &key) const
{
    return m_settings->value(key);
}

QString UserDefaults::stringForKey(const QString &key) const
{
    const QVariant v = m_settings->value(key);
    return v.canConvert<QString>() ? v.toString() : QString();
}

bool UserDefaults::boolForKey(const QString &key) const
{
    const QVariant v = m_settings->value(key);
    if (!v.isValid())
        return false;
    // QSettings' INI format hands booleans back as the text "true"/"false".
    if (v.typeId() == QMetaType::QString)
        return v.toString() == QLatin1String("true") || v.toString().toInt() != 0;
    return v.toBool();
}

bool UserDefaults::hasKey(const QString &key) const
{
    return m_settings->contains(key);
}

void UserDefaults::setObject(const QVariant &value, const QString &key)
{
    m_settings->setValue(key, value);
    synchronize();
}

void UserDefaults::setBool(bool value, const QString &key)
{
    setObject(value, key);
}

void UserDefaults::removeObjectForKey(const QString &key)
{
    m_settings->remove(key);
    synchronize();
}

void UserDefaults::synchronize()
{
    m_settings->sync();
    PrivateFile::restrictToOwner(m_settings->fileName());
}

QString UserDefaults::filePath() const
{
    return m_settings->fileName();
}
