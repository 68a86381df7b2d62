#include "adapter/linux/Payload.h"

#include <gmock/gmock.h>

namespace brindle::adapter {
namespace {

using namespace Qt::StringLiterals;

const Date start = Date::fromSecondsSince1970(1795248930.25);

PlayerState playing()
{
    PlayerState state;
    state.status = PlaybackStatus::playing;
    state.rate = 1.5;
    state.track.title = u"Song"_s;
    state.track.artist = u"Ann"_s;
    state.track.album = u"Album"_s;
    state.track.duration = 200.5;
    return state;
}

PlaybackPosition positionAt(double elapsed)
{
    PlaybackPosition position;
    position.read(elapsed, start);
    return position;
}

TEST(Payload, HasTheKeysOfTheWire)
{
    const PlayerState state = playing();
    const PlaybackPosition position = positionAt(12);
    const Payload payload = makePayload({7, u"player"_s, state, position, "cGljdHVyZQ=="});
    EXPECT_EQ(payload.player, 7U);
    EXPECT_EQ(payload.fields,
        (QJsonObject{{u"title"_s, u"Song"_s}, {u"artist"_s, u"Ann"_s}, {u"album"_s, u"Album"_s},
            {u"bundleIdentifier"_s, u"player"_s}, {u"duration"_s, 200.5}, {u"playing"_s, true},
            {u"playbackRate"_s, 1.5}}));
    EXPECT_EQ(payload.position->anchor.elapsed, 12);
    EXPECT_EQ(payload.position->anchor.at, start);
    EXPECT_EQ(payload.artwork, "cGljdHVyZQ==");
}

TEST(Payload, LeavesOutWhatThePlayerDoesNotTell)
{
    const Payload payload = makePayload({7, {}, PlayerState(), PlaybackPosition(), {}});
    EXPECT_EQ(payload.fields, (QJsonObject{{u"playing"_s, false}, {u"playbackRate"_s, 0}}));
    EXPECT_FALSE(payload.position);
}

TEST(Payload, OfAPausedPlayerStandsStill)
{
    PlayerState state = playing();
    state.status = PlaybackStatus::paused;
    const Payload payload = makePayload({7, {}, state, PlaybackPosition(), {}});
    EXPECT_EQ(payload.fields.value(u"playing"), false);
    EXPECT_EQ(payload.fields.value(u"playbackRate"), 0);
}

TEST(Payload, NoPositionLiesBehindTheEnd)
{
    const PlayerState state = playing();
    const PlaybackPosition position = positionAt(1000);
    EXPECT_EQ(makePayload({7, {}, state, position, {}}).position->anchor.elapsed, 200.5);
}

TEST(Payload, TimeIsWrittenInUtcWithItsFraction)
{
    EXPECT_EQ(timestampText(start), u"2026-11-21T08:15:30.250Z");
    EXPECT_EQ(timestampText(Date::fromSecondsSince1970(1795248930)), u"2026-11-21T08:15:30.000Z");
}

} // namespace
} // namespace brindle::adapter
