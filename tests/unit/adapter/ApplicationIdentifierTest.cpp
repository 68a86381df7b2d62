#include "adapter/linux/ApplicationIdentifier.h"

#include <gmock/gmock.h>

namespace brindle::adapter {
namespace {

using namespace Qt::StringLiterals;

QString identifierOf(const PlayerOrigin &origin, const QString &installed = {})
{
    return applicationIdentifier(origin, [&installed](const QString &id) { return id == installed; });
}

TEST(ApplicationIdentifier, IsWhatThePlayerNames)
{
    EXPECT_EQ(identifierOf({u"vlc.instance77"_s, u"org.videolan.VLC"_s, u"/usr/bin/vlc"_s}, u"vlc"_s),
        u"org.videolan.VLC"_s);
}

TEST(ApplicationIdentifier, OfANamedFileIsTheNameOfTheFile)
{
    EXPECT_EQ(namedDesktopEntry(u"player.desktop"_s), u"player"_s);
    EXPECT_EQ(namedDesktopEntry(u"/usr/share/applications/player.desktop"_s), u"player"_s);
}

TEST(ApplicationIdentifier, IsNeverAPathOrATextOfAnotherKind)
{
    for (const auto &text :
        {u""_s, u".desktop"_s, u"../../etc/"_s, u"a b"_s, u"a\nb"_s, u"-x"_s, u".."_s, QString(300, u'x')})
        EXPECT_EQ(namedDesktopEntry(text), QString()) << text.toStdString();
}

TEST(ApplicationIdentifier, OfAPlayerThatNamesNoneIsItsProgramIfThatIsInstalled)
{
    const PlayerOrigin browser{u"chromium.instance4711"_s, {}, u"/opt/other/other-browser"_s};
    EXPECT_EQ(identifierOf(browser, u"other-browser"_s), u"other-browser"_s);
}

TEST(ApplicationIdentifier, ElseComesFromTheNameOnTheBus)
{
    EXPECT_EQ(identifierOf({u"chromium.instance4711"_s, {}, u"/usr/bin/python3"_s}), u"chromium"_s);
    EXPECT_EQ(identifierOf({u"firefox.instance_1_42"_s, {}, {}}), u"firefox"_s);
    EXPECT_EQ(identifierOf({u"org.example.Music"_s, {}, {}}), u"org.example.Music"_s);
}

TEST(ApplicationIdentifier, OfAProgramThatWasReplacedOnDiskComesFromTheNameOnTheBus)
{
    EXPECT_EQ(identifierOf({u"music"_s, {}, u"/usr/bin/music (deleted)"_s}, QString()), u"music"_s);
}

TEST(ApplicationIdentifier, OfSpotifyIsTheSameWhereverItWasInstalledFrom)
{
    for (const auto &entry : {u"spotify"_s, u"com.spotify.Client"_s, u"spotify_spotify"_s})
        EXPECT_EQ(identifierOf({u"spotify"_s, entry, {}}), u"com.spotify.client"_s);
    EXPECT_EQ(identifierOf({u"spotify"_s, {}, {}}), u"com.spotify.client"_s);
}

} // namespace
} // namespace brindle::adapter
