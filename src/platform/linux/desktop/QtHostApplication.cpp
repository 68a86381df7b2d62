#include "platform/linux/desktop/QtHostApplication.h"

#include <QGuiApplication>

namespace brindle {

void QtHostApplication::setActivationPolicy(ActivationPolicy policy)
{
    QGuiApplication::setQuitOnLastWindowClosed(policy == ActivationPolicy::regular);
}

void QtHostApplication::terminate()
{
    QMetaObject::invokeMethod(qGuiApp, &QCoreApplication::quit, Qt::QueuedConnection);
}

} // namespace brindle
