#pragma once

#include <QElapsedTimer>
#include <QPointer>
#include <QQuickItem>
#include <QtQml/qqmlregistration.h>

Q_MOC_INCLUDE("RevealViewController.h")

class RevealViewController;

// The container's view: holds the three layers (drawn by its QML), watches every press and
// drag that goes to them, and turns them into the container's pan and tap. A drag that
// goes sideways first is taken over from the screen underneath; anything else is left to
// it. It also widens the hit area to the layers when the container asks for that.
class RevealView : public QQuickItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(RevealViewController *controller READ controller WRITE setController NOTIFY controllerChanged)
    Q_PROPERTY(QQuickItem *rearItem READ rearItem WRITE setRearItem NOTIFY layerItemsChanged)
    Q_PROPERTY(QQuickItem *frontItem READ frontItem WRITE setFrontItem NOTIFY layerItemsChanged)
    Q_PROPERTY(QQuickItem *rightItem READ rightItem WRITE setRightItem NOTIFY layerItemsChanged)

public:
    explicit RevealView(QQuickItem *parent = nullptr);

    [[nodiscard]] RevealViewController *controller() const { return m_controller; }
    void setController(RevealViewController *controller);
    [[nodiscard]] QQuickItem *rearItem() const { return m_rearItem; }
    void setRearItem(QQuickItem *item);
    [[nodiscard]] QQuickItem *frontItem() const { return m_frontItem; }
    void setFrontItem(QQuickItem *item);
    [[nodiscard]] QQuickItem *rightItem() const { return m_rightItem; }
    void setRightItem(QQuickItem *item);

    // Outside its own bounds the view answers for the rear, front and right layers (in that
    // order, each only when its screen is loaded) if the container extends the hit area.
    [[nodiscard]] bool contains(const QPointF &point) const override;

Q_SIGNALS:
    void controllerChanged();
    void layerItemsChanged();

protected:
    bool childMouseEventFilter(QQuickItem *item, QEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void mouseUngrabEvent() override;
    void touchEvent(QTouchEvent *event) override;
    void touchUngrabEvent() override;

private:
    // Each returns whether the event is taken from the item it was meant for.
    bool pointerEvent(QPointerEvent *event, QQuickItem *target);
    bool press(QPointF local, bool onFront);
    bool move(QPointF local, QPointerEvent *event, QQuickItem *target);
    bool release(QPointF local);
    void cancel();
    void takeOver(QPointerEvent *event);

    QPointer<RevealViewController> m_controller;
    QPointer<QQuickItem> m_rearItem;
    QPointer<QQuickItem> m_frontItem;
    QPointer<QQuickItem> m_rightItem;
    QElapsedTimer m_clock;
    bool m_tracking = false;
    bool m_panning = false;
    bool m_tapCandidate = false;
    bool m_simultaneous = false;
};
