#pragma once

#include <QObject>
#include <QVariantAnimation>

#include <functional>

// Moves one value (the front's x, or a screen's opacity) along a reveal curve, driven by
// the animation timer that the window syncs to its frames.
class RevealFrontAnimator : public QObject {
    Q_OBJECT

public:
    enum class Curve { Spring, EaseOut, Linear };

    explicit RevealFrontAnimator(QObject *parent = nullptr);

    // step receives each new value; done runs once at the end (not when stopped).
    void start(qreal from, qreal to, double durationSeconds, Curve curve, qreal dampingRatio,
               std::function<void(qreal)> step, std::function<void()> done);
    // Stops without finishing; the value stays where it was.
    void stop();
    [[nodiscard]] bool isRunning() const { return m_animation.state() == QAbstractAnimation::Running; }

private:
    QVariantAnimation m_animation;
    qreal m_from = 0;
    qreal m_to = 0;
    Curve m_curve = Curve::Spring;
    qreal m_damping = 1;
    qreal m_initialVelocity = 0;
    std::function<void(qreal)> m_step;
    std::function<void()> m_done;
};
