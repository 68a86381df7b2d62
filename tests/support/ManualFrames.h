#pragma once

#include <QAnimationDriver>
#include <QCoreApplication>

namespace brindle {

/// Frames that come when the test says so.
class ManualFrames : public QAnimationDriver
{
public:
    ManualFrames() { install(); }
    ~ManualFrames() override
    {
        // Animations that ended with the scene stop the clock on the next turn; the next scene wants a fresh
        // one.
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QCoreApplication::sendPostedEvents();
        uninstall();
    }

    void advanceBy(int milliseconds)
    {
        // An animation that has been started joins in on the next turn.
        QCoreApplication::sendPostedEvents();
        if (!isRunning())
            return;
        m_elapsed += milliseconds;
        advanceAnimation();
    }
    qint64 elapsed() const override { return m_elapsed; }

protected:
    // Time counts from here each time something begins to move.
    void start() override
    {
        m_elapsed = 0;
        QAnimationDriver::start();
    }

private:
    qint64 m_elapsed = 0;
};

} // namespace brindle
