#include "activities/ActivityCoordinator.h"
#include "unit/island/PanelFixture.h"

namespace brindle {
namespace {

SystemActivity anActivity(Date now, double duration = 4)
{
    return {.id = QUuid::createUuid(),
        .type = ActivityType::charging,
        .priority = ActivityPriority::charging,
        .createdAt = now,
        .duration = duration,
        .content = {}};
}

// The panel

TEST_F(IslandPanelControllerTest, ThePanelIsATransparentUnmovableAreaAboveEverything)
{
    launch();
    const PanelStyle &style = window().style;
    EXPECT_EQ(style.placeholderSize, QSizeF(260, 38));
    EXPECT_EQ(style.levelAboveMenuBar, 1);
    EXPECT_FALSE(style.opaque);
    EXPECT_FALSE(style.hasShadow);
    EXPECT_FALSE(style.hidesOnDeactivate);
    EXPECT_TRUE(style.joinsAllSpaces);
    EXPECT_TRUE(style.stationary);
    EXPECT_TRUE(style.overFullScreenWindows);
    EXPECT_FALSE(style.movable);
    EXPECT_FALSE(style.movableByBackground);
    EXPECT_FALSE(style.titleVisible);
    EXPECT_TRUE(style.titlebarTransparent);
    EXPECT_TRUE(style.acceptsMouseMoved);
    EXPECT_TRUE(style.canBecomeKey);
    EXPECT_FALSE(style.canBecomeMain);
}

TEST_F(IslandPanelControllerTest, WithANotchThePanelTouchesTheUpperEdge)
{
    EXPECT_EQ(IslandPanel::frameOn({.localizedName = {}, .frame = displayFrame, .safeAreaTop = 32}),
        QRectF(286, 682, 940, 300));
}

TEST_F(IslandPanelControllerTest, WithoutANotchThePanelHangsEightPointsBelowIt)
{
    EXPECT_EQ(IslandPanel::frameOn({.localizedName = {}, .frame = displayFrame}), QRectF(286, 674, 940, 300));
}

TEST_F(IslandPanelControllerTest, AnOddDisplayPutsThePanelOnAWholePoint)
{
    const QRectF frame = IslandPanel::frameOn({.localizedName = {}, .frame = QRectF(0, 0, 1367, 768)});
    EXPECT_EQ(frame, QRectF(214, 460, 940, 300));
    EXPECT_EQ(IslandPanel::frameOn({.localizedName = {}, .frame = QRectF(-1367, 11, 1367, 768.5)}),
        QRectF(-1154, 472, 940, 300));
}

TEST_F(IslandPanelControllerTest, ShowingPlacesThePanelAtOnceAndBringsItToTheFront)
{
    launch();
    EXPECT_EQ(window().frame(), QRectF(286, 682, 940, 300));
    EXPECT_EQ(window().placements.last().change, PanelWindow::FrameChange::immediate);
    EXPECT_TRUE(window().ordersFront > 0);
    EXPECT_FALSE(window().isKeyWindow());
}

TEST_F(IslandPanelControllerTest, ShowingLooksWhereThePointerIs)
{
    session.movePointer(inside());
    launch();
    EXPECT_TRUE(island().isPointerInside());
}

TEST_F(IslandPanelControllerTest, WithoutAnyScreenThePanelIsShownAndPlacedLater)
{
    session.platform.displays.set({});
    launch();
    EXPECT_TRUE(window().ordersFront > 0);
    EXPECT_EQ(window().placements.size(), 0);
    settings().setCollapsedWidth(300);
    session.turn();
    EXPECT_EQ(window().placements.size(), 0);

    session.platform.displays.set({{.localizedName = QStringLiteral("New"), .frame = displayFrame}});
    EXPECT_EQ(window().frame(), QRectF(286, 674, 940, 300));
}

TEST_F(IslandPanelControllerTest, TheContentIsMadeForTheViewModelAndTheWindow)
{
    IslandViewModel *island = nullptr;
    PanelWindow *panel = nullptr;
    bool isAlive = false;
    controller = std::make_unique<IslandPanelController>(
        session.container, [&](IslandViewModel &viewModel, PanelWindow &window) {
            island = &viewModel;
            panel = &window;
            isAlive = true;
            auto content = std::make_unique<QObject>();
            QObject::connect(content.get(), &QObject::destroyed, [&isAlive] { isAlive = false; });
            return content;
        });
    EXPECT_EQ(island, &controller->viewModel());
    EXPECT_EQ(panel, &controller->panel().window());
    EXPECT_TRUE(isAlive);
    controller.reset();
    EXPECT_FALSE(isAlive);
}

// The display

class IslandOnManyDisplays : public IslandPanelControllerTest
{
protected:
    IslandOnManyDisplays() { session.platform.displays.set({left, right}); }

    const Screen left{.localizedName = QStringLiteral("Left"), .frame = QRectF(0, 0, 1512, 982)};
    const Screen right{.localizedName = QStringLiteral("Right"), .frame = QRectF(1512, 0, 1920, 1080)};
};

TEST_F(IslandOnManyDisplays, TheNamedDisplayIsChosen)
{
    settings().setSelectedDisplayName(QStringLiteral("Right"));
    launch();
    EXPECT_EQ(window().frame(), IslandPanel::frameOn(right));
}

TEST_F(IslandOnManyDisplays, ANameInAnotherCaseDoesNotMatch)
{
    settings().setSelectedDisplayName(QStringLiteral("right"));
    launch();
    EXPECT_EQ(window().frame(), IslandPanel::frameOn(left));
}

TEST_F(IslandOnManyDisplays, AutomaticKeepsThePanelOnItsDisplay)
{
    settings().setSelectedDisplayName(QStringLiteral("Right"));
    launch();
    settings().setSelectedDisplayName(QStringLiteral("Automatic"));
    session.turn();
    EXPECT_EQ(window().frame(), IslandPanel::frameOn(right));
}

TEST_F(IslandOnManyDisplays, ANamedDisplayThatIsGoneFallsBackAndItsNameIsKept)
{
    settings().setSelectedDisplayName(QStringLiteral("Right"));
    launch();
    session.platform.displays.set({left});
    EXPECT_EQ(window().frame(), IslandPanel::frameOn(left));
    EXPECT_EQ(settings().selectedDisplayName(), QStringLiteral("Right"));
    session.platform.displays.set({left, right});
    EXPECT_EQ(window().frame(), IslandPanel::frameOn(right));
}

TEST_F(IslandOnManyDisplays, AnotherNameMovesThePanelOnTheNextTurn)
{
    launch();
    settings().setSelectedDisplayName(QStringLiteral("Right"));
    EXPECT_EQ(window().frame(), IslandPanel::frameOn(left));
    session.turn();
    EXPECT_EQ(window().frame(), IslandPanel::frameOn(right));
    EXPECT_EQ(window().placements.last().change, PanelWindow::FrameChange::animated);
}

TEST_F(IslandPanelControllerTest, AChangedScreenMovesThePanel)
{
    launch();
    session.platform.displays.set(
        {{.localizedName = QStringLiteral("Built-in"), .frame = QRectF(0, 0, 1920, 1080)}});
    EXPECT_EQ(window().frame(), QRectF(490, 772, 940, 300));
    EXPECT_EQ(window().placements.last().change, PanelWindow::FrameChange::animated);
}

TEST_F(IslandPanelControllerTest, AnotherCollapsedSizeRepositionsThoughTheFrameStaysTheSame)
{
    launch();
    const qsizetype before = window().placements.size();
    settings().setCollapsedWidth(300);
    session.turn();
    EXPECT_EQ(window().placements.size(), before + 1);
    EXPECT_EQ(window().placements.last().change, PanelWindow::FrameChange::animated);
    EXPECT_EQ(window().frame(), QRectF(286, 682, 940, 300));
    settings().setCollapsedHeight(40);
    session.turn();
    EXPECT_EQ(window().placements.size(), before + 2);
}

TEST_F(IslandPanelControllerTest, ASettingSetToWhatItWasRepositionsNothing)
{
    launch();
    const qsizetype before = window().placements.size();
    settings().setCollapsedWidth(settings().collapsedWidth());
    settings().setCollapsedHeight(settings().collapsedHeight());
    settings().setSelectedDisplayName(settings().selectedDisplayName());
    session.turn();
    EXPECT_EQ(window().placements.size(), before);
}

// The interactive rectangle

TEST_F(IslandPanelControllerTest, TheClosedRectangleHasTheCollapsedSizeAtTheTopCentre)
{
    launch();
    EXPECT_EQ(controller->interactiveRectangle(), QRectF(626, 944, 260, 38));
}

TEST_F(IslandPanelControllerTest, AnActivityWidensTheClosedRectangle)
{
    launch();
    session.container.activities().post(anActivity(session.now()));
    EXPECT_EQ(controller->interactiveRectangle(), QRectF(572, 944, 368, 38));
    session.advance(4);
    EXPECT_EQ(controller->interactiveRectangle().width(), 260);
}

TEST_F(IslandPanelControllerTest, ANegativeExpansionAddsNothing)
{
    launch();
    settings().setCollapsedActivityExpansion(-50);
    session.container.activities().post(anActivity(session.now()));
    EXPECT_EQ(controller->interactiveRectangle().width(), 260);
}

TEST_F(IslandPanelControllerTest, AClosedIslandThatIsWiderThanThePanelEndsWithIt)
{
    launch();
    settings().setCollapsedWidth(1200);
    settings().setCollapsedHeight(400);
    EXPECT_EQ(controller->interactiveRectangle(), QRectF(286, 682, 940, 300));
}

TEST_F(IslandPanelControllerTest, WithoutADisplayAndWithoutDelaysTheIslandDoesNotFlutter)
{
    session.platform.displays.set({});
    settings().setHoverDelay(0);
    settings().setCollapseDelay(0);
    settings().setCollapsedWidth(420);
    session.movePointer({1000, 500});
    launch();
    int changes = 0;
    QObject::connect(&island(), &IslandViewModel::isExpandedChanged, [&changes] { ++changes; });
    // In the closed island as it was asked for, but beside the panel, which has no place yet.
    session.movePointer({300, 20});
    session.advance(1);
    EXPECT_EQ(changes, 0);
}

TEST_F(IslandPanelControllerTest, TheWholeOpenPanelCountsAsInside)
{
    launch();
    island().expand();
    session.container.activities().post(anActivity(session.now()));
    EXPECT_EQ(controller->interactiveRectangle(), QRectF(286, 682, 940, 300));
}

} // namespace
} // namespace brindle
