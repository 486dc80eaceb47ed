#include "PFDispatch.h"

#include <QCoreApplication>
#include <QMetaObject>

void PFDispatch::later(std::function<void()> work)
{
    QMetaObject::invokeMethod(QCoreApplication::instance(), std::move(work), Qt::QueuedConnection);
}
