#include "core/AppDelegate.h"

#include "core/AppContainer.h"
#include "island/IslandPanelController.h"
#include "support/Session.h"

#include <gtest/gtest.h>

namespace brindle {
namespace {

const QString configuredKey = QStringLiteral("launchAtLoginDefaultConfigured");

class AppDelegateTest : public testing::Test
{
protected:
    void launch()
    {
        delegate.applicationDidFinishLaunching();
        session.turn();
    }

    FakeLoginItem &loginItem() { return session.platform.login; }
    QVariant configured() { return session.platform.userDefaults().objectForKey(configuredKey); }

    Session session;
    AppDelegate delegate{session.container};
};

TEST_F(AppDelegateTest, TheIslandIsShownOnTheTurnAfterTheLaunch)
{
    delegate.applicationDidFinishLaunching();
    EXPECT_FALSE(session.container.isStarted());
    EXPECT_EQ(delegate.panelController(), nullptr);
    session.turn();
    EXPECT_TRUE(session.container.isStarted());
    ASSERT_NE(delegate.panelController(), nullptr);
    EXPECT_TRUE(session.panel().ordersFront > 0);
    EXPECT_EQ(session.platform.host.policy, HostApplication::ActivationPolicy::accessory);
}

TEST_F(AppDelegateTest, ASecondLaunchReportKeepsTheIsland)
{
    launch();
    const IslandPanelController *controller = delegate.panelController();
    launch();
    EXPECT_EQ(delegate.panelController(), controller);
}

TEST_F(AppDelegateTest, TerminationStopsTheServices)
{
    launch();
    delegate.applicationWillTerminate();
    EXPECT_FALSE(session.container.isStarted());
}

TEST_F(AppDelegateTest, AFirstLaunchRegistersTheLoginItem)
{
    launch();
    EXPECT_EQ(loginItem().registrations, 1);
    EXPECT_EQ(loginItem().status(), LoginItem::Status::enabled);
    EXPECT_EQ(configured(), QVariant(true));
}

TEST_F(AppDelegateTest, ALoginItemThatIsEnabledAlreadyIsOnlyNoted)
{
    loginItem().currentStatus = LoginItem::Status::enabled;
    launch();
    EXPECT_EQ(loginItem().registrations, 0);
    EXPECT_EQ(configured(), QVariant(true));
}

TEST_F(AppDelegateTest, AStoredFalseIsLeftAloneAndRegistersNothing)
{
    session.platform.userDefaults().setBool(configuredKey, false);
    launch();
    EXPECT_EQ(loginItem().registrations, 0);
    EXPECT_EQ(configured(), QVariant(false));
}

TEST_F(AppDelegateTest, ARefusedRegistrationIsTriedAgainAtTheNextLaunch)
{
    loginItem().refusesRegistration = true;
    launch();
    EXPECT_FALSE(configured().isValid());

    loginItem().refusesRegistration = false;
    AppDelegate next{session.container};
    next.applicationDidFinishLaunching();
    EXPECT_EQ(loginItem().status(), LoginItem::Status::enabled);
    EXPECT_EQ(configured(), QVariant(true));
}

TEST_F(AppDelegateTest, AUserWhoSwitchedItOffIsNotOverruled)
{
    launch();
    ASSERT_TRUE(loginItem().unregisterItem());
    AppDelegate next{session.container};
    next.applicationDidFinishLaunching();
    EXPECT_EQ(loginItem().status(), LoginItem::Status::notRegistered);
}

// The menu

TEST_F(AppDelegateTest, TheMenuHasTheToggleAndTheQuitEntry)
{
    launch();
    const auto &menu = session.platform.menu;
    EXPECT_EQ(menu.symbol, QStringLiteral("capsule.tophalf.filled"));
    ASSERT_EQ(menu.entries.size(), 3);
    EXPECT_EQ(menu.entries[0].title, QStringLiteral("Toggle Island"));
    EXPECT_EQ(menu.entries[0].shortcut, QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_N));
    EXPECT_TRUE(menu.entries[1].isDivider());
    EXPECT_EQ(menu.entries[2].title, QStringLiteral("Quit Velmora"));
    EXPECT_EQ(menu.entries[2].shortcut, QKeySequence(Qt::CTRL | Qt::Key_Q));
}

TEST_F(AppDelegateTest, TheToggleEntryOpensAndClosesTheIsland)
{
    launch();
    const auto entries = session.platform.menu.entries;
    entries[0].action();
    EXPECT_TRUE(delegate.panelController()->viewModel().isExpanded());
    entries[0].action();
    EXPECT_FALSE(delegate.panelController()->viewModel().isExpanded());
}

TEST_F(AppDelegateTest, TheToggleEntryIsHarmlessBeforeThereIsAnIsland)
{
    delegate.applicationDidFinishLaunching();
    session.platform.menu.entries[0].action();
    session.turn();
    EXPECT_FALSE(delegate.panelController()->viewModel().isExpanded());
}

TEST_F(AppDelegateTest, TheQuitEntryEndsTheProgram)
{
    launch();
    session.platform.menu.entries[2].action();
    EXPECT_TRUE(session.platform.host.isTerminated);
}

} // namespace
} // namespace brindle
