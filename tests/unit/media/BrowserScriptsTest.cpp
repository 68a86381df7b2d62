#include "media/BrowserScripts.h"

#include <gtest/gtest.h>

namespace brindle {
namespace {

using namespace Qt::StringLiterals;

constexpr Date now = Date::fromSecondsSince1970(1'800'000'000);
const BrowserDescriptor chrome{u"com.google.Chrome"_s, u"Google Chrome"_s, BrowserFamily::chromium};
const BrowserDescriptor safari{u"com.apple.Safari"_s, u"Safari"_s, BrowserFamily::safari};
const VideoHosts hosts{u"thumbnails.example"_s, u"short.example"_s};

std::optional<NowPlayingTrack> read(const QStringList &parts)
{
    return BrowserScripts::track(parts.join(QChar(31)), chrome, hosts, now);
}

std::optional<NowPlayingTrack> readPage(const QString &address)
{
    return read({u"1"_s, u"A page"_s, address, u"60"_s, u"1"_s});
}

std::string thumbnail(const QString &page)
{
    const auto url = BrowserScripts::thumbnail(QUrl(page), hosts);
    return url ? url->toString(QUrl::FullyEncoded).toStdString() : "none";
}

TEST(BrowserScripts, ABrowserOfTheChromiumFamilyIsAskedInTheseWords)
{
    EXPECT_EQ(
        BrowserScripts::nowPlaying(chrome).toStdString(), R"script(tell application id "com.google.Chrome"
    set pausedCandidate to ""
    repeat with browserWindow in windows
        repeat with browserTab in tabs of browserWindow
            try
                set mediaState to execute browserTab javascript "(() => {const a=[...document.querySelectorAll('video,audio')];const m=a.find(x=>!x.paused&&!x.ended)||a.find(x=>x.readyState>0);if(!m)return '';return [(!m.paused&&!m.ended)?'1':'0',document.title,location.href,Number.isFinite(m.duration)?m.duration:0,m.currentTime||0].join(String.fromCharCode(31));})()"
                if mediaState starts with "1" then return mediaState
                if mediaState is not "" and pausedCandidate is "" then set pausedCandidate to mediaState
            end try
        end repeat
    end repeat
    return pausedCandidate
end tell)script");
}

TEST(BrowserScripts, ABrowserOfTheSafariFamilyIsAskedInTheseWords)
{
    EXPECT_EQ(
        BrowserScripts::nowPlaying(safari).toStdString(), R"script(tell application id "com.apple.Safari"
    set pausedCandidate to ""
    repeat with browserWindow in windows
        repeat with browserTab in tabs of browserWindow
            try
                set mediaState to do JavaScript "(() => {const a=[...document.querySelectorAll('video,audio')];const m=a.find(x=>!x.paused&&!x.ended)||a.find(x=>x.readyState>0);if(!m)return '';return [(!m.paused&&!m.ended)?'1':'0',document.title,location.href,Number.isFinite(m.duration)?m.duration:0,m.currentTime||0].join(String.fromCharCode(31));})()" in browserTab
                if mediaState starts with "1" then return mediaState
                if mediaState is not "" and pausedCandidate is "" then set pausedCandidate to mediaState
            end try
        end repeat
    end repeat
    return pausedCandidate
end tell)script");
}

TEST(BrowserScripts, JavaScriptIsEscapedBackslashesFirst)
{
    EXPECT_EQ(BrowserScripts::escaped(u"a\\n \"b\"\nc"_s).toStdString(), R"(a\\n \"b\" c)");
}

TEST(BrowserScripts, AnAnswerBecomesATrack)
{
    const auto track =
        read({u"1"_s, u"A film"_s, u"https://films.example/watch?n=1"_s, u"60.5"_s, u"7.25"_s});
    ASSERT_TRUE(track);
    NowPlayingTrack expected;
    expected.title = u"A film"_s;
    expected.artist = u"films.example"_s;
    expected.duration = 60.5;
    expected.elapsed = 7.25;
    expected.isPlaying = true;
    expected.playbackRate = 1;
    expected.sourceName = u"Google Chrome"_s;
    expected.sourceBundleIdentifier = u"com.google.Chrome"_s;
    EXPECT_EQ(*track, expected);
    EXPECT_EQ(track->elapsedUpdatedAt, now);
    EXPECT_FALSE(track->sourceIcon);
}

TEST(BrowserScripts, APausedElementGivesATrackThatIsNotPlaying)
{
    const auto track = read({u"0"_s, u"A film"_s, u"https://films.example/"_s, u"60"_s, u"7"_s});
    ASSERT_TRUE(track);
    EXPECT_FALSE(track->isPlaying);
    EXPECT_EQ(track->playbackRate, 1);
}

TEST(BrowserScripts, FewerThanFivePartsGiveNoTrack)
{
    EXPECT_FALSE(read({}));
    EXPECT_FALSE(read({u"1"_s, u"A film"_s, u"https://films.example/"_s, u"60"_s}));
    EXPECT_TRUE(read({u"1"_s, u"A film"_s, u"https://films.example/"_s, u"60"_s, u"7"_s, u"more"_s}));
}

TEST(BrowserScripts, APageOfAnotherSchemeThanHttpAndHttpsGivesNoTrack)
{
    for (const auto &address :
        {u"chrome://media-internals/"_s, u"file:///home/me/film.webm"_s, u"about:blank"_s,
            u"data:text/html,x"_s, u"httpx://a.example/"_s, u"films.example"_s, u"//films.example/"_s, u""_s})
        EXPECT_FALSE(readPage(address)) << address.toStdString();
    EXPECT_TRUE(readPage(u"http://films.example/"_s));
    EXPECT_TRUE(readPage(u"HTTPS://films.example/"_s));
}

TEST(BrowserScripts, WhatIsNoAddressGivesNoTrack)
{
    EXPECT_FALSE(readPage(u"https://[1:2"_s));
    EXPECT_FALSE(readPage(u"https://films.example:port/"_s));
}

TEST(BrowserScripts, CharactersThatABrowserLeavesInAnAddressDoNoHarm)
{
    EXPECT_TRUE(readPage(u"https://films.example/?q=a|b^{c}"_s));
}

TEST(BrowserScripts, TheHostStandsForTheArtist)
{
    EXPECT_EQ(readPage(u"https://user@films.example:8443/a"_s)->artist, u"films.example"_s);
    EXPECT_EQ(readPage(u"https://xn--bcher-kva.example/"_s)->artist, u"xn--bcher-kva.example"_s);
    const auto hostless = readPage(u"http:///a"_s);
    EXPECT_TRUE(!hostless || !hostless->artist);
}

TEST(BrowserScripts, ALiveStreamHasNoDuration)
{
    EXPECT_FALSE(read({u"1"_s, u"Live"_s, u"https://films.example/"_s, u"0"_s, u"7"_s})->duration);
}

TEST(BrowserScripts, OnlyWholeNumbersTextsCountAsNumbers)
{
    const auto with = [](const QString &duration, const QString &position) {
        return *read({u"1"_s, u"A film"_s, u"https://films.example/"_s, duration, position});
    };
    EXPECT_EQ(with(u"1e2"_s, u"0"_s).duration, 100.0);
    EXPECT_EQ(with(u"1e2"_s, u"0"_s).elapsed, 0.0);
    for (const auto &text :
        {u""_s, u"60s"_s, u" 60"_s, u"60 "_s, u"1,5"_s, u"nan"_s, u"inf"_s, u"Infinity"_s, u"-"_s}) {
        EXPECT_FALSE(with(text, u"1"_s).duration) << text.toStdString();
        EXPECT_FALSE(with(u"1"_s, text).elapsed) << text.toStdString();
    }
    EXPECT_FALSE(with(u"-60"_s, u"1"_s).duration);
    EXPECT_EQ(with(u"60"_s, u"-1"_s).elapsed, -1.0);
}

TEST(BrowserScripts, ADocumentWithoutATitleGivesAnEmptyOne)
{
    const auto track = read({u"1"_s, u""_s, u"https://films.example/"_s, u"60"_s, u"7"_s});
    ASSERT_TRUE(track);
    EXPECT_EQ(track->title, QString());
}

TEST(BrowserScripts, WhatVideoSitesAppendToATitleIsTakenAway)
{
    EXPECT_EQ(BrowserScripts::cleanTitle(u"A film - YouTube"_s), u"A film"_s);
    EXPECT_EQ(BrowserScripts::cleanTitle(u"A film | Netflix"_s), u"A film"_s);
    EXPECT_EQ(BrowserScripts::cleanTitle(u"A film - Twitch"_s), u"A film"_s);
    EXPECT_EQ(BrowserScripts::cleanTitle(u"A film - YouTube - more"_s), u"A film - YouTube - more"_s);
    EXPECT_EQ(BrowserScripts::cleanTitle(u" A film  - YouTube"_s), u" A film "_s) << "nothing is trimmed";
    EXPECT_EQ(BrowserScripts::cleanTitle(u"A film - YouTube - YouTube"_s), u"A film - YouTube"_s);
    EXPECT_EQ(read({u"1"_s, u"A film - YouTube"_s, u"https://films.example/"_s, u"1"_s, u"1"_s})->title,
        u"A film"_s);
}

TEST(BrowserScripts, OfTwoSuffixesBothGoOnlyInTheOrderInWhichTheyAreTried)
{
    EXPECT_EQ(BrowserScripts::cleanTitle(u"A film - Twitch | Netflix"_s), u"A film"_s);
    EXPECT_EQ(BrowserScripts::cleanTitle(u"A film | Netflix - Twitch"_s), u"A film | Netflix"_s);
}

TEST(BrowserScripts, AShortLinkNamesItsVideoByThePath)
{
    EXPECT_EQ(thumbnail(u"https://short.example/abc"_s), "https://thumbnails.example/vi/abc/hqdefault.jpg");
    EXPECT_EQ(thumbnail(u"https://SHORT.example/abc/def?v=no"_s),
        "https://thumbnails.example/vi/abc/hqdefault.jpg");
    EXPECT_EQ(thumbnail(u"https://short.example/"_s), "none");
    EXPECT_EQ(thumbnail(u"https://short.example"_s), "none");
    EXPECT_EQ(thumbnail(u"https://short.example/?v=abc"_s), "none");
}

TEST(BrowserScripts, AQueryItemNamesTheVideoOnAnyHost)
{
    EXPECT_EQ(thumbnail(u"https://films.example/watch?v=abc&t=3"_s),
        "https://thumbnails.example/vi/abc/hqdefault.jpg");
    EXPECT_EQ(thumbnail(u"http://other.example/?t=3&v=abc&v=def"_s),
        "https://thumbnails.example/vi/abc/hqdefault.jpg");
    EXPECT_EQ(thumbnail(u"https://films.example/watch?v=&v=def"_s), "none");
    EXPECT_EQ(thumbnail(u"https://films.example/watch?vv=abc"_s), "none");
    EXPECT_EQ(thumbnail(u"https://films.example/watch"_s), "none");
}

TEST(BrowserScripts, APageUnderShortsIsNamedByThatWord)
{
    EXPECT_EQ(thumbnail(u"https://films.example/shorts/abc?v=def"_s),
        "https://thumbnails.example/vi/shorts/hqdefault.jpg");
    EXPECT_EQ(thumbnail(u"https://films.example/Shorts/abc"_s),
        "https://thumbnails.example/vi/Shorts/hqdefault.jpg");
    EXPECT_EQ(thumbnail(u"https://films.example/shorts?v=def"_s),
        "https://thumbnails.example/vi/def/hqdefault.jpg");
}

TEST(BrowserScripts, AVideoIsOneComponentOfTheThumbnailsPath)
{
    EXPECT_EQ(thumbnail(u"https://films.example/?v=a%2F..%2Fb%3Fc%23d"_s),
        "https://thumbnails.example/vi/a%2F..%2Fb%3Fc%23d/hqdefault.jpg");
    EXPECT_EQ(
        thumbnail(u"https://films.example/?v=%25"_s), "https://thumbnails.example/vi/%25/hqdefault.jpg");
}

TEST(BrowserScripts, WithoutAHostForThemThereAreNoThumbnails)
{
    EXPECT_FALSE(BrowserScripts::thumbnail(QUrl(u"https://films.example/?v=abc"_s), {}));
    EXPECT_FALSE(BrowserScripts::thumbnail(QUrl(u"https:///abc?v=a"_s), {}));
}

TEST(BrowserScripts, ATrackHasTheThumbnailOfItsPage)
{
    EXPECT_EQ(readPage(u"https://films.example/watch?v=abc"_s)->artworkURL,
        QUrl(u"https://thumbnails.example/vi/abc/hqdefault.jpg"_s));
    EXPECT_FALSE(readPage(u"https://films.example/"_s)->artworkURL);
}

} // namespace
} // namespace brindle
