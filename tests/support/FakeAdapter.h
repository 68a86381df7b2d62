#pragma once

#include "platform/fake/FakePlatform.h"

#include <QDir>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>

namespace brindle {

/// Puts the now-playing adapter where the program looks for it, and speaks for its child.
class FakeAdapter
{
public:
    explicit FakeAdapter(FakePlatform &platform) : m_platform(platform)
    {
        QDir(m_frameworks.path()).mkdir(QStringLiteral("MediaRemoteAdapter.framework"));
        platform.resources.resources.insert(
            QStringLiteral("mediaremote-adapter.pl"), QStringLiteral("/resources/mediaremote-adapter.pl"));
        platform.resources.frameworks = m_frameworks.path();
    }

    bool isRunning() const { return child() != nullptr; }
    /// Writes the whole of what plays, for the program to read on its next turn.
    void report(const QJsonObject &payload) const { write(line(payload)); }
    static QByteArray line(const QJsonObject &payload)
    {
        const QJsonObject line{{QStringLiteral("diff"), false}, {QStringLiteral("payload"), payload}};
        return QJsonDocument(line).toJson(QJsonDocument::Compact) + '\n';
    }
    void write(const QByteArray &bytes) const
    {
        if (const auto running = child())
            running->writeOutput(bytes);
    }
    void end() const
    {
        if (const auto running = child())
            running->exit();
    }
    /// "send 1", "seek 12500000", in the order in which they were run.
    QStringList commands() const
    {
        QStringList found;
        for (const auto &process : m_platform.processes.children) {
            if (const QStringList arguments = process->launch().arguments.mid(2); !isStream(arguments))
                found.append(arguments.join(u' '));
        }
        return found;
    }

private:
    static bool isStream(const QStringList &arguments)
    {
        return arguments.value(0) == QStringLiteral("stream");
    }
    std::shared_ptr<FakeChildProcesses::Child> child() const
    {
        for (const auto &process : m_platform.processes.children) {
            if (isStream(process->launch().arguments.mid(2)) && process->isRunning()
                && !process->isTerminated)
                return process;
        }
        return nullptr;
    }

    FakePlatform &m_platform;
    QTemporaryDir m_frameworks;
};

} // namespace brindle
