#include "platform/linux/process/ChildWatcher.h"

#include <array>
#include <cerrno>
#include <sys/epoll.h>
#include <sys/eventfd.h>

namespace brindle {

namespace {

/// No child's: it tells the thread to end.
constexpr std::uint64_t endKey = 0;
constexpr int sourceBits = 2;
constexpr std::uint64_t sourceMask = (1U << sourceBits) - 1;

constexpr std::array sources{
    LinuxChild::Source::process, LinuxChild::Source::standardOutput, LinuxChild::Source::standardError};

} // namespace

ChildWatcher::ChildWatcher()
    : m_events(epoll_create1(EPOLL_CLOEXEC))
    , m_wakeUp(eventfd(0, EFD_CLOEXEC))
    , m_thread(QThread::create([this] { run(); }))
{
    m_thread->setObjectName(QStringLiteral("child-processes"));
    add(m_wakeUp.number(), endKey);
}

ChildWatcher::~ChildWatcher()
{
    eventfd_write(m_wakeUp.number(), 1);
    m_thread->wait();
    for (const auto &[key, child] : m_children)
        child->abandon();
}

bool ChildWatcher::watch(const std::shared_ptr<LinuxChild> &child)
{
    const std::scoped_lock lock(m_mutex);
    const Key number = ++m_lastChild;
    for (const Source source : sources) {
        if (child->descriptor(source) >= 0 && !add(child->descriptor(source), key(number, source)))
            return false;
    }
    m_children.emplace(number, child);
    if (!m_thread->isRunning())
        m_thread->start();
    return true;
}

ChildWatcher::Key ChildWatcher::key(Key child, Source source)
{
    return child << sourceBits | Key(source);
}

bool ChildWatcher::add(int descriptor, Key key) const
{
    epoll_event event{};
    event.events = EPOLLIN;
    event.data.u64 = key;
    return epoll_ctl(m_events.number(), EPOLL_CTL_ADD, descriptor, &event) == 0;
}

void ChildWatcher::forget(const LinuxChild &child, Source source) const
{
    if (child.descriptor(source) >= 0)
        epoll_ctl(m_events.number(), EPOLL_CTL_DEL, child.descriptor(source), nullptr);
}

std::shared_ptr<LinuxChild> ChildWatcher::find(Key child)
{
    const std::scoped_lock lock(m_mutex);
    const auto found = m_children.find(child);
    return found == m_children.end() ? nullptr : found->second;
}

void ChildWatcher::run()
{
    std::array<epoll_event, 16> events{};
    while (true) {
        const int count = epoll_wait(m_events.number(), events.data(), int(events.size()), -1);
        for (int i = 0; i < count; ++i) {
            const Key event = events.at(std::size_t(i)).data.u64;
            if (event == endKey)
                return;
            handle(event);
        }
    }
}

void ChildWatcher::handle(Key event)
{
    const Key number = event >> sourceBits;
    const auto source = Source(event & sourceMask);
    const auto child = find(number);
    if (!child || child->descriptor(source) < 0)
        return; // it ended with an earlier event of the same waking
    if (source == Source::process) {
        for (const Source each : sources)
            forget(*child, each);
        child->finish();
        const std::scoped_lock lock(m_mutex);
        m_children.erase(number);
    } else if (!child->read(source)) {
        forget(*child, source);
        child->close(source);
    }
}

} // namespace brindle
