#pragma once

#include "platform/fake/FakeMedia.h"

namespace brindle::test {

/// A desktop with applications, and the hand that installs and starts them.
class WorkspaceWorld
{
public:
    virtual ~WorkspaceWorld() = default;

    virtual Workspace &port() = 0;
    /// Installs an application that has an icon, and returns when the port knows.
    virtual void install(const QString &identifier, const QString &name) = 0;
    /// Starts one process of it, or ends it.
    virtual void start(const QString &identifier) = 0;
    virtual void end(const QString &identifier) = 0;
    /// Whether the application at `url` has been opened, now or in a moment.
    virtual bool wasOpened(const QUrl &url) = 0;
};

class FakeWorkspaceWorld : public WorkspaceWorld
{
public:
    Workspace &port() override { return m_port; }
    void install(const QString &identifier, const QString &name) override
    {
        m_port.install(identifier, name);
    }
    void start(const QString &identifier) override { m_port.running.insert(identifier); }
    void end(const QString &identifier) override { m_port.running.remove(identifier); }
    bool wasOpened(const QUrl &url) override { return m_port.opened.contains(url); }

private:
    FakeWorkspace m_port;
};

} // namespace brindle::test
