#pragma once

#include "foundation/Listeners.h"
#include "platform/MediaKeys.h"
#include "platform/linux/hardware/InputNodes.h"

#include <QFileSystemWatcher>

#include <map>
#include <memory>

namespace brindle {

/// The media keys as the kernel's input devices report them, for sessions without a display server that would
/// tell. Keyboards may come and go.
///
/// A monitor is granted when this user may read a keyboard. All other keys are left out by the kernel, or
/// dropped as they come.
class KernelMediaKeys : public MediaKeys
{
public:
    explicit KernelMediaKeys(InputNodes nodes = InputNodes());
    ~KernelMediaKeys() override;

    [[nodiscard]] Subscription addGlobalMonitor(std::function<void(long data1)> handler) override;

    /// How many nodes are open.
    qsizetype openNodes() const { return qsizetype(m_open.size()); }

private:
    class Node;

    void findNodes();
    void read(const QString &path);

    const InputNodes m_nodes;
    std::unique_ptr<QFileSystemWatcher> m_folder;
    /// By path.
    std::map<QString, std::unique_ptr<Node>> m_open;
    Listeners<long> m_monitors;
};

} // namespace brindle
