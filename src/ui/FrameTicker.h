#pragma once

#include <QAbstractAnimation>

#include <functional>

namespace brindle {

/// Calls `tick` with the seconds since the last call once for each frame that the scene is about to draw,
/// between `run()` and `rest()`. At rest it costs nothing. Main thread.
class FrameTicker : public QAbstractAnimation
{
    Q_OBJECT

public:
    explicit FrameTicker(std::function<void(double seconds)> tick, QObject *parent = nullptr);

    /// Seconds that the first call, from within `run()`, is ahead of the first frame; the second call is no
    /// longer either.
    static constexpr double firstStep = 1.0 / 60;

    void run();
    void rest();
    int duration() const override { return -1; }

protected:
    void updateCurrentTime(int milliseconds) override;

private:
    std::function<void(double)> m_tick;
    int m_last = 0;
    bool m_isFirst = true;
};

} // namespace brindle
