#include "contract/workspace/XdgWorkspaceWorld.h"
#include "foundation/ManualScheduler.h"
#include "platform/linux/applications/ApplicationCatalogue.h"
#include "platform/linux/files/XdgDirectories.h"
#include "support/EventLoop.h"

#include <QDir>
#include <QFile>
#include <QSignalSpy>

#include <gmock/gmock.h>
#include <sys/stat.h>
#include <thread>

namespace brindle::test {

namespace {

using namespace Qt::StringLiterals;
using testing::ElementsAre;

class XdgWorkspaceTest : public testing::Test
{
protected:
    Workspace &port() { return world.port(); }
    QString application(const QString &name) const
    {
        return world.folder.path(u"data/applications/"_s + name + u".desktop"_s);
    }
    /// The icon of an application whose entry has this for its icon.
    QImage iconOf(const QString &icon)
    {
        world.folder.writeEntry(u"a"_s, "Name=A\nIcon=" + icon.toUtf8() + "\n");
        world.startAnew();
        return port().icon(application(u"a"_s));
    }
    QImage plain() { return port().icon(u"/nowhere"_s); }
    /// An application that opens this type of content.
    void handle(const QString &name, const QByteArray &type)
    {
        world.folder.writeEntry(name,
            "Name=A\nExec=" + world.notingProgram().toUtf8() + ' ' + name.toUtf8() + " %u\nMimeType=" + type
                + ";\n");
    }

    XdgWorkspaceWorld world;
};

} // namespace

TEST_F(XdgWorkspaceTest, TheFirstQuestionIsAnsweredAtOnceAndInFull)
{
    world.folder.writeEntry(u"a"_s, "Name=A\nName[de]=Ein A\n");
    const auto url = port().urlForApplication(u"a"_s);
    ASSERT_TRUE(url);
    EXPECT_EQ(*url, QUrl::fromLocalFile(application(u"a"_s)));
    EXPECT_EQ(port().localizedName(*url), u"Ein A"_s);
}

TEST_F(XdgWorkspaceTest, WhatIsInstalledOrRemovedLaterIsNoticed)
{
    EXPECT_EQ(port().urlForApplication(u"a"_s), std::nullopt);
    world.folder.writeEntry(u"a"_s, "Name=A\n");
    EXPECT_TRUE(eventually([&] { return port().urlForApplication(u"a"_s).has_value(); }));
    world.folder.writeEntry(u"sub/b"_s, "Name=B\n");
    EXPECT_TRUE(eventually([&] { return port().urlForApplication(u"sub-b"_s).has_value(); }));
    world.folder.writeEntry(u"sub/c"_s, "Name=C\n");
    EXPECT_TRUE(eventually([&] { return port().urlForApplication(u"sub-c"_s).has_value(); }));
    world.folder.remove(u"data/applications/a.desktop"_s);
    EXPECT_TRUE(eventually([&] { return !port().urlForApplication(u"a"_s).has_value(); }));
}

TEST_F(XdgWorkspaceTest, AFolderForApplicationsThatComesLaterIsNoticed)
{
    QDir(world.folder.path(u"data"_s)).removeRecursively();
    world.startAnew();
    EXPECT_EQ(port().urlForApplication(u"a"_s), std::nullopt);
    world.folder.writeEntry(u"a"_s, "Name=A\n");
    EXPECT_TRUE(eventually([&] { return port().urlForApplication(u"a"_s).has_value(); }));
}

TEST_F(XdgWorkspaceTest, ManyChangesAtOnceAreReadOnce)
{
    ManualScheduler time;
    ApplicationCatalogue catalogue(time, {world.folder.path(u"data/applications"_s)}, {});
    catalogue.index();
    const QSignalSpy changes(&catalogue, &ApplicationCatalogue::changed);
    for (int i = 0; i < 20; ++i)
        world.folder.writeEntry(u"a%1"_s.arg(i), "Name=A\n");
    ASSERT_TRUE(eventually([&] { return time.pendingCount() == 1; }));
    time.advance(ApplicationCatalogue::settlingTime);
    while (changes.isEmpty()) {
        time.runPosted();
        std::this_thread::yield();
    }
    EXPECT_EQ(catalogue.index()->applications().size(), 20);
    deliverEvents();
    EXPECT_EQ(time.pendingCount(), 0);
    EXPECT_EQ(changes.size(), 1);
}

TEST_F(XdgWorkspaceTest, AnIconIsFoundByItsPathOrByItsName)
{
    QImage red(20, 20, QImage::Format_RGB32);
    red.fill(Qt::red);
    QDir().mkpath(world.folder.path(u"data/icons/hicolor/48x48/apps"_s));
    QDir().mkpath(world.folder.path(u"data/pixmaps"_s));
    ASSERT_TRUE(red.save(world.folder.path(u"data/icons/hicolor/48x48/apps/in-theme.png"_s)));
    ASSERT_TRUE(red.save(world.folder.path(u"data/pixmaps/in-pixmaps.png"_s)));
    ASSERT_TRUE(red.save(world.folder.path(u"anywhere.png"_s)));
    for (const QString &icon :
        {u"in-theme"_s, u"in-pixmaps"_s, u"in-pixmaps.png"_s, world.folder.path(u"anywhere.png"_s)}) {
        const QImage image = iconOf(icon);
        ASSERT_FALSE(image.isNull());
        EXPECT_EQ(image.pixelColor(image.rect().center()), QColor(Qt::red)) << icon.toStdString();
    }
}

TEST_F(XdgWorkspaceTest, AnIconThatCannotBeReadBecomesThePlainOne)
{
    const QString pipe = world.folder.path(u"pipe.png"_s);
    ASSERT_EQ(::mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
    world.folder.write(u"broken.png"_s, "\x89PNG\r\n\x1a\n and no more");
    world.folder.write(u"huge.ppm"_s, "P6 2000000 2000000 255\n");
    for (const QString &icon : {u""_s, u"no-such-icon"_s, u"../../../../../etc/hostname"_s, u"/dev/zero"_s,
             u"/nowhere.png"_s, pipe, world.folder.path(u"broken.png"_s), world.folder.path(u"huge.ppm"_s),
             world.folder.path(u"data"_s)})
        EXPECT_EQ(iconOf(icon), plain()) << icon.toStdString();
}

TEST_F(XdgWorkspaceTest, AnIconIsSquareWhateverItsPicture)
{
    QImage wide(40, 10, QImage::Format_RGB32);
    wide.fill(Qt::red);
    ASSERT_TRUE(wide.save(world.folder.path(u"wide.png"_s)));
    const QImage icon = iconOf(world.folder.path(u"wide.png"_s));
    EXPECT_EQ(icon.width(), icon.height());
    EXPECT_EQ(icon.pixelColor(icon.rect().center()), QColor(Qt::red));
    EXPECT_EQ(icon.pixelColor(0, 0).alpha(), 0);
}

TEST_F(XdgWorkspaceTest, AFileIsCalledByItsName)
{
    world.folder.write(u"letter.txt"_s, "Dear Ann");
    EXPECT_EQ(port().localizedName(QUrl::fromLocalFile(world.folder.path(u"letter.txt"_s))), u"letter.txt"_s);
    EXPECT_FALSE(port().icon(world.folder.path(u"letter.txt"_s)).isNull());
}

TEST_F(XdgWorkspaceTest, AnApplicationIsStartedWithItsArgumentsAndWithoutAShell)
{
    world.folder.writeEntry(
        u"a"_s, "Name=A b\nExec=" + world.notingProgram().toUtf8() + " \"x y\" \"\\\\$HOME;ls\" %c %U\n");
    port().openApplication(QUrl::fromLocalFile(application(u"a"_s)));
    EXPECT_EQ(world.noted(), "x y\n$HOME;ls\nA b\n");
}

TEST_F(XdgWorkspaceTest, WhatCannotBeStartedDoesNoHarm)
{
    world.folder.writeEntry(u"a"_s, "Name=A\nExec=/nowhere/program\n");
    world.folder.writeEntry(u"b"_s, "Name=A\nExec=\"unfinished\n");
    world.folder.writeEntry(u"c"_s, "Name=A\n");
    for (const auto &name : {u"a"_s, u"b"_s, u"c"_s, u"d"_s})
        port().openApplication(QUrl::fromLocalFile(application(name)));
    port().openApplication(QUrl(u"https://a.example/"_s));
    port().openApplication(QUrl());
}

TEST_F(XdgWorkspaceTest, AnAddressIsOpenedByTheApplicationForItsScheme)
{
    handle(u"a"_s, "x-scheme-handler/weather");
    EXPECT_TRUE(port().open(QUrl(u"weather://here?x=1"_s)));
    EXPECT_EQ(world.noted(), "a\nweather://here?x=1\n");
}

TEST_F(XdgWorkspaceTest, WhereNothingIsThereForItNothingIsOpened)
{
    handle(u"a"_s, "x-scheme-handler/weather");
    EXPECT_FALSE(port().open(QUrl(u"mailto:ann@a.example"_s)));
    EXPECT_FALSE(port().open(QUrl()));
    EXPECT_FALSE(port().open(QUrl::fromLocalFile(u"/nowhere"_s)));
}

TEST_F(XdgWorkspaceTest, TheApplicationThatTheUserChoseIsPreferred)
{
    handle(u"a"_s, "x-scheme-handler/https");
    handle(u"b"_s, "x-scheme-handler/https");
    handle(u"c"_s, "x-scheme-handler/https");
    world.folder.write(
        u"data/applications/mimeapps.list"_s, "[Default Applications]\nx-scheme-handler/https=c.desktop;\n");
    world.folder.write(u"config/mimeapps.list"_s,
        "[Default Applications]\nx-scheme-handler/https=gone.desktop;b.desktop;\n");
    EXPECT_TRUE(port().open(QUrl(u"https://a.example/"_s)));
    EXPECT_EQ(world.noted(), "b\nhttps://a.example/\n");
}

TEST_F(XdgWorkspaceTest, AFileIsOpenedByTheApplicationForTheClosestType)
{
    handle(u"any"_s, "text/plain");
    handle(u"close"_s, "text/x-csrc");
    world.folder.write(u"a program.c"_s, "int main;");
    EXPECT_TRUE(port().open(QUrl::fromLocalFile(world.folder.path(u"a program.c"_s))));
    EXPECT_EQ(world.noted(),
        "close\n" + QUrl::fromLocalFile(world.folder.path(u"a program.c"_s)).toEncoded() + "\n");
}

TEST(XdgWorkspaceSurroundings, AreTakenFromTheEnvironment)
{
    QProcessEnvironment environment;
    environment.insert(u"HOME"_s, u"/home/ann"_s);
    environment.insert(u"LANG"_s, u"en_GB.UTF-8"_s);
    auto surroundings = XdgWorkspace::usualSurroundings(XdgDirectories(environment), environment);
    EXPECT_THAT(surroundings.dataFolders,
        ElementsAre(u"/home/ann/.local/share"_s, u"/usr/local/share"_s, u"/usr/share"_s));
    EXPECT_THAT(surroundings.configurationFolders, ElementsAre(u"/home/ann/.config"_s, u"/etc/xdg"_s));
    EXPECT_EQ(surroundings.locale, u"en_GB.UTF-8"_s);
    environment.insert(u"LC_ALL"_s, u"de_AT"_s);
    EXPECT_EQ(XdgWorkspace::usualSurroundings(XdgDirectories(environment), environment).locale, u"de_AT"_s);
}

} // namespace brindle::test
