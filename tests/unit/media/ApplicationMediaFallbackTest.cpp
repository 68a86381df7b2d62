#include "media/ApplicationMediaFallback.h"

#include "foundation/ManualScheduler.h"
#include "media/PlayerScripts.h"
#include "platform/fake/FakeDesktop.h"
#include "platform/fake/FakeMedia.h"

#include <gmock/gmock.h>

namespace brindle {
namespace {

using namespace Qt::StringLiterals;
using PlayerScripts::music;
using PlayerScripts::spotify;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr auto executed = ScriptOutcome::Status::executed;

class ApplicationMediaFallbackTest : public testing::Test
{
protected:
    void playerSays(const QString &player, const ScriptDescriptor &answer)
    {
        scripts.answers[PlayerScripts::nowPlaying(player)] = {executed, answer};
    }

    void playerPlays(const QString &player, const QString &state = u"playing"_s)
    {
        playerSays(player,
            ScriptDescriptor::list({ScriptDescriptor::text(u"Song"_s), ScriptDescriptor::text(u"Band"_s),
                ScriptDescriptor::text(u"Album"_s), ScriptDescriptor::number(215'000),
                ScriptDescriptor::number(3), ScriptDescriptor::text(state)}));
    }

    void browserSays(const BrowserDescriptor &browser, const QString &answer)
    {
        scripts.answers[BrowserScripts::nowPlaying(browser)] = {executed, ScriptDescriptor::text(answer)};
    }

    QStringList sources(const QSet<QString> &running)
    {
        QStringList sources;
        for (const auto &track : fallback.tracks(running))
            sources.append(*track.sourceBundleIdentifier);
        return sources;
    }

    static QString page(const QString &title)
    {
        return QStringList{u"1"_s, title, u"https://films.example/?v=abc"_s, u"60"_s, u"7"_s}.join(QChar(31));
    }

    ManualScheduler time;
    FakeScriptRunner scripts;
    FakeBundle bundle = configured();
    ApplicationMediaFallback fallback{scripts, time, bundle};

private:
    static FakeBundle configured()
    {
        FakeBundle bundle;
        bundle.info = {{u"BrindleThumbnailHost"_s, u"thumbnails.example"_s},
            {u"BrindleShortLinkHost"_s, u"short.example"_s}};
        return bundle;
    }
};

TEST_F(ApplicationMediaFallbackTest, KnowsTheseBrowsersInThisOrder)
{
    using enum BrowserFamily;
    EXPECT_THAT(fallback.browsers(),
        ElementsAre(BrowserDescriptor{u"com.apple.Safari"_s, u"Safari"_s, safari},
            BrowserDescriptor{u"com.google.Chrome"_s, u"Google Chrome"_s, chromium},
            BrowserDescriptor{u"com.google.Chrome.canary"_s, u"Chrome Canary"_s, chromium},
            BrowserDescriptor{u"com.microsoft.edgemac"_s, u"Microsoft Edge"_s, chromium},
            BrowserDescriptor{u"com.brave.Browser"_s, u"Brave Browser"_s, chromium},
            BrowserDescriptor{u"org.chromium.Chromium"_s, u"Chromium"_s, chromium},
            BrowserDescriptor{u"com.vivaldi.Vivaldi"_s, u"Vivaldi"_s, chromium},
            BrowserDescriptor{u"com.operasoftware.Opera"_s, u"Opera"_s, chromium},
            BrowserDescriptor{u"ru.yandex.desktop.yandex-browser"_s, u"Yandex Browser"_s, chromium},
            BrowserDescriptor{
                u"com.apple.SafariTechnologyPreview"_s, u"Safari Technology Preview"_s, safari}));
}

TEST_F(ApplicationMediaFallbackTest, AnApplicationThatDoesNotRunIsNeverAddressed)
{
    EXPECT_THAT(fallback.tracks({u"org.example.editor"_s}), IsEmpty());
    EXPECT_THAT(scripts.sources, IsEmpty());
    fallback.tracks({music});
    EXPECT_THAT(scripts.sources, ElementsAre(PlayerScripts::nowPlaying(music)));
}

TEST_F(ApplicationMediaFallbackTest, AsksThePlayersFirstAndThenTheBrowsersInTheirOrder)
{
    QSet<QString> running{spotify, music};
    QStringList expected{spotify, music};
    playerPlays(spotify);
    playerPlays(music);
    for (const BrowserDescriptor &browser : fallback.browsers()) {
        browserSays(browser, page(browser.name));
        running.insert(browser.bundle);
        expected.append(browser.bundle);
    }
    EXPECT_EQ(sources(running), expected);
    EXPECT_EQ(scripts.sources.size(), 12);
    EXPECT_EQ(scripts.sources.constFirst(), PlayerScripts::nowPlaying(spotify));
}

TEST_F(ApplicationMediaFallbackTest, AStoppedPlayerGivesNoTrackAndAPausedOneATrackThatIsNotPlaying)
{
    playerSays(music, ScriptDescriptor::missing());
    EXPECT_THAT(fallback.tracks({music}), IsEmpty());
    playerPlays(music, u"paused"_s);
    const auto tracks = fallback.tracks({music});
    ASSERT_EQ(tracks.size(), 1);
    EXPECT_FALSE(tracks[0].isPlaying);
}

TEST_F(ApplicationMediaFallbackTest, WhoFailsIsLeftOutAndSpoilsNothingForTheOthers)
{
    const BrowserDescriptor &chrome = fallback.browsers()[1];
    const BrowserDescriptor &edge = fallback.browsers()[3];
    scripts.answers[PlayerScripts::nowPlaying(spotify)] = {ScriptOutcome::Status::failed, {}};
    scripts.answers[PlayerScripts::nowPlaying(music)] = {ScriptOutcome::Status::notCompiled, {}};
    scripts.answers[BrowserScripts::nowPlaying(chrome)] = {executed, std::nullopt};
    browserSays(edge, page(u"A film"_s));
    EXPECT_THAT(sources({spotify, music, chrome.bundle, edge.bundle}), ElementsAre(edge.bundle));
}

TEST_F(ApplicationMediaFallbackTest, ABrowserWhoseAnswerIsNoTextGivesNoTrack)
{
    const BrowserDescriptor &chrome = fallback.browsers()[1];
    scripts.answers[BrowserScripts::nowPlaying(chrome)] = {
        executed, ScriptDescriptor::list({ScriptDescriptor::text(page(u"A film"_s))})};
    EXPECT_THAT(fallback.tracks({chrome.bundle}), IsEmpty());
    browserSays(chrome, QString());
    EXPECT_THAT(fallback.tracks({chrome.bundle}), IsEmpty());
}

TEST_F(ApplicationMediaFallbackTest, TracksHaveThePresentTime)
{
    playerPlays(music);
    const BrowserDescriptor &chrome = fallback.browsers()[1];
    browserSays(chrome, page(u"A film"_s));
    time.advance(77);
    for (const auto &track : fallback.tracks({music, chrome.bundle}))
        EXPECT_EQ(track.elapsedUpdatedAt, time.now());
}

TEST_F(ApplicationMediaFallbackTest, ThumbnailsComeFromTheConfiguredHost)
{
    const BrowserDescriptor &chrome = fallback.browsers()[1];
    browserSays(chrome, page(u"A film"_s));
    EXPECT_EQ(fallback.tracks({chrome.bundle})[0].artworkURL,
        QUrl(u"https://thumbnails.example/vi/abc/hqdefault.jpg"_s));
    browserSays(chrome,
        QStringList{u"1"_s, u"A film"_s, u"https://short.example/xyz"_s, u"60"_s, u"7"_s}.join(QChar(31)));
    EXPECT_EQ(fallback.tracks({chrome.bundle})[0].artworkURL,
        QUrl(u"https://thumbnails.example/vi/xyz/hqdefault.jpg"_s));
}

TEST_F(ApplicationMediaFallbackTest, OnlyThePlayersAreControllable)
{
    EXPECT_TRUE(fallback.isControllable(spotify));
    EXPECT_TRUE(fallback.isControllable(music));
    EXPECT_FALSE(fallback.isControllable(std::nullopt));
    EXPECT_FALSE(fallback.isControllable(u"COM.SPOTIFY.CLIENT"_s));
    for (const BrowserDescriptor &browser : fallback.browsers())
        EXPECT_FALSE(fallback.isControllable(browser.bundle));
}

TEST_F(ApplicationMediaFallbackTest, ACommandForABrowserReturnsFalseAndRunsNothing)
{
    EXPECT_FALSE(fallback.togglePlayback(u"com.google.Chrome"_s));
    EXPECT_FALSE(fallback.seek(3, u"com.google.Chrome"_s));
    EXPECT_FALSE(fallback.togglePlayback(std::nullopt));
    EXPECT_FALSE(fallback.seek(3, std::nullopt));
    EXPECT_THAT(scripts.sources, IsEmpty());
}

TEST_F(ApplicationMediaFallbackTest, ACommandRunsItsScriptAndTellsWhetherThatFailed)
{
    using enum ScriptOutcome::Status;
    const QString toggle = PlayerScripts::togglePlayback(spotify);
    for (const auto &[status, result] : {std::pair(executed, true), {notCompiled, true}, {failed, false}}) {
        scripts.answers[toggle] = {status, {}};
        EXPECT_EQ(fallback.togglePlayback(spotify), result);
    }
    EXPECT_THAT(scripts.sources, ElementsAre(toggle, toggle, toggle));
}

TEST_F(ApplicationMediaFallbackTest, APositionIsWrittenInSecondsForBothPlayers)
{
    fallback.seek(30.5, spotify);
    fallback.seek(-2, music);
    EXPECT_THAT(scripts.sources,
        ElementsAre(u"tell application id \"com.spotify.client\" to set player position to 30.5"_s,
            u"tell application id \"com.apple.Music\" to set player position to 0.0"_s));
}

} // namespace
} // namespace brindle
