#include "foundation/Files.h"
#include "platform/fake/FakeDesktop.h"
#include "platform/linux/files/XdgLoginItem.h"
#include "platform/null/NullPorts.h"

#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace brindle {
namespace {

/// A user's and a system's configuration folder, and a program to start.
class Desktop
{
public:
    Desktop()
    {
        m_environment.insert(QStringLiteral("HOME"), m_dir.path());
        m_environment.insert(QStringLiteral("XDG_CONFIG_HOME"), m_dir.filePath(QStringLiteral("config")));
        m_environment.insert(QStringLiteral("XDG_CONFIG_DIRS"),
            m_dir.filePath(QStringLiteral("local")) + u':' + m_dir.filePath(QStringLiteral("system")));
        makeProgram(program);
    }

    XdgLoginItem item() const { return XdgLoginItem(XdgDirectories(m_environment), program); }
    QString entry(const QString &folder = QStringLiteral("config")) const
    {
        return m_dir.filePath(folder) + QStringLiteral("/autostart/com.brindle.app.desktop");
    }
    void writeEntry(const QString &folder, const QByteArray &keys) const
    {
        ASSERT_EQ(Files::writeAtomically(entry(folder), "[Desktop Entry]\nType=Application\n" + keys),
            std::nullopt);
    }
    QByteArray userEntry() const { return Files::read(entry()).value_or(QByteArray()); }

    static void makeProgram(const QString &path)
    {
        ASSERT_EQ(Files::writeAtomically(path, "#!/bin/sh\n"), std::nullopt);
        ASSERT_TRUE(QFile::setPermissions(path, QFile::ReadOwner | QFile::ExeOwner));
    }

private:
    QTemporaryDir m_dir;
    QProcessEnvironment m_environment;

public:
    QString program = m_dir.filePath(QStringLiteral("bin/velmora"));
};

class XdgWorld
{
public:
    LoginItem &item() { return m_item; }

private:
    Desktop m_desktop;
    XdgLoginItem m_item = m_desktop.item();
};

class FakeWorld
{
public:
    LoginItem &item() { return m_item; }

private:
    FakeLoginItem m_item;
};

template <typename World> class LoginItemContract : public testing::Test
{
protected:
    LoginItem &item() { return world.item(); }

    World world;
};

using Worlds = testing::Types<FakeWorld, XdgWorld>;
TYPED_TEST_SUITE(LoginItemContract, Worlds);

TYPED_TEST(LoginItemContract, IsNotRegisteredOnAFreshDesktop)
{
    EXPECT_EQ(this->item().status(), LoginItem::Status::notRegistered);
}

TYPED_TEST(LoginItemContract, IsEnabledOnceRegistered)
{
    EXPECT_TRUE(this->item().registerItem());
    EXPECT_EQ(this->item().status(), LoginItem::Status::enabled);
}

TYPED_TEST(LoginItemContract, MayBeRegisteredAndUnregisteredTwice)
{
    EXPECT_TRUE(this->item().registerItem());
    EXPECT_TRUE(this->item().registerItem());
    EXPECT_EQ(this->item().status(), LoginItem::Status::enabled);
    EXPECT_TRUE(this->item().unregisterItem());
    EXPECT_EQ(this->item().status(), LoginItem::Status::notRegistered);
    EXPECT_TRUE(this->item().unregisterItem());
    EXPECT_TRUE(this->item().registerItem());
    EXPECT_EQ(this->item().status(), LoginItem::Status::enabled);
}

TEST(NullLoginItem, IsNeverThere)
{
    NullLoginItem item;
    EXPECT_FALSE(item.registerItem());
    EXPECT_EQ(item.status(), LoginItem::Status::notFound);
}

class XdgAutostart : public testing::Test
{
protected:
    LoginItem::Status status() const { return desktop.item().status(); }

    Desktop desktop;
};

TEST_F(XdgAutostart, NamesTheProgramAsOneWordOfACommandLine)
{
    desktop.program += QStringLiteral(" \"of\" $me `100%` \\");
    Desktop::makeProgram(desktop.program);
    ASSERT_TRUE(desktop.item().registerItem());
    const QByteArray entry = desktop.userEntry();
    EXPECT_TRUE(entry.contains(R"(velmora \\"of\\" \\$me \\`100%%\\` \\\\")"
                               "\n"))
        << entry.toStdString();
    EXPECT_EQ(status(), LoginItem::Status::enabled);
}

TEST_F(XdgAutostart, AnEntryWithoutFurtherKeysIsEnabled)
{
    desktop.writeEntry(QStringLiteral("config"), "Exec=velmora\n");
    EXPECT_EQ(status(), LoginItem::Status::enabled);
}

TEST_F(XdgAutostart, AHiddenEntryCountsAsNotRegistered)
{
    desktop.writeEntry(QStringLiteral("config"), "Hidden=true\n");
    EXPECT_EQ(status(), LoginItem::Status::notRegistered);
}

TEST_F(XdgAutostart, AnEntrySwitchedOffByTheDesktopCountsAsNotRegistered)
{
    desktop.writeEntry(QStringLiteral("config"), "X-GNOME-Autostart-enabled = false\n");
    EXPECT_EQ(status(), LoginItem::Status::notRegistered);
}

TEST_F(XdgAutostart, AKeyOfAnotherGroupMeansNothing)
{
    desktop.writeEntry(QStringLiteral("config"), "Exec=velmora\n#Hidden=true\n[Other]\nHidden=true\n");
    EXPECT_EQ(status(), LoginItem::Status::enabled);
}

TEST_F(XdgAutostart, AProgramThatIsGoneIsNotStarted)
{
    ASSERT_TRUE(desktop.item().registerItem());
    ASSERT_TRUE(QFile::remove(desktop.program));
    EXPECT_EQ(status(), LoginItem::Status::notRegistered);
}

TEST_F(XdgAutostart, ASystemsEntryCounts)
{
    desktop.writeEntry(QStringLiteral("system"), "Exec=velmora\n");
    EXPECT_EQ(status(), LoginItem::Status::enabled);
}

TEST_F(XdgAutostart, TheFirstFolderThatHasAnEntryDecides)
{
    desktop.writeEntry(QStringLiteral("system"), "Exec=velmora\n");
    desktop.writeEntry(QStringLiteral("local"), "Hidden=true\n");
    EXPECT_EQ(status(), LoginItem::Status::notRegistered);
    desktop.writeEntry(QStringLiteral("config"), "Exec=velmora\n");
    EXPECT_EQ(status(), LoginItem::Status::enabled);
}

TEST_F(XdgAutostart, ASystemsEntryIsHiddenByOneOfTheUsers)
{
    desktop.writeEntry(QStringLiteral("system"), "Exec=velmora\n");
    EXPECT_TRUE(desktop.item().unregisterItem());
    EXPECT_TRUE(desktop.userEntry().contains("\nHidden=true\n"));
    EXPECT_EQ(status(), LoginItem::Status::notRegistered);
}

TEST_F(XdgAutostart, WithoutASystemsEntryNothingIsLeftBehind)
{
    ASSERT_TRUE(desktop.item().registerItem());
    ASSERT_TRUE(desktop.item().unregisterItem());
    EXPECT_FALSE(QFileInfo::exists(desktop.entry()));
}

TEST_F(XdgAutostart, ARefusedRegistrationChangesNothing)
{
    // A file where the folder should be.
    ASSERT_EQ(Files::writeAtomically(QFileInfo(desktop.entry()).path(), "x"), std::nullopt);
    EXPECT_FALSE(desktop.item().registerItem());
    EXPECT_EQ(status(), LoginItem::Status::notRegistered);
}

} // namespace
} // namespace brindle
