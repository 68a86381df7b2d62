#pragma once

#include "platform/fake/FakeMedia.h"

#include <QMap>

#include <numeric>

namespace brindle::test {

/// A machine with a sound server, seen through the port, and the hand on its mixer.
class AudioWorld
{
public:
    virtual ~AudioWorld() = default;

    virtual AudioOutput &port() = 0;
    /// The server comes up with two outputs of two channels, "front" and "back", both at 50 % and "front" the
    /// default one.
    virtual void comeUp() = 0;
    virtual void goDown() = 0;
    /// Per cent for each channel, or one for all.
    virtual void setVolume(const QString &output, const QList<double> &channels) = 0;
    virtual void setMuted(const QString &output, bool muted) = 0;
    virtual void makeDefault(const QString &output) = 0;
    virtual void remove(const QString &output) = 0;
};

class FakeAudioWorld : public AudioWorld
{
public:
    AudioOutput &port() override { return m_port; }
    void comeUp() override
    {
        m_outputs = {{QStringLiteral("front"), {0.5, false}}, {QStringLiteral("back"), {0.5, false}}};
        makeDefault(QStringLiteral("front"));
    }
    void goDown() override
    {
        m_outputs.clear();
        update();
    }
    void setVolume(const QString &output, const QList<double> &channels) override
    {
        const double sum = std::accumulate(channels.begin(), channels.end(), 0.0,
            [](double before, double channel) { return before + std::min(channel, 100.0); });
        m_outputs[output].level = sum / double(channels.size()) / 100;
        update();
    }
    void setMuted(const QString &output, bool muted) override
    {
        m_outputs[output].muted = muted;
        update();
    }
    void makeDefault(const QString &output) override
    {
        m_default = output;
        update();
    }
    void remove(const QString &output) override
    {
        m_outputs.remove(output);
        m_default = m_outputs.firstKey();
        update();
    }

private:
    void update()
    {
        const std::optional<OutputLevel> level =
            m_outputs.isEmpty() ? std::nullopt : std::optional(m_outputs.value(m_default));
        if (level != m_port.level())
            m_port.set(level);
    }

    FakeAudioOutput m_port;
    QMap<QString, OutputLevel> m_outputs;
    QString m_default;
};

} // namespace brindle::test
