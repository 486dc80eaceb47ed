#include "ActivitySpinner.h"

#include "ActivityIndicatorView.h"
#include "SupportLogging.h"
#include "View.h"

ActivitySpinner::ActivitySpinner(QObject *parent)
    : QObject(parent)
    , m_actInd(new ui::ActivityIndicatorView(QStringLiteral("actInd"), this))
{
}

void ActivitySpinner::show(ui::View *view)
{
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
