#pragma once

#include "contract/process/ChildWorld.h"
#include "platform/fake/FakeMedia.h"

namespace brindle::test {

class FakeChildWorld : public ChildWorld
{
public:
    ChildProcesses &port() override { return m_processes; }
    Launch obedientProgram() override { return {QStringLiteral("/bin/obedient"), {}, {}, {}, {}}; }
    void refuse(Launch &) override { m_processes.refusesLaunch = true; }

    void write(const QByteArray &text) override { child().writeOutput(text); }
    void writeError(const QByteArray &text) override { child().writeError(text); }
    void exit() override { child().exit(); }
    void obeyTermination() override
    {
        if (child().isTerminated)
            child().exit();
    }

private:
    FakeChildProcesses::Child &child() { return *m_processes.children.back(); }

    FakeChildProcesses m_processes;
};

} // namespace brindle::test
