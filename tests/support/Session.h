#pragma once

#include "core/AppContainer.h"
#include "media/MediaProvider.h"
#include "platform/fake/FakePlatform.h"

namespace brindle {

/// A player that counts what it is told.
class ScriptedMedia final : public MediaProvider
{
public:
    std::optional<NowPlayingTrack> track;
    double volume = 0;
    int toggles = 0;
    int previouses = 0;
    int nexts = 0;
    QList<double> seeks;

    const std::optional<NowPlayingTrack> &nowPlaying() const override { return track; }
    double outputVolume() const override { return volume; }
    void togglePlayback() override { ++toggles; }
    void seek(double seconds) override { seeks.append(seconds); }
    void previousTrack() override { ++previouses; }
    void nextTrack() override { ++nexts; }
};

/// The whole program's services on a machine in memory, with the words that tests tell their stories in.
struct Session
{
    FakePlatform platform;
    /// The container owns it.
    ScriptedMedia *media = new ScriptedMedia;
    AppContainer container{platform, std::unique_ptr<MediaProvider>(media)};

    void advance(double seconds) { platform.time.advance(seconds); }
    /// Runs what waits for the next turn, with no time passing.
    void turn() { platform.time.runPosted(); }
    Date now() const { return platform.time.now(); }

    void pressPrimaryButton() { platform.input.buttons |= 1; }
    void releaseButtons() { platform.input.buttons = 0; }

    /// Moves the pointer and tells as much to everyone.
    void movePointer(QPointF location)
    {
        platform.input.location = location;
        sendGlobal(EventKind::mouseMoved);
        turn();
    }
    void sendGlobal(EventKind kind) { platform.input.sendGlobal(eventOf(kind)); }
    EventMonitors::Disposition sendLocal(EventKind kind) { return sendLocal(eventOf(kind)); }
    EventMonitors::Disposition sendLocal(const InputEvent &event) { return platform.input.sendLocal(event); }
    qsizetype monitors() const
    {
        return platform.input.globalMonitorCount() + platform.input.localMonitorCount();
    }

    void toggleIsland() { platform.notificationCenter.post(toggleIslandNotification); }
    FakePanelWindow &panel() const { return *platform.panel; }

    static InputEvent eventOf(EventKind kind)
    {
        InputEvent event;
        event.kind = kind;
        return event;
    }
};

} // namespace brindle
