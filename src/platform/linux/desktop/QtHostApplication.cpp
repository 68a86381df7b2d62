#include "platform/linux/desktop/QtHostApplication.h"

#include <QGuiApplication>

#include <utility>

namespace brindle {

void QtHostApplication::setActivationPolicy(ActivationPolicy policy)
{
    QGuiApplication::setQuitOnLastWindowClosed(policy == ActivationPolicy::regular);
}

Subscription QtHostApplication::notifyActivation(std::function<void()> becameActive)
{
    const auto connection = QObject::connect(qGuiApp, &QGuiApplication::applicationStateChanged, qGuiApp,
        [becameActive = std::move(becameActive)](Qt::ApplicationState state) {
            if (state == Qt::ApplicationActive)
                becameActive();
        });
    return Subscription([connection] { QObject::disconnect(connection); });
}

void QtHostApplication::terminate()
{
    QMetaObject::invokeMethod(qGuiApp, &QCoreApplication::quit, Qt::QueuedConnection);
}

} // namespace brindle
