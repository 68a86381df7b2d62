#include "app/TerminationSignals.h"

#include <QCoreApplication>

#include <array>
#include <csignal>
#include <fcntl.h>
#include <unistd.h>

namespace brindle {

namespace {

/// A handler may do little more than write: what it writes wakes the event loop.
std::array<int, 2> s_pipe{-1, -1};

void noteSignal(int)
{
    const char note = 0;
    [[maybe_unused]] const auto written = write(s_pipe[1], &note, 1);
}

} // namespace

TerminationSignals::TerminationSignals()
{
    if (pipe2(s_pipe.data(), O_CLOEXEC | O_NONBLOCK) != 0)
        return;
    m_notifier = std::make_unique<QSocketNotifier>(s_pipe[0], QSocketNotifier::Read);
    QObject::connect(m_notifier.get(), &QSocketNotifier::activated, qApp, [] { QCoreApplication::quit(); });
    struct sigaction action{};
    action.sa_handler = noteSignal;
    for (const int number : {SIGTERM, SIGINT, SIGHUP})
        sigaction(number, &action, nullptr);
}

} // namespace brindle
