#pragma once

#include "platform/ChildProcesses.h"
#include "platform/linux/process/ChildWatcher.h"

namespace brindle {

/// Starts programs on Linux, which tells of their ends by descriptors (5.3 and later).
///
/// When it goes, the programs go on; their handles stay good, and no handler is called any more. A program
/// that reads its own standard output's state learns of this one's end, however that came: the other end is
/// gone.
class LinuxChildProcesses final : public ChildProcesses
{
public:
    std::shared_ptr<ChildProcess> launch(Launch launch) override;

private:
    ChildWatcher m_watcher;
};

} // namespace brindle
