#include "platform/linux/applications/ApplicationIndex.h"

#include "contract/workspace/DesktopFolder.h"
#include "platform/linux/applications/ProcessIdentity.h"
#include "platform/linux/applications/RunningApplications.h"

#include <QDir>
#include <QFile>

#include <gmock/gmock.h>

namespace brindle::test {

namespace {

using namespace Qt::StringLiterals;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::UnorderedElementsAre;

class ApplicationIndexTest : public testing::Test
{
protected:
    ApplicationIndex index() const
    {
        return {{folder.path(u"data/applications"_s), folder.path(u"system/applications"_s)}, {}};
    }
    /// The name of the application that is found.
    QString found(const QString &identifier) const
    {
        const auto all = index();
        const auto *const application = all.find(identifier);
        return application ? application->name : u"none"_s;
    }
    QStringList running(const QString &executable, const QString &flatpak = {}) const
    {
        return index().identifiersOf({executable, flatpak});
    }
    /// A process as the system shows it.
    void start(int process, const QString &executable, const QByteArray &unit = {}) const
    {
        const QString place = folder.path(u"proc/"_s + QString::number(process));
        QDir().mkpath(place);
        QFile::link(executable, place + u"/exe"_s);
        folder.write(
            u"proc/"_s + QString::number(process) + u"/cgroup"_s, "0::/user.slice/app.slice/" + unit + '\n');
    }

    DesktopFolder folder;
};

} // namespace

TEST_F(ApplicationIndexTest, AnApplicationIsFoundByTheNameOfItsEntryInAnyCase)
{
    folder.writeEntry(u"org.Example.Player"_s, "Name=A player\n");
    EXPECT_EQ(found(u"org.Example.Player"_s), u"A player"_s);
    EXPECT_EQ(found(u"org.example.player"_s), u"A player"_s);
    EXPECT_EQ(found(u"org.example.player.desktop"_s), u"A player"_s);
    EXPECT_EQ(found(u"org.example"_s), u"none"_s);
    EXPECT_EQ(found(u""_s), u"none"_s);
}

TEST_F(ApplicationIndexTest, AnApplicationIsFoundByTheEndOfThatName)
{
    folder.writeEntry(u"org.videolan.VLC"_s, "Name=VLC\n");
    folder.writeEntry(u"rhythm_rhythm"_s, "Name=Rhythm\n");
    folder.writeEntry(u"kde4/juk"_s, "Name=JuK\n");
    EXPECT_EQ(found(u"vlc"_s), u"VLC"_s);
    EXPECT_EQ(found(u"rhythm"_s), u"Rhythm"_s);
    EXPECT_EQ(found(u"kde4-juk"_s), u"JuK"_s);
    EXPECT_EQ(found(u"juk"_s), u"JuK"_s);
}

TEST_F(ApplicationIndexTest, AnApplicationIsFoundByTheClassOfItsWindows)
{
    folder.writeEntry(u"com.example.Editor"_s, "Name=Editor\nStartupWMClass=Code-Editor\n");
    EXPECT_EQ(found(u"code-editor"_s), u"Editor"_s);
}

TEST_F(ApplicationIndexTest, AStrongerClaimToANameWins)
{
    folder.writeEntry(u"player"_s, "Name=By name\n");
    folder.writeEntry(u"a.other"_s, "Name=By class\nStartupWMClass=player\n");
    folder.writeEntry(u"org.example.player"_s, "Name=By end\n");
    EXPECT_EQ(found(u"player"_s), u"By name"_s);
    folder.remove(u"data/applications/player.desktop"_s);
    EXPECT_EQ(found(u"player"_s), u"By class"_s);
}

TEST_F(ApplicationIndexTest, WhatIsInMenusIsMeantFirst)
{
    folder.writeEntry(
        u"a.handler"_s, "Name=A handler\nNoDisplay=true\nStartupWMClass=player\nExec=/bin/player %u\n");
    folder.writeEntry(u"b.player"_s, "Name=The player\nStartupWMClass=player\nExec=/bin/player\n");
    EXPECT_EQ(found(u"player"_s), u"The player"_s);
    EXPECT_EQ(found(u"a.handler"_s), u"A handler"_s) << "but can be named";
    EXPECT_THAT(running(u"/usr/bin/player"_s), ElementsAre(u"b.player"_s));
}

TEST_F(ApplicationIndexTest, WellKnownIdentifiersNameTheirApplicationsHere)
{
    for (const auto &[identifier, entry] : {std::pair(u"com.google.Chrome"_s, u"google-chrome"_s),
             {u"com.microsoft.edgemac"_s, u"microsoft-edge"_s}, {u"com.brave.Browser"_s, u"brave-browser"_s},
             {u"org.chromium.Chromium"_s, u"chromium"_s}, {u"com.vivaldi.Vivaldi"_s, u"vivaldi-stable"_s},
             {u"com.operasoftware.Opera"_s, u"opera"_s},
             {u"ru.yandex.desktop.yandex-browser"_s, u"yandex-browser"_s},
             {u"com.spotify.client"_s, u"spotify"_s}}) {
        EXPECT_EQ(found(identifier), u"none"_s);
        folder.writeEntry(entry, "Name=" + entry.toUtf8() + "\n");
        EXPECT_EQ(found(identifier), entry);
    }
}

TEST_F(ApplicationIndexTest, AFlatpaksEntryIsAsGood)
{
    folder.writeEntry(u"com.opera.Opera"_s, "Name=Opera\nX-Flatpak=com.opera.Opera\n");
    EXPECT_EQ(found(u"com.operasoftware.Opera"_s), u"Opera"_s);
    EXPECT_THAT(running(u"/app/extra/opera"_s, u"com.opera.Opera"_s),
        ElementsAre(u"com.opera.Opera"_s, u"com.operasoftware.Opera"_s));
    EXPECT_THAT(running(u"/app/bin/thing"_s, u"org.example.Thing"_s), IsEmpty());
}

TEST_F(ApplicationIndexTest, TheUsersEntryStandsForTheSystemsEvenWhereItHidesIt)
{
    folder.write(
        u"system/applications/a.desktop"_s, "[Desktop Entry]\nType=Application\nName=The system's\n");
    EXPECT_EQ(found(u"a"_s), u"The system's"_s);
    folder.writeEntry(u"a"_s, "Name=The user's\n");
    EXPECT_EQ(found(u"a"_s), u"The user's"_s);
    folder.writeEntry(u"a"_s, "Hidden=true\n");
    EXPECT_EQ(found(u"a"_s), u"none"_s);
}

TEST_F(ApplicationIndexTest, LinksThatLeadInACircleEnd)
{
    folder.writeEntry(u"sub/a"_s, "Name=A\n");
    const QString applications = folder.path(u"data/applications"_s);
    QFile::link(applications, applications + u"/sub/up"_s);
    QFile::link(applications + u"/loop.desktop"_s, applications + u"/loop.desktop"_s);
    QFile::link(u"/dev/zero"_s, applications + u"/zero.desktop"_s);
    EXPECT_EQ(index().applications().size(), 1);
    EXPECT_EQ(found(u"sub-a"_s), u"A"_s);
}

TEST_F(ApplicationIndexTest, FoldersWithoutEndAreNotFollowedToTheirEnd)
{
    folder.writeEntry(u"a/b/c/d/e/f/near"_s, "Name=Near\n");
    folder.writeEntry(u"a/b/c/d/e/f/g/far"_s, "Name=Far\n");
    EXPECT_EQ(found(u"near"_s), u"Near"_s);
    EXPECT_EQ(found(u"far"_s), u"none"_s);
}

TEST_F(ApplicationIndexTest, AProcessIsOfTheApplicationThatStartsItsProgram)
{
    folder.write(u"bin/real/player"_s, "");
    QFile(folder.path(u"bin/real/player"_s)).setPermissions(QFile::ReadOwner | QFile::ExeOwner);
    QFile::link(folder.path(u"bin/real/player"_s), folder.path(u"bin/link"_s));
    folder.writeEntry(
        u"org.example.Linked"_s, "Exec=" + folder.path(u"bin/link"_s).toUtf8() + " --play %U\n");
    folder.writeEntry(u"org.example.Wrapped"_s, "Exec=env A=b C=d /usr/bin/wrapped\n");
    EXPECT_THAT(running(folder.path(u"bin/real/player"_s)), ElementsAre(u"org.example.Linked"_s));
    EXPECT_THAT(running(u"/usr/lib/wrapped/wrapped"_s), ElementsAre(u"org.example.Wrapped"_s));
    EXPECT_THAT(running(u"/usr/bin/other"_s), IsEmpty());
}

TEST_F(ApplicationIndexTest, AProgramThatRunsOthersIsOfNone)
{
    folder.writeEntry(u"a"_s, "Exec=python3 /opt/a/a.py\n");
    folder.writeEntry(u"b"_s, "Exec=/usr/bin/flatpak run org.b\n");
    folder.writeEntry(u"c"_s, "Exec=sh -c \"c\"\n");
    for (const auto &program : {u"/usr/bin/python3"_s, u"/usr/bin/python3.11"_s, u"/usr/bin/flatpak"_s,
             u"/bin/sh"_s, u"/usr/bin/dash"_s})
        EXPECT_THAT(running(program), IsEmpty()) << program.toStdString();
}

TEST_F(ApplicationIndexTest, AKnownProgramIsKnownByWhereItLies)
{
    EXPECT_THAT(running(u"/opt/google/chrome/chrome"_s), ElementsAre(u"com.google.Chrome"_s))
        << "also where its entry is missing";
    folder.writeEntry(u"google-chrome"_s, "Exec=/usr/bin/google-chrome-stable %U\n");
    folder.writeEntry(u"vivaldi-stable"_s, "Exec=/usr/bin/vivaldi-stable %U\n");
    EXPECT_THAT(
        running(u"/opt/google/chrome/chrome"_s), ElementsAre(u"google-chrome"_s, u"com.google.Chrome"_s));
    EXPECT_THAT(
        running(u"/opt/vivaldi/vivaldi-bin"_s), ElementsAre(u"vivaldi-stable"_s, u"com.vivaldi.Vivaldi"_s));
    EXPECT_THAT(running(u"/home/ann/chrome"_s), IsEmpty());
}

TEST_F(ApplicationIndexTest, TheSessionsManagerNamesWhatItStarted)
{
    folder.writeEntry(u"org.example.Player"_s, "Name=A\n");
    folder.writeEntry(u"google-chrome"_s, "Name=A\n");
    const auto all = index();
    for (const auto &unit : {u"app-org.example.Player-1234.scope"_s,
             u"app-gnome-org.example.Player-1234.scope"_s, u"app-org.example.Player@0123abc.service"_s,
             u"app-kde-org.example.Player@0123abc.service"_s, u"app-org.example.Player.service"_s})
        EXPECT_THAT(all.identifiersOfUnit(unit), ElementsAre(u"org.example.Player"_s)) << unit.toStdString();
    EXPECT_THAT(all.identifiersOfUnit(u"app-gnome-google\\x2dchrome-77.scope"_s),
        ElementsAre(u"google-chrome"_s, u"com.google.Chrome"_s));
    for (const auto &unit : {u""_s, u"init.scope"_s, u"app-org.example.Player"_s, u"app-.scope"_s,
             u"session-2.scope"_s, u"app-org.example.Other-1.scope"_s})
        EXPECT_THAT(all.identifiersOfUnit(unit), IsEmpty()) << unit.toStdString();
}

TEST_F(ApplicationIndexTest, RunningApplicationsAreThoseOfAllProcesses)
{
    folder.writeEntry(u"org.example.Player"_s, "Exec=/usr/bin/player\n");
    folder.writeEntry(u"org.example.Script"_s, "Exec=python3 script\n");
    start(10, u"/usr/bin/player"_s);
    start(11, u"/usr/bin/player (deleted)"_s);
    start(12, u"/usr/bin/python3.11"_s, "app-org.example.Script-12.scope");
    start(13, u"/opt/google/chrome/chrome"_s);
    start(14, u"/usr/bin/other"_s, "app-org.example.Unknown-12.scope");
    folder.write(u"proc/uptime"_s, "1 1");
    QDir().mkpath(folder.path(u"proc/15"_s)); // somebody else's
    QDir().mkpath(folder.path(u"proc/sys"_s));
    EXPECT_THAT(runningApplications(index(), folder.path(u"proc"_s)),
        UnorderedElementsAre(u"org.example.Player"_s, u"org.example.Script"_s, u"com.google.Chrome"_s));
    EXPECT_THAT(runningApplications(index(), folder.path(u"nowhere"_s)), IsEmpty());
}

} // namespace brindle::test
