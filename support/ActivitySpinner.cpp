#include "ActivitySpinner.h"

#include "ActivityIndicatorView.h"
#include "SupportLogging.h"
#include "View.h"

ActivitySpinner::ActivitySpinner(QObject *parent)
    : QObject(parent)
    , m_actInd(new ui::ActivityIndicatorView(QStringLiteral("actInd"), this))
{
    connect(m_actInd, &ui::ActivityIndicatorView::animatingChanged, this, [this] {
        if (m_actInd->isAnimating())
            hold();
        else
            release();
    });
}

void ActivitySpinner::holdWhileSpinning(const QList<ui::Control *> &controls)
{
    m_held.clear();
    for (ui::Control *control : controls)
        m_held.append(control);
}

void ActivitySpinner::hold()
{
    m_heldStates.clear();
    for (const QPointer<ui::Control> &control : std::as_const(m_held)) {
        if (!control)
            continue;
        m_heldStates.append({control, control->isEnabled()});
        control->setEnabled(false);
    }
}

void ActivitySpinner::release()
{
    for (const auto &[control, enabled] : std::as_const(m_heldStates)) {
        if (control)
            control->setEnabled(enabled);
    }
    m_heldStates.clear();
}

void ActivitySpinner::show(ui::View *view)
{
    show(view, {});
}

void ActivitySpinner::show(ui::View *view, const QString &caption)
{
    m_actInd->setCaption(caption);
    if (!view) {
        qCWarning(lcSupport) << "The activity spinner was shown on no view";
        return;
    }
    m_actInd->setFrame(QRectF(0, 0, kSize, kSize));
    m_actInd->setCornerRadius(kCornerRadius);
    m_actInd->setCenter(view->center());
    m_actInd->setHidesWhenStopped(true);
    m_actInd->setStyle(ui::ActivityIndicatorView::Style::WhiteLarge);
    m_actInd->setBackgroundColor(Qt::black);
    view->addSubview(m_actInd);
    m_actInd->startAnimating();
}
