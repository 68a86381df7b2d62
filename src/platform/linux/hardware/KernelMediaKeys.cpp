#include "platform/linux/hardware/KernelMediaKeys.h"

#include <QSocketNotifier>

#include <array>
#include <cerrno>
#include <linux/input.h>
#include <span>
#include <unistd.h>
#include <utility>

namespace brindle {

/// A node that is open, until it goes.
class KernelMediaKeys::Node
{
public:
    Node(int descriptor, const std::function<void()> &readable)
        : m_descriptor(descriptor)
        , m_notifier(std::make_unique<QSocketNotifier>(descriptor, QSocketNotifier::Read))
    {
        QObject::connect(m_notifier.get(), &QSocketNotifier::activated, m_notifier.get(), readable);
    }
    // The notifier may be the one that says so.
    ~Node()
    {
        m_notifier->setEnabled(false);
        m_notifier->disconnect();
        m_notifier.release()->deleteLater();
        ::close(m_descriptor);
    }
    Node(const Node &) = delete;
    Node &operator=(const Node &) = delete;

    int descriptor() const { return m_descriptor; }

private:
    const int m_descriptor;
    std::unique_ptr<QSocketNotifier> m_notifier;
};

KernelMediaKeys::KernelMediaKeys(InputNodes nodes)
    : m_nodes(std::move(nodes))
    , m_monitors([this] {
        if (m_monitors.isEmpty()) {
            m_folder.reset();
            m_open.clear();
        }
    })
{ }

KernelMediaKeys::~KernelMediaKeys() = default;

Subscription KernelMediaKeys::addGlobalMonitor(std::function<void(long data1)> handler)
{
    if (m_monitors.isEmpty()) {
        // A new node appears first and is given to its readers then; both are told.
        m_folder = std::make_unique<QFileSystemWatcher>(QStringList{m_nodes.folder()});
        QObject::connect(
            m_folder.get(), &QFileSystemWatcher::directoryChanged, m_folder.get(), [this] { findNodes(); });
        findNodes();
        if (m_open.empty()) {
            m_folder.reset();
            return {};
        }
    }
    return m_monitors.add(std::move(handler));
}

void KernelMediaKeys::findNodes()
{
    const QStringList paths = m_nodes.paths();
    std::erase_if(m_open, [&paths](const auto &node) { return !paths.contains(node.first); });
    for (const QString &path : paths) {
        if (m_open.contains(path))
            continue;
        if (const int descriptor = m_nodes.open(path); descriptor >= 0)
            m_open.emplace(path, std::make_unique<Node>(descriptor, [this, path] { read(path); }));
    }
}

void KernelMediaKeys::read(const QString &path)
{
    std::array<input_event, 64> events{};
    const ssize_t size = ::read(m_open.at(path)->descriptor(), events.data(), sizeof(events));
    if (size <= 0) {
        if (size == 0 || (errno != EAGAIN && errno != EINTR))
            m_open.erase(path); // it was unplugged
        return;
    }
    for (const input_event &event : std::span(events).first(size_t(size) / sizeof(input_event))) {
        if (const auto data1 = mediaKeyDataOf(event))
            m_monitors.call(*data1);
    }
}

} // namespace brindle
