#include "Theme.h"

#include <QQmlEngine>

namespace ui {

Theme *Theme::instance()
{
    static Theme *theme = new Theme;
    return theme;
}

Theme *Theme::create(QQmlEngine *, QJSEngine *)
{
    auto *theme = instance();
    QQmlEngine::setObjectOwnership(theme, QQmlEngine::CppOwnership);
    return theme;
}

void Theme::assign(QColor &member, const QColor &value)
{
    if (member == value)
        return;
    member = value;
    Q_EMIT changed();
}

void Theme::setNavigationBarColor(const QColor &color) { assign(m_navigationBarColor, color); }
void Theme::setTintColor(const QColor &color) { assign(m_tintColor, color); }
void Theme::setAccentColor(const QColor &color) { assign(m_accentColor, color); }
void Theme::setTitleColor(const QColor &color) { assign(m_titleColor, color); }
void Theme::setSecondaryColor(const QColor &color) { assign(m_secondaryColor, color); }
void Theme::setBackgroundColor(const QColor &color) { assign(m_backgroundColor, color); }

} // namespace ui
