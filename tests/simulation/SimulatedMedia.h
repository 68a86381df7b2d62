#pragma once

#include "simulation/Trail.h"
#include "support/FakeAdapter.h"

namespace brindle::simulation {

/// What plays on the machine: the adapter's child with what it writes, the applications with what they answer
/// to scripts, and the output's level.
class SimulatedMedia
{
public:
    explicit SimulatedMedia(FakePlatform &platform);

    bool isAdapterRunning() const { return m_adapter.isRunning(); }
    /// The applications that ever answer, by bundle identifier.
    static QStringList scriptedApplications();
    /// When the output's level changed last.
    double volumeTurnedAt() const { return m_volumeTurnedAt; }

    void report(const Event &event);
    /// The child ends, and mostly a new one can be started.
    void endAdapter(const Event &event);
    void answerScripts(const Event &event);
    /// Scripts hang, or run again.
    void hangScripts(const Event &event);
    void turnVolume(const Event &event);

private:
    QJsonObject payload(const Event &event) const;

    FakePlatform &m_platform;
    FakeAdapter m_adapter;
    QByteArray m_unwritten;
    double m_volumeTurnedAt = 0;
};

} // namespace brindle::simulation
