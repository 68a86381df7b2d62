#include "platform/linux/applications/DesktopApplication.h"

#include "contract/workspace/DesktopFolder.h"

#include <gmock/gmock.h>

namespace brindle::test {

namespace {

using namespace Qt::StringLiterals;
using testing::ElementsAre;
using testing::IsEmpty;

class DesktopApplicationTest : public testing::Test
{
protected:
    std::optional<DesktopApplication> read(const QByteArray &text, const QStringList &languages = {})
    {
        folder.write(u"a.desktop"_s, text);
        return readApplication(folder.path(u"a.desktop"_s), u"a"_s, languages);
    }
    std::optional<DesktopApplication> readLines(const QByteArray &lines, const QStringList &languages = {})
    {
        return read("[Desktop Entry]\nType=Application\n" + lines, languages);
    }

    DesktopFolder folder;
};

QStringList command(const QString &exec, const std::optional<QUrl> &url = std::nullopt)
{
    DesktopApplication application;
    application.name = u"A Name"_s;
    application.icon = u"an-icon"_s;
    application.path = u"/a/b.desktop"_s;
    application.command = exec;
    return commandOf(application, url).value_or(QStringList{u"none"_s});
}

} // namespace

TEST_F(DesktopApplicationTest, AnEntryIsRead)
{
    const auto application =
        readLines("Name=A player\nIcon=a\nExec=a --play %U\nPath=/tmp\nStartupWMClass=A\n"
                  "X-Flatpak=org.a.A\n[Desktop Action new]\nName=Another\n");
    ASSERT_TRUE(application);
    EXPECT_EQ(application->id, u"a"_s);
    EXPECT_EQ(application->path, folder.path(u"a.desktop"_s));
    EXPECT_EQ(application->name, u"A player"_s);
    EXPECT_EQ(application->icon, u"a"_s);
    EXPECT_EQ(application->command, u"a --play %U"_s);
    EXPECT_EQ(application->workingFolder, u"/tmp"_s);
    EXPECT_EQ(application->windowClass, u"A"_s);
    EXPECT_EQ(application->flatpak, u"org.a.A"_s);
    EXPECT_TRUE(application->isListed);
    EXPECT_FALSE(application->wantsTerminal);
    EXPECT_FALSE(readLines("NoDisplay=true\n")->isListed);
    EXPECT_TRUE(readLines("Terminal=true\n")->wantsTerminal);
}

TEST_F(DesktopApplicationTest, WhatIsHiddenOrNotInstalledOrNoApplicationIsNone)
{
    EXPECT_FALSE(readLines("Name=A\nHidden=true\n"));
    EXPECT_FALSE(readLines("Name=A\nTryExec=/there/is/no/such/program\n"));
    EXPECT_FALSE(readLines("Name=A\nTryExec=there-is-no-such-program\n"));
    EXPECT_TRUE(readLines("Name=A\nTryExec=sh\n"));
    EXPECT_FALSE(read("[Desktop Entry]\nType=Link\nName=A\nURL=https://a.example/\n"));
    EXPECT_FALSE(read("[Desktop Entry]\nName=A\n"));
}

TEST_F(DesktopApplicationTest, BrokenFilesAreNone)
{
    EXPECT_FALSE(read(""));
    EXPECT_FALSE(read("\x7f"
                      "ELF\x02\x01\x01"));
    EXPECT_FALSE(read(QByteArray(100'000, '[')));
    EXPECT_FALSE(readLines(QByteArray(0x100000, '#'))) << "too long for an entry";
    EXPECT_FALSE(readApplication(folder.path(u"missing"_s), u"a"_s, {}));
    EXPECT_FALSE(readApplication(folder.path(u""_s), u"a"_s, {})) << "a folder";
    EXPECT_FALSE(readApplication(u"/dev/zero"_s, u"a"_s, {}));
    EXPECT_EQ(readLines("Name=\xff\xfe"
                        "A\n")
                  ->name.right(1),
        u"A"_s);
}

TEST_F(DesktopApplicationTest, TheNameIsInTheUsersLanguage)
{
    const QByteArray names = "Name=Player\nName[de]=Spieler\nName[de_AT]=Spüler\nName[sr@latin]=Plejer\n";
    const auto name = [&](const QString &locale) { return readLines(names, entryLanguages(locale))->name; };
    EXPECT_EQ(name(u"de_AT.UTF-8"_s), u"Spüler"_s);
    EXPECT_EQ(name(u"de_DE"_s), u"Spieler"_s);
    EXPECT_EQ(name(u"sr_RS@latin"_s), u"Plejer"_s);
    EXPECT_EQ(name(u"sr_RS"_s), u"Player"_s);
    EXPECT_EQ(name(u"C.UTF-8"_s), u"Player"_s);
    EXPECT_EQ(name(u""_s), u"Player"_s);
}

TEST(EntryLanguages, TheClosestComesFirst)
{
    EXPECT_THAT(entryLanguages(u"sr_RS.UTF-8@latin"_s),
        ElementsAre(u"sr_RS@latin"_s, u"sr_RS"_s, u"sr@latin"_s, u"sr"_s));
    EXPECT_THAT(entryLanguages(u"de_AT"_s), ElementsAre(u"de_AT"_s, u"de"_s));
    EXPECT_THAT(entryLanguages(u"de"_s), ElementsAre(u"de"_s));
    EXPECT_THAT(entryLanguages(u"POSIX"_s), IsEmpty());
}

TEST(CommandOf, WordsEndAtBlanksUnlessTheyAreQuoted)
{
    EXPECT_THAT(command(u"a  b\t c"_s), ElementsAre(u"a"_s, u"b\t"_s, u"c"_s));
    EXPECT_THAT(command(u"\"a program\" \"\" \"say \\\"hi\\\" \\\\ \\$x \\`y\\`\""_s),
        ElementsAre(u"a program"_s, u""_s, u"say \"hi\" \\ $x `y`"_s));
    EXPECT_THAT(command(u"a --x=\"b c\""_s), ElementsAre(u"a"_s, u"--x=b c"_s));
}

TEST(CommandOf, ACommandThatCannotBeReadIsNone)
{
    EXPECT_THAT(command(u""_s), ElementsAre(u"none"_s));
    EXPECT_THAT(command(u"   "_s), ElementsAre(u"none"_s));
    EXPECT_THAT(command(u"a \"b"_s), ElementsAre(u"none"_s));
    EXPECT_THAT(command(u"\"\" a"_s), ElementsAre(u"none"_s));
    EXPECT_THAT(command(u"%u"_s), ElementsAre(u"none"_s));
}

TEST(CommandOf, FieldCodesAreReplacedOrLeftOut)
{
    EXPECT_THAT(command(u"a %u %F -- %i --name=%c %k 100%% %d %m"_s),
        ElementsAre(u"a"_s, u"--"_s, u"--icon"_s, u"an-icon"_s, u"--name=A Name"_s, u"/a/b.desktop"_s,
            u"100%"_s, u""_s, u""_s));
}

TEST(CommandOf, AnAddressGoesWhereTheCommandWantsIt)
{
    const QUrl web(u"https://a.example/b c?d"_s);
    const QUrl file = QUrl::fromLocalFile(u"/b c"_s);
    EXPECT_THAT(command(u"a %u -x"_s, web), ElementsAre(u"a"_s, u"https://a.example/b%20c?d"_s, u"-x"_s));
    EXPECT_THAT(command(u"a --open=%U"_s, web), ElementsAre(u"a"_s, u"--open=https://a.example/b%20c?d"_s));
    EXPECT_THAT(command(u"a %f"_s, file), ElementsAre(u"a"_s, u"/b c"_s));
    EXPECT_THAT(command(u"a %u"_s, file), ElementsAre(u"a"_s, u"file:///b%20c"_s));
    EXPECT_THAT(
        command(u"a -x 5%%u"_s, web), ElementsAre(u"a"_s, u"-x"_s, u"5%u"_s, u"https://a.example/b%20c?d"_s))
        << "one that names no place gets it at the end";
}

} // namespace brindle::test
