#pragma once

#include <QList>
#include <QObject>
#include <QPointer>
#include "ControllerListModel.h"

#include <QQuickWindow>
#include <QSize>
#include <QtQml/qqmlregistration.h>

#include <memory>

class QQmlApplicationEngine;

namespace ui {

class ViewController;

// The application's one window: a root screen and the screens presented over it.
// makeKeyAndVisible() brings the root on screen and opens the QML window that draws it
// (phone-sized by default, resizable). With the interface switched off (tests of
// controllers) everything but the drawing happens.
class Window : public QObject {
    Q_OBJECT
    QML_NAMED_ELEMENT(UiWindow)
    QML_UNCREATABLE("The window is made in C++")
    Q_PROPERTY(ui::ViewController *rootViewController READ rootViewController NOTIFY rootViewControllerChanged)
    Q_PROPERTY(QList<ui::ViewController *> presentationStack READ presentationStack NOTIFY presentationStackChanged)
    Q_PROPERTY(ui::ControllerListModel *presentationModel READ presentationModel CONSTANT)
    Q_PROPERTY(QSize defaultSize READ defaultSize CONSTANT)

public:
    explicit Window(QObject *parent = nullptr);
    ~Window() override;

    static constexpr QSize kDefaultSize{390, 844};

    // The window made most recently that is still alive.
    static Window *keyWindow();

    [[nodiscard]] ViewController *rootViewController() const { return m_root; }
    // Replaces the root; the old one disappears and, when the window owns it, is deleted.
    void setRootViewController(ViewController *controller);

    // Off: no QML is loaded (controller tests). On by default.
    void setDrawsInterface(bool draws) { m_drawsInterface = draws; }

    void makeKeyAndVisible();
    [[nodiscard]] bool isVisible() const { return m_visible; }

    // The root, then each screen presented over the one before.
    [[nodiscard]] QList<ViewController *> presentationStack() const;
    [[nodiscard]] ControllerListModel *presentationModel() const { return m_presentationModel; }
    [[nodiscard]] QSize defaultSize() const { return kDefaultSize; }

    [[nodiscard]] QQmlApplicationEngine *engine() const { return m_engine.get(); }
    [[nodiscard]] QQuickWindow *quickWindow() const { return m_quickWindow; }

Q_SIGNALS:
    void rootViewControllerChanged();
    void presentationStackChanged();

private:
    void trackPresentations();
    void scheduleTracking();
    void loadInterface();

    QPointer<ViewController> m_root;
    QList<QMetaObject::Connection> m_tracking;
    ControllerListModel *m_presentationModel;
    bool m_visible = false;
    bool m_drawsInterface = true;
    bool m_trackingScheduled = false;
    std::unique_ptr<QQmlApplicationEngine> m_engine;
    QPointer<QQuickWindow> m_quickWindow;
};

} // namespace ui
