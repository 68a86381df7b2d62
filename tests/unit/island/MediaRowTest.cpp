#include "core/AppContainer.h"
#include "core/SettingsStore.h"
#include "island/CollapsedContent.h"
#include "island/IslandPanelController.h"
#include "island/IslandPresenter.h"
#include "island/MediaPresentation.h"
#include "media/MediaProvider.h"
#include "support/FakeAdapter.h"

#include <gtest/gtest.h>

namespace brindle {
namespace {

/// The island and the program's own media service, with an adapter that a test speaks for.
class MediaRow : public testing::Test
{
protected:
    MediaRow()
    {
        platform.audio.set(OutputLevel{0.5, false});
        container.start();
        controller.show();
        platform.time.runPosted();
    }
    ~MediaRow() override { container.stop(); }

    void reports(bool isPlaying)
    {
        adapter.report({{QStringLiteral("title"), QStringLiteral("Song")},
            {QStringLiteral("bundleIdentifier"), QStringLiteral("mpv")},
            {QStringLiteral("playing"), isPlaying}});
        platform.time.runPosted();
    }
    MediaPresentation row() { return presenter.collapsed()->row().content.value<MediaPresentation>(); }
    EventMonitors::Disposition pressSpace()
    {
        InputEvent key;
        key.kind = EventKind::keyDown;
        key.keyCode = KeyCode::space;
        const auto disposition = platform.input.sendLocal(key);
        platform.time.runPosted();
        return disposition;
    }

    FakePlatform platform;
    FakeAdapter adapter{platform};
    AppContainer container{platform};
    IslandPanelController controller{container};
    IslandPresenter presenter{controller.viewModel()};
};

TEST_F(MediaRow, TheClosedIslandShowsWhatTheAdapterReports)
{
    EXPECT_EQ(presenter.collapsed()->row().key, QStringLiteral("idle"));
    reports(true);
    EXPECT_EQ(presenter.collapsed()->row().key, QStringLiteral("media"));
    EXPECT_EQ(row().title, QStringLiteral("Song"));
    EXPECT_TRUE(row().isPlaying);
    reports(false);
    EXPECT_FALSE(row().isPlaying);
    adapter.report({});
    platform.time.runPosted();
    EXPECT_EQ(presenter.collapsed()->row().key, QStringLiteral("idle"));
}

TEST_F(MediaRow, TheBarsFollowTheOutputsLevel)
{
    reports(true);
    EXPECT_EQ(presenter.collapsed()->outputVolume(), 0.5);
    platform.audio.set(OutputLevel{0.8, false});
    platform.time.advance(0.16);
    EXPECT_EQ(presenter.collapsed()->outputVolume(), 0.8);
    platform.audio.set(OutputLevel{0.8, true});
    platform.time.advance(0.16);
    EXPECT_EQ(presenter.collapsed()->outputVolume(), 0);
}

TEST_F(MediaRow, SpaceInTheOpenIslandPausesAndPlays)
{
    reports(true);
    controller.viewModel().expand();
    platform.time.runPosted();
    ASSERT_TRUE(platform.panel->isKeyWindow());
    EXPECT_EQ(pressSpace(), EventMonitors::Disposition::swallow);
    EXPECT_FALSE(row().isPlaying);
    EXPECT_EQ(pressSpace(), EventMonitors::Disposition::swallow);
    EXPECT_TRUE(row().isPlaying);
    EXPECT_EQ(adapter.commands(), (QStringList{QStringLiteral("send 1"), QStringLiteral("send 0")}));
}

TEST_F(MediaRow, NothingWakesUpWhileASongPlaysAndNothingChanges)
{
    reports(true);
    platform.time.advance(10);
    const auto wakeUps = platform.time.wakeUps();
    platform.time.advance(600);
    EXPECT_EQ(platform.time.wakeUps(), wakeUps);
}

} // namespace
} // namespace brindle
