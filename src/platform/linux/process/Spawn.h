#pragma once

#include "platform/linux/process/FileDescriptor.h"

#include <QString>
#include <QStringList>

#include <optional>

namespace brindle {

/// A program that was just started, by the descriptors that tell of it.
struct SpawnedProcess
{
    /// Readable once the program has ended. Who holds it must have it reaped.
    FileDescriptor process;
    /// The ends to read from, which do not block. None where nobody wants to.
    FileDescriptor standardOutput;
    FileDescriptor standardError;
};

/// Starts `executable` with nothing to read, its signals as a shell would give them, and no descriptor of
/// this program but the three of its own. Absent when any of it fails, then nothing is left behind. Any
/// thread.
std::optional<SpawnedProcess> spawn(
    const QString &executable, const QStringList &arguments, bool wantsOutput, bool wantsError);

/// Takes what is left of a program that has ended. Waits for its end first, but for `flags` with WNOHANG.
void reap(const FileDescriptor &process, int flags = 0);

} // namespace brindle
