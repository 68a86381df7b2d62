#include "adapter/linux/Reporter.h"

#include "adapter/linux/LineOutput.h"

#include <utility>

namespace brindle::adapter {

Reporter::Reporter(Scheduler &scheduler, double window, LineOutput &output, std::function<Payload()> present)
    : m_scheduler(scheduler)
    , m_length(window)
    , m_output(output)
    , m_present(std::move(present))
{ }

void Reporter::begin(double atMost)
{
    m_isBeginning = true;
    m_window = m_scheduler.after(atMost, [this] { report(); });
}

void Reporter::beComplete()
{
    if (m_isBeginning)
        report();
}

void Reporter::change()
{
    if (!m_window.isPending() && !m_owes)
        m_window = m_scheduler.after(m_length, [this] { report(); });
}

void Reporter::outputIsFree()
{
    if (m_owes)
        report();
}

void Reporter::report()
{
    m_window.cancel();
    m_isBeginning = false;
    m_owes = false;
    const Payload payload = m_present();
    const auto line = m_composer.compose(payload);
    if (!line)
        return;
    if (m_output.write(*line))
        m_composer.told(payload);
    else
        m_owes = true;
}

} // namespace brindle::adapter
