#include "platform/linux/files/XdgDirectories.h"

#include <gmock/gmock.h>

namespace brindle {
namespace {

using testing::ElementsAre;

XdgDirectories directories(std::initializer_list<std::pair<const char *, const char *>> variables)
{
    QProcessEnvironment environment;
    environment.insert(QStringLiteral("HOME"), QStringLiteral("/home/ann"));
    for (const auto &[name, value] : variables)
        environment.insert(QString::fromLatin1(name), QString::fromLatin1(value));
    return XdgDirectories(environment);
}

TEST(XdgDirectories, LieInTheHomeFolderByDefault)
{
    const auto usual = directories({});
    EXPECT_EQ(usual.applicationSupport(), u"/home/ann/.local/share");
    EXPECT_EQ(usual.caches(), u"/home/ann/.cache");
    EXPECT_EQ(usual.configuration(), u"/home/ann/.config");
    EXPECT_EQ(usual.home(), u"/home/ann");
    EXPECT_THAT(usual.systemConfiguration(), ElementsAre(QStringLiteral("/etc/xdg")));
    EXPECT_THAT(
        usual.systemData(), ElementsAre(QStringLiteral("/usr/local/share"), QStringLiteral("/usr/share")));
}

TEST(XdgDirectories, FollowTheEnvironment)
{
    const auto moved = directories({{"XDG_DATA_HOME", "/d/"}, {"XDG_CACHE_HOME", "/c"},
        {"XDG_CONFIG_HOME", "/f/./g"}, {"XDG_CONFIG_DIRS", "/x:/y"}, {"XDG_DATA_DIRS", "/v:/w/"}});
    EXPECT_EQ(moved.applicationSupport(), u"/d");
    EXPECT_EQ(moved.caches(), u"/c");
    EXPECT_EQ(moved.configuration(), u"/f/g");
    EXPECT_THAT(moved.systemConfiguration(), ElementsAre(QStringLiteral("/x"), QStringLiteral("/y")));
    EXPECT_THAT(moved.systemData(), ElementsAre(QStringLiteral("/v"), QStringLiteral("/w")));
}

TEST(XdgDirectories, IgnoreEmptyAndRelativePaths)
{
    const auto odd = directories({{"XDG_DATA_HOME", "data"}, {"XDG_CACHE_HOME", ""},
        {"XDG_CONFIG_HOME", "../config"}, {"XDG_CONFIG_DIRS", "x::/y"}});
    EXPECT_EQ(odd.applicationSupport(), u"/home/ann/.local/share");
    EXPECT_EQ(odd.caches(), u"/home/ann/.cache");
    EXPECT_EQ(odd.configuration(), u"/home/ann/.config");
    EXPECT_THAT(odd.systemConfiguration(), ElementsAre(QStringLiteral("/y")));
    EXPECT_THAT(directories({{"XDG_CONFIG_DIRS", "x"}}).systemConfiguration(),
        ElementsAre(QStringLiteral("/etc/xdg")));
}

} // namespace
} // namespace brindle
