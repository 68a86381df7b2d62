#include "contract/workspace/XdgWorkspaceWorld.h"

#include <QCoreApplication>

#include <gmock/gmock.h>

namespace brindle::test {

namespace {

using namespace Qt::StringLiterals;
using testing::Contains;
using testing::Not;

/// Other runs of this test may start theirs at the same time, and all of them are seen.
const QString player = u"org.example.Player%1"_s.arg(QCoreApplication::applicationPid());
const QString editor = u"org.example.Editor"_s;

} // namespace

/// What the port promises, whoever keeps it.
template <typename World> class WorkspaceContract : public testing::Test
{
protected:
    World world;
};

using Worlds = testing::Types<FakeWorkspaceWorld, XdgWorkspaceWorld>;
TYPED_TEST_SUITE(WorkspaceContract, Worlds);

TYPED_TEST(WorkspaceContract, AnInstalledApplicationHasAPlaceANameAndAnIcon)
{
    this->world.install(player, u"A player"_s);
    const auto url = this->world.port().urlForApplication(player);
    ASSERT_TRUE(url);
    EXPECT_TRUE(url->isLocalFile());
    EXPECT_EQ(this->world.port().localizedName(*url), u"A player"_s);
    const QImage icon = this->world.port().icon(url->toLocalFile());
    EXPECT_FALSE(icon.isNull());
    EXPECT_EQ(icon.width(), icon.height());
    EXPECT_NE(icon, this->world.port().icon(u"/nowhere"_s)) << "its own and not the plain one";
}

TYPED_TEST(WorkspaceContract, WhatIsNotInstalledIsAbsent)
{
    this->world.install(player, u"A player"_s);
    EXPECT_EQ(this->world.port().urlForApplication(editor), std::nullopt);
    EXPECT_EQ(this->world.port().urlForApplication(QString()), std::nullopt);
    EXPECT_EQ(this->world.port().localizedName(QUrl::fromLocalFile(u"/nowhere/a.desktop"_s)), std::nullopt);
    EXPECT_EQ(this->world.port().localizedName(QUrl()), std::nullopt);
}

TYPED_TEST(WorkspaceContract, AnIconIsNeverNull)
{
    for (const auto &path : {u""_s, u"/"_s, u"/nowhere/at/all"_s, u"relative"_s})
        EXPECT_FALSE(this->world.port().icon(path).isNull()) << path.toStdString();
}

TYPED_TEST(WorkspaceContract, AnApplicationRunsFromItsStartToItsEnd)
{
    this->world.install(player, u"A player"_s);
    this->world.install(editor, u"An editor"_s);
    EXPECT_THAT(this->world.port().runningApplications(), Not(Contains(player)));
    this->world.start(player);
    EXPECT_THAT(this->world.port().runningApplications(), Contains(player));
    EXPECT_THAT(this->world.port().runningApplications(), Not(Contains(editor)));
    this->world.end(player);
    EXPECT_THAT(this->world.port().runningApplications(), Not(Contains(player)));
}

TYPED_TEST(WorkspaceContract, AnApplicationIsOpenedByItsPlace)
{
    this->world.install(player, u"A player"_s);
    const auto url = this->world.port().urlForApplication(player);
    ASSERT_TRUE(url);
    this->world.port().openApplication(*url);
    EXPECT_TRUE(this->world.wasOpened(*url));
}

} // namespace brindle::test
