#include "RevealLayer.h"

RevealLayer::RevealLayer(const QString &name, QObject *parent)
    : QObject(parent)
{
    setObjectName(name);
}

void RevealLayer::setController(ui::ViewController *controller)
{
    if (m_controller == controller)
        return;
    m_controller = controller;
    Q_EMIT controllerChanged();
}

void RevealLayer::setOutgoingController(ui::ViewController *controller)
{
    if (m_outgoing == controller)
        return;
    m_outgoing = controller;
    Q_EMIT outgoingControllerChanged();
}

void RevealLayer::setCrossFade(qreal incomingOpacity)
{
    const qreal incoming = qBound<qreal>(0, incomingOpacity, 1);
    if (qFuzzyCompare(m_opacity, incoming) && qFuzzyCompare(m_outgoingOpacity, 1 - incoming))
        return;
    m_opacity = incoming;
    m_outgoingOpacity = 1 - incoming;
    Q_EMIT opacityChanged();
}

void RevealLayer::setDeployed(bool deployed)
{
    if (m_deployed == deployed)
        return;
    m_deployed = deployed;
    Q_EMIT deployedChanged();
}

