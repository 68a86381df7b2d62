#include "support/EventLoop.h"

#include "foundation/SystemScheduler.h"

#include <QCoreApplication>

namespace brindle::test {

bool eventually(const std::function<bool()> &holds, double seconds)
{
    SystemScheduler time;
    bool isOver = false;
    const Delay end = time.after(seconds, [&isOver] { isOver = true; });
    while (!holds()) {
        if (isOver)
            return false;
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    return true;
}

void deliverEvents()
{
    QCoreApplication::processEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

} // namespace brindle::test
