#include "foundation/SystemScheduler.h"
#include "platform/fake/FakeDesktop.h"
#include "platform/fake/FakePanelWindow.h"
#include "platform/linux/QtScreens.h"
#include "platform/linux/x11/X11PanelWindow.h"
#include "support/EventLoop.h"

#include <QGuiApplication>
#include <QScreen>

#include <functional>
#include <gtest/gtest.h>
#include <memory>
#include <ostream>

namespace brindle {
namespace {

using test::eventually;

/// A panel and the displays that it can stand on.
struct World
{
    SystemScheduler time;
    std::unique_ptr<Screens> screens;
    std::unique_ptr<PanelWindow> panel;
};

struct Kind
{
    const char *name;
    std::function<std::unique_ptr<World>()> make;

    friend void PrintTo(const Kind &kind, std::ostream *out) { *out << kind.name; }
};

std::unique_ptr<World> makeFake()
{
    auto world = std::make_unique<World>();
    world->screens = std::make_unique<FakeScreens>();
    world->panel = std::make_unique<FakePanelWindow>(PanelStyle{}, *world->screens);
    return world;
}

std::unique_ptr<World> makeX11()
{
    auto world = std::make_unique<World>();
    world->screens = std::make_unique<QtScreens>(world->time);
    world->panel = std::make_unique<X11PanelWindow>(PanelStyle{}, world->time);
    return world;
}

class PanelWindows : public testing::TestWithParam<Kind>
{
protected:
    std::unique_ptr<World> m_world = GetParam().make();
    PanelWindow &m_panel = *m_world->panel;

    /// The island's place at the top centre of the first display.
    QRectF topCentre() const
    {
        const QRectF screen = m_world->screens->screens().constFirst().frame;
        return {std::round(screen.center().x() - 470), screen.top() + screen.height() - 308, 940, 300};
    }
    void show()
    {
        m_panel.setFrame(topCentre(), PanelWindow::FrameChange::immediate);
        m_panel.orderFrontRegardless();
    }
};

TEST_P(PanelWindows, StartsAtItsPlaceholderSizeAndOnNoScreen)
{
    EXPECT_EQ(m_panel.frame().size(), QSizeF(260, 38));
    EXPECT_EQ(m_panel.screen(), std::nullopt);
}

TEST_P(PanelWindows, StandsWhereItWasPut)
{
    show();
    EXPECT_TRUE(eventually([&] { return m_panel.frame() == topCentre(); }));
    ASSERT_TRUE(m_panel.screen());
    EXPECT_EQ(*m_panel.screen(), m_world->screens->screens().constFirst());
}

TEST_P(PanelWindows, AnAnimatedMoveEndsInTheSamePlace)
{
    show();
    const QRectF aside = topCentre().translated(-40, -30);
    m_panel.setFrame(aside, PanelWindow::FrameChange::animated);
    EXPECT_TRUE(eventually([&] { return m_panel.frame() == aside; }));
}

TEST_P(PanelWindows, ComesToTheFrontWithoutTheKeyboard)
{
    show();
    test::deliverEvents();
    EXPECT_FALSE(m_panel.isKeyWindow());
}

TEST_P(PanelWindows, TakesTheKeyboardWhenMadeKeyAndGivesItUpWhenOrderedFront)
{
    show();
    m_panel.makeKeyAndOrderFront();
    EXPECT_TRUE(eventually([&] { return m_panel.isKeyWindow(); }));
    EXPECT_FALSE(m_panel.isEditingText());
    m_panel.orderFrontRegardless();
    EXPECT_TRUE(eventually([&] { return !m_panel.isKeyWindow(); }));
}

TEST_P(PanelWindows, MadeKeyBeforeItWasShownItIsShown)
{
    m_panel.setFrame(topCentre(), PanelWindow::FrameChange::immediate);
    m_panel.makeKeyAndOrderFront();
    EXPECT_TRUE(eventually([&] { return m_panel.isKeyWindow(); }));
}

INSTANTIATE_TEST_SUITE_P(All, PanelWindows, testing::Values(Kind{"Fake", makeFake}, Kind{"X11", makeX11}),
    [](const auto &instance) { return std::string(instance.param.name); });

} // namespace
} // namespace brindle
