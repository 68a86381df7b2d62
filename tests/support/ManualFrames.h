#pragma once

#include <QAnimationDriver>
#include <QCoreApplication>

namespace brindle {

/// Frames that come when the test says so.
class ManualFrames : public QAnimationDriver
{
public:
    ManualFrames() { install(); }
    ~ManualFrames() override { uninstall(); }

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
