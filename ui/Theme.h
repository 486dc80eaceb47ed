#pragma once

#include <QColor>
#include <QObject>
#include <QtQml/qqmlregistration.h>

class QQmlEngine;
class QJSEngine;

namespace ui {

// The app's colours, set once at start-up and read by every QML component.
class Theme : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    Q_PROPERTY(QColor navigationBarColor READ navigationBarColor WRITE setNavigationBarColor NOTIFY changed)
    // The navigation bar's back button and bar button items.
    Q_PROPERTY(QColor tintColor READ tintColor WRITE setTintColor NOTIFY changed)
    // Buttons and actions elsewhere: alerts, the keyboard toolbar, plain buttons, focus rings.
    Q_PROPERTY(QColor accentColor READ accentColor WRITE setAccentColor NOTIFY changed)
    Q_PROPERTY(QColor titleColor READ titleColor WRITE setTitleColor NOTIFY changed)
    Q_PROPERTY(QColor secondaryColor READ secondaryColor WRITE setSecondaryColor NOTIFY changed)
    Q_PROPERTY(QColor backgroundColor READ backgroundColor WRITE setBackgroundColor NOTIFY changed)

public:
    static Theme *instance();
    static Theme *create(QQmlEngine *, QJSEngine *);

    [[nodiscard]] QColor navigationBarColor() const { return m_navigationBarColor; }
    void setNavigationBarColor(const QColor &color);
    [[nodiscard]] QColor tintColor() const { return m_tintColor; }
    void setTintColor(const QColor &color);
    [[nodiscard]] QColor accentColor() const { return m_accentColor; }
    void setAccentColor(const QColor &color);
    [[nodiscard]] QColor titleColor() const { return m_titleColor; }
    void setTitleColor(const QColor &color);
    [[nodiscard]] QColor secondaryColor() const { return m_secondaryColor; }
    void setSecondaryColor(const QColor &color);
    [[nodiscard]] QColor backgroundColor() const { return m_backgroundColor; }
    void setBackgroundColor(const QColor &color);

Q_SIGNALS:
    void changed();

private:
    Theme() = default;
    void assign(QColor &member, const QColor &value);

    QColor m_navigationBarColor = QColor(247, 247, 247);
    QColor m_tintColor = QColor(0, 122, 255);
    QColor m_accentColor = QColor(0, 122, 255);
    QColor m_titleColor = Qt::black;
    QColor m_secondaryColor = QColor(0, 122, 255);
    QColor m_backgroundColor = Qt::white;
};

} // namespace ui
