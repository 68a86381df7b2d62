#include "platform/linux/process/LinuxChildProcesses.h"

namespace brindle {

std::shared_ptr<ChildProcess> LinuxChildProcesses::launch(Launch launch)
{
    auto spawned =
        spawn(launch.executable, launch.arguments, bool(launch.standardOutput), bool(launch.standardError));
    if (!spawned)
        return nullptr;
    auto child = std::make_shared<LinuxChild>(std::move(*spawned), std::move(launch));
    if (m_watcher.watch(child))
        return child;
    child->kill();
    return nullptr;
}

} // namespace brindle
