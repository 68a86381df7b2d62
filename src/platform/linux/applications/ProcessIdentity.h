#pragma once

#include <QString>

#include <optional>

namespace brindle {

/// What a process is, as far as the system vouches for it.
struct ProcessIdentity
{
    /// The path of its program, as the process itself sees it.
    QString executable;
    /// The Flatpak that it runs in; empty outside of any.
    QString flatpak;
};

/// Absent when the process is gone, or is somebody else's. `folder` is the process's folder in "/proc". Any
/// thread; waits for nobody.
std::optional<ProcessIdentity> identityOfProcess(const QString &folder);

} // namespace brindle
