#pragma once

#include <QList>
#include <QPointF>

// A horizontal-only pan. It watches a touch from where it went down: more than 5 points
// sideways first and it recognises a drag; more than 5 points up or down first and it fails,
// leaving the touch to the screen underneath (a list scrolls, a button is pressed). It also
// measures the finger's horizontal velocity over the last tenth of a second.
class RevealViewControllerPanGestureRecognizer {
public:
    enum class State { Idle, Possible, Dragging, Failed };

    static constexpr qreal kDecisionDistance = 5.0;
    static constexpr qint64 kVelocityWindowMs = 100;

    // Times are in milliseconds of any monotonic clock.
    void touchesBegan(QPointF point, qint64 timeMs);
    // Returns the state after the move; it changes from Possible at most once.
    State touchesMoved(QPointF point, qint64 timeMs);
    void touchesEnded(QPointF point, qint64 timeMs);
    // Forgets the touch (ended, cancelled, or refused by the container).
    void reset();
    // The container refused to begin: the rest of this touch is left alone.
    void fail() { m_state = State::Failed; }

    [[nodiscard]] State state() const { return m_state; }
    [[nodiscard]] QPointF startPoint() const { return m_start; }
    [[nodiscard]] QPointF location() const { return m_last; }
    [[nodiscard]] QPointF translation() const { return m_last - m_start; }
    // Points per second, positive to the right; 0 when the finger stood still at the end.
    [[nodiscard]] qreal horizontalVelocity() const;

private:
    struct Sample {
        qreal x;
        qint64 timeMs;
    };
    void addSample(QPointF point, qint64 timeMs);

    State m_state = State::Idle;
    QPointF m_start;
    QPointF m_last;
    QList<Sample> m_samples;
};
