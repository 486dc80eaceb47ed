#pragma once

#include <QColor>
#include <QList>
#include <QObject>
#include <QPointF>
#include <QPointer>
#include <QtQml/qqmlregistration.h>

namespace ui {

// A screen's root view as C++ sees it: the size its QML view reports, and the views added
// on top of it at run time (a busy indicator, for one), drawn by the framework over the
// screen's own QML.
class View : public QObject {
    Q_OBJECT
    QML_NAMED_ELEMENT(UiView)
    QML_UNCREATABLE("A view controller loads its own view")
    Q_PROPERTY(qreal width READ width WRITE setWidth NOTIFY boundsChanged)
    Q_PROPERTY(qreal height READ height WRITE setHeight NOTIFY boundsChanged)
    Q_PROPERTY(QList<QObject *> subviews READ subviews NOTIFY subviewsChanged)
    Q_PROPERTY(QColor backgroundColor READ backgroundColor WRITE setBackgroundColor NOTIFY backgroundColorChanged)
    Q_PROPERTY(bool userInteractionEnabled READ isUserInteractionEnabled WRITE setUserInteractionEnabled NOTIFY
                   userInteractionEnabledChanged)

public:
    explicit View(QObject *parent = nullptr);

    [[nodiscard]] qreal width() const { return m_width; }
    void setWidth(qreal width);
    [[nodiscard]] qreal height() const { return m_height; }
    void setHeight(qreal height);
    Q_INVOKABLE void setSize(qreal width, qreal height);
    // The middle of the view in its own coordinates.
    [[nodiscard]] QPointF center() const { return {m_width / 2, m_height / 2}; }

    [[nodiscard]] QList<QObject *> subviews() const;
    // Adds a subview on top; adding one that is already there brings it to the front.
    // The view does not take ownership.
    void addSubview(QObject *subview);
    void removeSubview(QObject *subview);

    [[nodiscard]] QColor backgroundColor() const { return m_backgroundColor; }
    void setBackgroundColor(const QColor &color);
    // Off: the screen's own controls take no taps, clicks or keys (a request is running);
    // the views added on top (the busy indicator) are still drawn.
    [[nodiscard]] bool isUserInteractionEnabled() const { return m_userInteractionEnabled; }
    void setUserInteractionEnabled(bool enabled);

Q_SIGNALS:
    void boundsChanged();
    void subviewsChanged();
    void backgroundColorChanged();
    void userInteractionEnabledChanged();

private:
    qreal m_width = 0;
    qreal m_height = 0;
    QList<QPointer<QObject>> m_subviews;
    QColor m_backgroundColor = Qt::white;
    bool m_userInteractionEnabled = true;
};

} // namespace ui
