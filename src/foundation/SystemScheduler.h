#pragma once

#include "foundation/DeadlineQueue.h"

#include <QBasicTimer>
#include <QObject>

#include <deque>
#include <mutex>

namespace brindle {

/// The machine's own time. One timer is armed, for the most urgent deadline; with nothing waiting the program
/// sleeps.
///
/// Lives on the main thread, which must run an event loop; `post` may be called from any thread.
class SystemScheduler : public QObject, public Scheduler
{
    Q_OBJECT

public:
    explicit SystemScheduler(QObject *parent = nullptr);
    ~SystemScheduler() override;

    Date now() const override;
    double uptime() const override;
    [[nodiscard]] Delay after(double seconds, std::function<void()> work) override;
    [[nodiscard]] Delay every(double seconds, double tolerance, std::function<void()> work) override;
    void post(std::function<void()> work) override;

protected:
    bool event(QEvent *event) override;

private:
    Delay add(double seconds, double interval, double tolerance, std::function<void()> work);
    void arm();
    void runDue();
    void runNextPosted();

    DeadlineQueue m_queue;
    QBasicTimer m_timer;
    /// The moment for which the timer is armed.
    std::optional<double> m_armedFor;
    std::mutex m_postedMutex;
    std::deque<std::function<void()>> m_posted;
};

} // namespace brindle
