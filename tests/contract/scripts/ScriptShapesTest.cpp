#include "platform/linux/scripts/ScriptShapes.h"

#include "media/BrowserScripts.h"
#include "media/PlayerScripts.h"

#include <gtest/gtest.h>

namespace brindle {
namespace {

using namespace Qt::StringLiterals;
using PlayerScripts::music;
using PlayerScripts::spotify;

const BrowserDescriptor brave{u"com.brave.Browser"_s, u"Brave"_s, BrowserFamily::chromium};
const BrowserDescriptor safari{u"com.apple.Safari"_s, u"Safari"_s, BrowserFamily::safari};

/// A browser's script with another text between the quotes.
QString withJavaScript(const QString &literal)
{
    QStringList lines = BrowserScripts::nowPlaying(brave).split(u'\n');
    lines[5] = u"                set mediaState to execute browserTab javascript \""_s + literal + u'"';
    return lines.join(u'\n');
}

QString javaScriptOf(const QString &source)
{
    const auto script = recogniseScript(source);
    const auto *const question = script ? std::get_if<script::MediaInTabs>(&*script) : nullptr;
    return question ? question->javaScript : u"not recognised"_s;
}

TEST(ScriptShapes, TheProgramsOwnScriptsAreRecognised)
{
    EXPECT_EQ(recogniseScript(PlayerScripts::nowPlaying(spotify)), Script(script::NowPlaying{spotify, true}));
    EXPECT_EQ(recogniseScript(PlayerScripts::nowPlaying(music)), Script(script::NowPlaying{music, false}));
    EXPECT_EQ(recogniseScript(PlayerScripts::togglePlayback(spotify)), Script(script::PlayPause{spotify}));
    EXPECT_EQ(recogniseScript(PlayerScripts::seek(83.25, music)), Script(script::SetPosition{music, 83.25}));
    EXPECT_EQ(recogniseScript(PlayerScripts::seek(1e-5, music)), Script(script::SetPosition{music, 1e-5}));
    EXPECT_EQ(recogniseScript(PlayerScripts::seek(1e20, music)), Script(script::SetPosition{music, 1e20}));
}

TEST(ScriptShapes, BothDialectsHaveTheSameJavaScript)
{
    const QString javaScript = javaScriptOf(BrowserScripts::nowPlaying(brave));
    EXPECT_TRUE(javaScript.startsWith(u"(() => {const a=")) << javaScript.toStdString();
    EXPECT_TRUE(javaScript.endsWith(u"})()"));
    EXPECT_EQ(javaScriptOf(BrowserScripts::nowPlaying(safari)), javaScript);
    EXPECT_EQ(std::get<script::MediaInTabs>(*recogniseScript(BrowserScripts::nowPlaying(safari))).application,
        safari.bundle);
}

TEST(ScriptShapes, EscapedJavaScriptComesOutAsItWentIn)
{
    const QString javaScript = u"a(\"\\n\", '\\\\') + \"\""_s;
    EXPECT_EQ(javaScriptOf(withJavaScript(BrowserScripts::escaped(javaScript))), javaScript);
}

TEST(ScriptShapes, ALiteralThatEndsEarlyOrEscapesAnythingElseIsNoScript)
{
    for (const auto &literal : {u"a\" & (do shell script \"x\") & \"b"_s, u"a\\"_s, u"\\n"_s, u"a\nb"_s})
        EXPECT_FALSE(recogniseScript(withJavaScript(literal))) << literal.toStdString();
}

TEST(ScriptShapes, ATextThatDiffersAnywhereIsNoScript)
{
    for (const QString &source : {PlayerScripts::nowPlaying(spotify), PlayerScripts::nowPlaying(music),
             PlayerScripts::togglePlayback(spotify), BrowserScripts::nowPlaying(brave)}) {
        EXPECT_FALSE(recogniseScript(source + u'\n'));
        EXPECT_FALSE(recogniseScript(u' ' + source));
        EXPECT_FALSE(recogniseScript(source.chopped(1)));
        EXPECT_FALSE(recogniseScript(source.toUpper()));
        EXPECT_FALSE(recogniseScript(source + u"\ndo shell script \"x\""_s));
        const QStringList lines = source.split(u'\n');
        for (qsizetype i = 0; i < lines.size(); ++i) {
            QStringList changed = lines;
            changed[i] += u' ';
            EXPECT_FALSE(recogniseScript(changed.join(u'\n'))) << changed.join(u'\n').toStdString();
            changed = lines;
            changed.removeAt(i);
            EXPECT_FALSE(recogniseScript(changed.join(u'\n'))) << changed.join(u'\n').toStdString();
        }
    }
}

TEST(ScriptShapes, OnlyAnIdentifierNamesAnApplication)
{
    for (const auto &application :
        {u""_s, u"a b"_s, u"../a"_s, u"a\" to quit"_s, u"a..b"_s, u".a"_s, u"a\u00e9"_s})
        EXPECT_FALSE(recogniseScript(PlayerScripts::togglePlayback(application)))
            << application.toStdString();
}

TEST(ScriptShapes, OnlyAPlainNumberIsAPosition)
{
    const auto seek = [](const QString &number) {
        return recogniseScript(
            u"tell application id \"com.apple.Music\" to set player position to "_s + number);
    };
    EXPECT_TRUE(seek(u"30"_s));
    EXPECT_TRUE(seek(u"1e+16"_s));
    for (const auto &number :
        {u""_s, u"-1.0"_s, u"nan"_s, u"inf"_s, u"1e999"_s, u"0x10"_s, u"1.0 "_s, u"1."_s, u"(1)"_s})
        EXPECT_FALSE(seek(number)) << number.toStdString();
}

TEST(ScriptShapes, NothingAtAllIsNoScript)
{
    EXPECT_FALSE(recogniseScript(QString()));
    EXPECT_FALSE(recogniseScript(u"\n\n\n\n\n\n\n\n\n\n\n\n"_s));
    EXPECT_FALSE(recogniseScript(QString(1'000'000, u'a')));
}

} // namespace
} // namespace brindle
