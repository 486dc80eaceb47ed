#pragma once

#include "Window.h"

#include <QObject>
#include <QPointer>

// The scene's delegate. A desktop app has one scene for its whole life, so every callback
// is left empty and the scene never makes a window of its own.
class SceneDelegate : public QObject {
    Q_OBJECT
public:
    explicit SceneDelegate(QObject *parent = nullptr) : QObject(parent) {}

    [[nodiscard]] ui::Window *window() const { return m_window; }
    void setWindow(ui::Window *window) { m_window = window; }

    void sceneWillConnectToSession() {}
    void sceneDidDisconnect() {}
    void sceneDidBecomeActive() {}
    void sceneWillResignActive() {}
    void sceneWillEnterForeground() {}
    void sceneDidEnterBackground() {}

private:
    QPointer<ui::Window> m_window;
};
