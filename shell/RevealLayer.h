#pragma once

#include <QObject>
#include <QPointer>
#include <QtQml/qqmlregistration.h>

#include "ui/ViewController.h"

// One of the container's three layers (rear, front, right) as its view draws it: the
// screen in it, the screen leaving it during a replacement, their opacities, whether the
// layer is in the hierarchy at all.
class RevealLayer : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Layers belong to their reveal container")
    Q_PROPERTY(ui::ViewController *controller READ controller NOTIFY controllerChanged)
    Q_PROPERTY(ui::ViewController *outgoingController READ outgoingController NOTIFY outgoingControllerChanged)
    Q_PROPERTY(qreal opacity READ opacity NOTIFY opacityChanged)
    Q_PROPERTY(qreal outgoingOpacity READ outgoingOpacity NOTIFY opacityChanged)
    Q_PROPERTY(bool deployed READ isDeployed NOTIFY deployedChanged)

public:
    explicit RevealLayer(const QString &name, QObject *parent = nullptr);

    [[nodiscard]] ui::ViewController *controller() const { return m_controller; }
    void setController(ui::ViewController *controller);
    [[nodiscard]] ui::ViewController *outgoingController() const { return m_outgoing; }
    void setOutgoingController(ui::ViewController *controller);
    [[nodiscard]] qreal opacity() const { return m_opacity; }
    [[nodiscard]] qreal outgoingOpacity() const { return m_outgoingOpacity; }
    // The incoming screen's opacity; the leaving one fades out in step.
    void setCrossFade(qreal incomingOpacity);
    [[nodiscard]] bool isDeployed() const { return m_deployed; }
    void setDeployed(bool deployed);

Q_SIGNALS:
    void controllerChanged();
    void outgoingControllerChanged();
    void opacityChanged();
    void deployedChanged();

private:
    QPointer<ui::ViewController> m_controller;
    QPointer<ui::ViewController> m_outgoing;
    qreal m_opacity = 1.0;
    qreal m_outgoingOpacity = 1.0;
    bool m_deployed = false;
};
