#pragma once

#include "contract/workspace/DesktopFolder.h"
#include "contract/workspace/WorkspaceWorld.h"
#include "foundation/SystemScheduler.h"
#include "platform/linux/applications/XdgWorkspace.h"

#include <QProcess>

#include <map>
#include <memory>

namespace brindle::test {

/// A desktop of the test's own: its entries, its configuration, and real processes.
class XdgWorkspaceWorld : public WorkspaceWorld
{
public:
    XdgWorkspaceWorld();
    ~XdgWorkspaceWorld() override;

    Workspace &port() override { return *m_port; }
    void install(const QString &identifier, const QString &name) override;
    void start(const QString &identifier) override;
    void end(const QString &identifier) override;
    bool wasOpened(const QUrl &url) override;

    /// A program that notes how it was started, and ends.
    QString notingProgram() const;
    /// What it noted, one argument in a line; waits for it. Empty when it was never started.
    QByteArray noted() const;
    /// Looks at the desktop as a program does that starts now.
    void startAnew();

    DesktopFolder folder;

private:
    SystemScheduler m_time;
    std::unique_ptr<XdgWorkspace> m_port;
    std::map<QString, QProcess> m_processes;
};

} // namespace brindle::test
