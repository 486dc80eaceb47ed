#pragma once

#include <QList>
#include <QObject>
#include <QPointer>
#include <QtQml/qqmlregistration.h>

#include "ActivityIndicatorView.h"
#include "View.h"

// A busy indicator shown over a screen's view while the screen waits. The indicator is made
// with the spinner and kept for its lifetime; stopping it hides it. While it turns, the
// controls it holds take no presses, so a request that is running is not started twice.
class ActivitySpinner : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Screens make their spinner in C++")
    Q_PROPERTY(ui::ActivityIndicatorView *actInd READ actInd CONSTANT)

public:
    static constexpr qreal kSize = 60;
    static constexpr qreal kCornerRadius = 15;

    explicit ActivitySpinner(QObject *parent = nullptr);

    [[nodiscard]] ui::ActivityIndicatorView *actInd() const { return m_actInd; }

    // A 60 x 60 black rounded square with the large white indicator, centred on the view,
    // added on top of it and spinning. Showing it again re-adds the same indicator.
    void show(ui::View *view);
    // The same, captioned with what the wait is for ("Signing in…").
    void show(ui::View *view, const QString &caption);
    [[nodiscard]] bool isSpinning() const { return m_actInd->isAnimating(); }

    // Controls disabled while the spinner turns; each gets its own state back when it stops.
    void holdWhileSpinning(const QList<ui::Control *> &controls);

private:
    void hold();
    void release();

    ui::ActivityIndicatorView *m_actInd;
    QList<QPointer<ui::Control>> m_held;
    QList<std::pair<QPointer<ui::Control>, bool>> m_heldStates;
};
