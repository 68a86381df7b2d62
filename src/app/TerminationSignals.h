#pragma once

#include <QSocketNotifier>

#include <memory>

namespace brindle {

/// Turns the signals that ask a program to end (SIGTERM, SIGINT, SIGHUP) into an orderly quit. One for the
/// process.
class TerminationSignals
{
public:
    TerminationSignals();

private:
    std::unique_ptr<QSocketNotifier> m_notifier;
};

} // namespace brindle
