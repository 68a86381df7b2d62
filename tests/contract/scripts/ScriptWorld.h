#pragma once

#include "media/BrowserScripts.h"
#include "media/PlayerScripts.h"
#include "platform/fake/FakeMedia.h"

#include <QRegularExpression>
#include <QStringList>

namespace brindle::test {

inline const BrowserDescriptor chromium{
    QStringLiteral("org.chromium.Chromium"), QStringLiteral("Chromium"), BrowserFamily::chromium};

/// What a tab's own JavaScript would say.
inline QString mediaState(bool isPlaying, const QString &title)
{
    return QStringList{isPlaying ? QStringLiteral("1") : QStringLiteral("0"), title,
        QStringLiteral("https://films.example/watch?v=abc"), QStringLiteral("60"), QStringLiteral("7")}
        .join(QChar(31));
}

/// What a player has on.
struct Song
{
    QString title = QStringLiteral("Song");
    QString artist = QStringLiteral("Band");
    QString album = QStringLiteral("Album");
    double milliseconds = 215'000;
    double position = 12.5; // seconds
    QString state = QStringLiteral("playing");
    QString artwork = QStringLiteral("https://pictures.example/a.jpg");

    /// As a script tells it.
    ScriptDescriptor descriptor() const
    {
        return ScriptDescriptor::list(
            {ScriptDescriptor::text(title), ScriptDescriptor::text(artist), ScriptDescriptor::text(album),
                ScriptDescriptor::number(milliseconds), ScriptDescriptor::number(position),
                ScriptDescriptor::text(state), ScriptDescriptor::text(artwork)});
    }
};

/// Applications that are asked by script, and the hand that works them.
class ScriptWorld
{
public:
    virtual ~ScriptWorld() = default;

    /// Runs it as the program does: not on the main thread.
    virtual ScriptOutcome run(const QString &source) = 0;
    virtual void spotifyPlays(const Song &song) = 0;
    virtual void spotifyStops() = 0;
    /// Chromium's tabs say this, in their order.
    virtual void tabsSay(const QStringList &states) = 0;
    /// The commands that Spotify got.
    virtual QStringList commands() = 0;
};

class FakeScriptWorld : public ScriptWorld
{
public:
    ScriptOutcome run(const QString &source) override { return m_port.run(source); }
    void spotifyPlays(const Song &song) override
    {
        answer(PlayerScripts::nowPlaying(PlayerScripts::spotify), song.descriptor());
        answer(PlayerScripts::togglePlayback(PlayerScripts::spotify), std::nullopt);
        answer(PlayerScripts::seek(30.5, PlayerScripts::spotify), std::nullopt);
    }
    void spotifyStops() override
    {
        answer(PlayerScripts::nowPlaying(PlayerScripts::spotify), ScriptDescriptor::missing());
    }
    void tabsSay(const QStringList &states) override
    {
        QString chosen = states.filter(QRegularExpression(QStringLiteral("^1"))).value(0);
        if (chosen.isEmpty())
            chosen = states.filter(QRegularExpression(QStringLiteral("."))).value(0);
        answer(BrowserScripts::nowPlaying(chromium), ScriptDescriptor::text(chosen));
    }
    QStringList commands() override
    {
        QStringList commands;
        for (const QString &source : std::as_const(m_port.sources)) {
            if (source.endsWith(u"playpause"))
                commands.append(QStringLiteral("PlayPause"));
            if (source.contains(u"player position to"))
                commands.append(QStringLiteral("SetPosition ") + source.section(u' ', -1));
        }
        return commands;
    }

private:
    void answer(const QString &source, const std::optional<ScriptDescriptor> &result)
    {
        m_port.answers[source] = {ScriptOutcome::Status::executed, result};
    }

    FakeScriptRunner m_port;
};

} // namespace brindle::test
