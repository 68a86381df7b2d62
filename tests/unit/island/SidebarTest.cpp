#include "core/AppContainer.h"
#include "core/SettingsStore.h"
#include "island/IslandViewModel.h"
#include "island/SidebarNavigation.h"
#include "island/SidebarScrollMonitor.h"
#include "island/TabPresentation.h"
#include "island/TabSelection.h"
#include "support/Session.h"

#include <gtest/gtest.h>

namespace brindle {
namespace {

const QRectF bounds(10, 42, 54, 240);
const QPointF overSidebar = bounds.center();

InputEvent scroll(double deltaY, quint32 phase = ScrollPhase::changed)
{
    InputEvent event;
    event.kind = EventKind::scrollWheel;
    event.isInPanel = true;
    event.locationInPanel = overSidebar;
    event.phase = phase;
    event.scrollingDeltaY = deltaY;
    event.hasPreciseScrollingDeltas = true;
    return event;
}

InputEvent notch(double deltaY)
{
    InputEvent event = scroll(deltaY, ScrollPhase::none);
    event.hasPreciseScrollingDeltas = false;
    return event;
}

class SidebarTest : public testing::Test
{
protected:
    SidebarTest()
    {
        sidebar.setViewModel(&island);
        sidebar.setBounds(bounds);
    }

    SettingsStore &settings() const { return session.container.settings(); }
    double accumulated() const { return sidebar.scrollMonitor()->accumulatedDelta(); }

    Session session;
    IslandViewModel island{session.container};
    SidebarNavigation sidebar;
};

// Swipes

TEST_F(SidebarTest, ADownwardSwipeOfTheThresholdSelectsTheNextTabAndLeavesNothing)
{
    session.sendLocal(scroll(-40, ScrollPhase::began));
    session.sendLocal(scroll(-43));
    EXPECT_EQ(island.selectedTab(), IslandTab::media);
    session.sendLocal(scroll(-1));
    EXPECT_EQ(island.selectedTab(), IslandTab::shelf);
    EXPECT_EQ(accumulated(), 0);
}

TEST_F(SidebarTest, WhatASwipeOvershootsCountsForTheNextStep)
{
    session.sendLocal(scroll(-50));
    session.sendLocal(scroll(-50));
    EXPECT_EQ(island.selectedTab(), IslandTab::shelf);
    EXPECT_EQ(accumulated(), -16);
}

TEST_F(SidebarTest, OneGreatScrollStepsOnlyOnce)
{
    session.sendLocal(scroll(-200));
    EXPECT_EQ(island.selectedTab(), IslandTab::shelf);
    EXPECT_EQ(accumulated(), -32);
    EXPECT_EQ(session.platform.ticks.ticks.size(), 1);
}

TEST_F(SidebarTest, AnUpwardSwipeSelectsThePreviousTabWrappingFromTheFirstToTheLast)
{
    session.sendLocal(scroll(84));
    EXPECT_EQ(island.selectedTab(), IslandTab::calculator);
    session.sendLocal(scroll(84));
    EXPECT_EQ(island.selectedTab(), IslandTab::shelf);
}

TEST_F(SidebarTest, ANewGestureStartsFromNothing)
{
    session.sendLocal(scroll(-80, ScrollPhase::began));
    session.sendLocal(scroll(-10, ScrollPhase::began));
    EXPECT_EQ(accumulated(), -10);
    EXPECT_EQ(island.selectedTab(), IslandTab::media);
}

TEST_F(SidebarTest, AnEndedOrCancelledGestureForgetsItsDistanceAndSettles)
{
    for (const quint32 end : {ScrollPhase::ended, ScrollPhase::cancelled}) {
        int settled = 0;
        const auto connection =
            QObject::connect(&sidebar, &SidebarNavigation::settled, [&settled] { ++settled; });
        session.sendLocal(scroll(-60, ScrollPhase::began));
        EXPECT_GT(sidebar.scrollFeedback(), 0);
        session.sendLocal(scroll(-60, end));
        EXPECT_EQ(accumulated(), 0);
        EXPECT_EQ(sidebar.scrollFeedback(), 0);
        EXPECT_EQ(settled, 1);
        EXPECT_EQ(island.selectedTab(), IslandTab::media);
        QObject::disconnect(connection);
    }
}

TEST_F(SidebarTest, MomentumDoesNothingWhateverItsDelta)
{
    session.sendLocal(scroll(-60, ScrollPhase::began));
    InputEvent momentum = scroll(-500, ScrollPhase::none);
    momentum.momentumPhase = ScrollPhase::changed;
    session.sendLocal(momentum);
    EXPECT_EQ(accumulated(), -60);
    session.sendLocal(scroll(0, ScrollPhase::ended));
    session.sendLocal(momentum);
    EXPECT_EQ(accumulated(), 0);
    EXPECT_EQ(island.selectedTab(), IslandTab::media);
    EXPECT_EQ(session.platform.ticks.ticks.size(), 0);
}

TEST_F(SidebarTest, AHorizontalSwipeStepsWhenItIsTheGreater)
{
    InputEvent event = scroll(-83);
    event.scrollingDeltaX = -84;
    session.sendLocal(event);
    EXPECT_EQ(island.selectedTab(), IslandTab::shelf);
    event.scrollingDeltaX = 83;
    session.sendLocal(event);
    // The vertical one wins where they are equal.
    EXPECT_EQ(accumulated(), -83);
}

TEST_F(SidebarTest, ADeltaOfExactlyAHundredthIsIgnored)
{
    session.sendLocal(scroll(-0.01));
    EXPECT_EQ(accumulated(), 0);
    session.sendLocal(scroll(-0.011));
    EXPECT_EQ(accumulated(), -0.011);
}

// Wheels

TEST_F(SidebarTest, EverySecondNotchOfAWheelStepsATabAndTheHighlightReturns)
{
    for (const IslandTab expected : {IslandTab::shelf, IslandTab::calculator, IslandTab::media}) {
        const IslandTab before = island.selectedTab();
        session.sendLocal(notch(-3));
        EXPECT_EQ(island.selectedTab(), before);
        EXPECT_EQ(sidebar.scrollFeedback(), 3.5);
        session.sendLocal(notch(-1));
        EXPECT_EQ(island.selectedTab(), expected);
        EXPECT_EQ(sidebar.scrollFeedback(), 0);
        EXPECT_EQ(accumulated(), 0);
    }
    EXPECT_EQ(session.platform.ticks.ticks.size(), 3);
}

TEST_F(SidebarTest, ANotchBackTakesTheNotchBefore)
{
    session.sendLocal(notch(-1));
    session.sendLocal(notch(1));
    EXPECT_EQ(accumulated(), 0);
    EXPECT_EQ(island.selectedTab(), IslandTab::media);
}

// Ticks and the highlight

TEST_F(SidebarTest, AStepPlaysTheAlignmentTickEvenWithReducedEffects)
{
    settings().setReduceEffects(true);
    session.platform.accessibility.setReduceMotion(true);
    session.sendLocal(scroll(-84));
    EXPECT_EQ(session.platform.ticks.ticks.size(), 1);
    EXPECT_EQ(session.platform.ticks.ticks.last(),
        (FakeHaptics::Tick{Haptics::Pattern::alignment, Haptics::PerformanceTime::now}));
}

TEST_F(SidebarTest, WithOneVisibleTabASwipeTicksAndSelectsNothing)
{
    settings().setShowShelfTab(false);
    settings().setShowCalculatorTab(false);
    int selections = 0;
    QObject::connect(&island, &IslandViewModel::selectedTabChanged, [&selections] { ++selections; });
    session.sendLocal(scroll(-84));
    EXPECT_EQ(session.platform.ticks.ticks.size(), 1);
    EXPECT_EQ(selections, 0);
}

TEST_F(SidebarTest, TheHighlightFollowsTheFingersUpToSevenPoints)
{
    session.sendLocal(scroll(-42));
    EXPECT_EQ(sidebar.scrollFeedback(), 3.5);
    session.sendLocal(scroll(42 + 21));
    EXPECT_EQ(sidebar.scrollFeedback(), -1.75);

    double greatest = 0;
    QObject::connect(&sidebar, &SidebarNavigation::scrollFeedbackChanged,
        [&] { greatest = std::max(greatest, sidebar.scrollFeedback()); });
    session.sendLocal(scroll(-500));
    EXPECT_EQ(greatest, 7);
}

TEST_F(SidebarTest, UnderReducedMotionTheHighlightStaysWhileStepsAndTicksHappen)
{
    session.platform.accessibility.setReduceMotion(true);
    session.sendLocal(scroll(-60));
    EXPECT_EQ(sidebar.scrollFeedback(), 0);
    session.sendLocal(scroll(-60));
    EXPECT_EQ(sidebar.scrollFeedback(), 0);
    EXPECT_EQ(island.selectedTab(), IslandTab::shelf);
    EXPECT_EQ(session.platform.ticks.ticks.size(), 1);
}

TEST_F(SidebarTest, TheSelectedButtonShrinksLittleUnderTheFingers)
{
    EXPECT_EQ(SidebarNavigation::selectedScale(0), 1);
    EXPECT_DOUBLE_EQ(SidebarNavigation::selectedScale(7), 1 - 7.0 / 180);
    EXPECT_DOUBLE_EQ(SidebarNavigation::selectedScale(-7), 1 - 7.0 / 180);
    EXPECT_GT(SidebarNavigation::selectedScale(7), 0.96);
}

TEST_F(SidebarTest, TheHighlightSettlesByAQuickSpring)
{
    EXPECT_EQ(SidebarNavigation::settleMotion(), Motion::makeSpring(0.24, 0.78, 0));
}

// Who sees what

TEST_F(SidebarTest, ScrollsOverTheContentBesideItAreNotItsOwn)
{
    InputEvent event = scroll(-84);
    event.locationInPanel = {bounds.right() + 1, overSidebar.y()};
    session.sendLocal(event);
    EXPECT_EQ(island.selectedTab(), IslandTab::media);
    EXPECT_EQ(session.platform.ticks.ticks.size(), 0);
}

TEST_F(SidebarTest, ScrollsInAnotherWindowAreNotItsOwn)
{
    InputEvent event = scroll(-84);
    event.isInPanel = false;
    session.sendLocal(event);
    EXPECT_EQ(island.selectedTab(), IslandTab::media);
}

TEST_F(SidebarTest, EveryScrollIsPassedOn)
{
    EXPECT_EQ(session.sendLocal(scroll(-84)), EventMonitors::Disposition::pass);
    EXPECT_EQ(session.sendLocal(scroll(0, ScrollPhase::ended)), EventMonitors::Disposition::pass);
}

TEST_F(SidebarTest, ScrollsAreWatchedAsLongAsTheSidebarStands)
{
    const qsizetype before = session.monitors();
    {
        SidebarNavigation another;
        another.setViewModel(&island);
        EXPECT_EQ(session.monitors(), before + 1);
        another.scrollMonitor()->start();
        EXPECT_EQ(session.monitors(), before + 1);
    }
    EXPECT_EQ(session.monitors(), before);
    sidebar.scrollMonitor()->stop();
    EXPECT_FALSE(sidebar.scrollMonitor()->isWatching());
    EXPECT_EQ(session.monitors(), before - 1);
}

// Selecting

TEST_F(SidebarTest, ATapSelectsWithASpring)
{
    sidebar.select(IslandTab::calculator);
    EXPECT_EQ(island.selectedTab(), IslandTab::calculator);
    EXPECT_EQ(island.selectionMotion(), Motion::makeSpring(0.36, 0.82, 0.08));
}

TEST_F(SidebarTest, ATapUnderReducedMotionSelectsPlainly)
{
    session.platform.accessibility.setReduceMotion(true);
    sidebar.select(IslandTab::calculator);
    EXPECT_EQ(island.selectionMotion(), Motion::makeEaseInOut(0.12));
}

TEST_F(SidebarTest, AScrollSelectsInTheSameAnimationAsATap)
{
    session.sendLocal(scroll(-84));
    EXPECT_EQ(island.selectionMotion(), Motion::makeSpring(0.36, 0.82, 0.08));
}

TEST_F(SidebarTest, ATapOnTheSelectedTabDoesNothing)
{
    int selections = 0;
    QObject::connect(&island, &IslandViewModel::selectedTabChanged, [&selections] { ++selections; });
    sidebar.select(IslandTab::media);
    EXPECT_EQ(selections, 0);
}

TEST_F(SidebarTest, EachTabHasItsTitleAndSymbol)
{
    const auto shows = [](IslandTab tab, const char16_t *title, const char16_t *symbol) {
        const TabPresentation presentation = presentationOf(tab);
        EXPECT_EQ(presentation.tab, tab);
        EXPECT_EQ(presentation.title, QStringView(title));
        EXPECT_EQ(presentation.symbol, QStringView(symbol));
    };
    shows(IslandTab::media, u"Media", u"waveform");
    shows(IslandTab::shelf, u"Shelf", u"tray.full.fill");
    shows(IslandTab::calculator, u"Calculator", u"function");
    shows(IslandTab::assistant, u"AI", u"sparkles");
}

TEST_F(SidebarTest, TheVisibleTabsStandInTheirOrderAndFollowTheSettings)
{
    const auto symbols = [this] {
        QStringList result;
        for (const QVariant &tab : sidebar.tabs())
            result << tab.value<TabPresentation>().title;
        return result.join(u' ');
    };
    EXPECT_EQ(symbols(), QStringLiteral("Media Shelf Calculator"));
    int changes = 0;
    QObject::connect(&sidebar, &SidebarNavigation::tabsChanged, [&changes] { ++changes; });
    settings().setShowAssistantTab(true);
    settings().setShowShelfTab(false);
    EXPECT_EQ(symbols(), QStringLiteral("Media Calculator AI"));
    EXPECT_EQ(changes, 2);
}

// Keeping the selection legal

TEST_F(SidebarTest, HidingTheSelectedTabOfTheOpenIslandMovesToTheFirstVisibleOneWithASpring)
{
    sidebar.select(IslandTab::calculator);
    settings().setShowCalculatorTab(false);
    EXPECT_EQ(island.selectedTab(), IslandTab::media);
    EXPECT_EQ(island.selectionMotion(), Motion::makeSpring(0.34, 0.88, 0.06));
}

TEST_F(SidebarTest, HidingAnotherTabMovesNothing)
{
    sidebar.select(IslandTab::calculator);
    settings().setShowMediaTab(false);
    EXPECT_EQ(island.selectedTab(), IslandTab::calculator);
}

TEST_F(SidebarTest, AnIslandThatOpensOnAHiddenTabShowsTheFirstVisibleOneWithoutAnimation)
{
    IslandViewModel closed{session.container};
    settings().setShowMediaTab(false);
    EXPECT_EQ(closed.selectedTab(), IslandTab::media);
    const TabSelection selection{closed};
    EXPECT_EQ(closed.selectedTab(), IslandTab::shelf);
    EXPECT_EQ(closed.selectionMotion(), Motion());
}

} // namespace
} // namespace brindle
