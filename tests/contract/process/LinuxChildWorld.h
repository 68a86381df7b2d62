#pragma once

#include "contract/process/ChildWorld.h"
#include "platform/linux/process/LinuxChildProcesses.h"

#include <QFile>
#include <QTemporaryDir>

namespace brindle::test {

/// A shell that runs the lines of a named pipe.
class LinuxChildWorld : public ChildWorld
{
public:
    LinuxChildWorld();

    ChildProcesses &port() override { return m_processes; }
    Launch obedientProgram() override;
    void refuse(Launch &launch) override;

    void write(const QByteArray &text) override;
    void writeError(const QByteArray &text) override;
    void exit() override { tell("exit"); }
    void obeyTermination() override { }

    /// Has the shell run a line.
    void tell(const QByteArray &line);

private:
    QTemporaryDir m_folder;
    QFile m_orders;
    LinuxChildProcesses m_processes;
};

} // namespace brindle::test
