#include "platform/linux/x11/X11PanelWindow.h"

#include "foundation/ManualScheduler.h"
#include "foundation/SystemScheduler.h"
#include "platform/linux/QtScreens.h"
#include "platform/linux/ScreenCoordinates.h"
#include "platform/linux/x11/XcbConnection.h"
#include "support/EventLoop.h"
#include "support/x11/OtherProgram.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QQuickItem>
#include <QQuickWindow>

#include <gtest/gtest.h>
#include <xcb/shape.h>

namespace brindle {
namespace {

using test::eventually;
using test::Hand;
using test::OtherProgram;

constexpr int keycodeOfA = 38;

/// Notes the presses that come to the panel's content.
class Content : public QObject
{
public:
    explicit Content(QQuickWindow &window) { window.installEventFilter(this); }

    int presses = 0;
    int keys = 0;

protected:
    bool eventFilter(QObject *, QEvent *event) override
    {
        presses += event->type() == QEvent::MouseButtonPress;
        keys += event->type() == QEvent::KeyPress;
        return false;
    }
};

/// A shown panel over another program's window that fills the display.
class X11Panel : public testing::Test
{
protected:
    SystemScheduler m_time;
    Hand m_hand;
    OtherProgram m_below{QRect(0, 0, 1600, 1000)};
    X11PanelWindow m_panel{PanelStyle{}, m_time};
    Content m_content{*m_panel.contentWindow()};

    void SetUp() override
    {
        ASSERT_TRUE(eventually([&] { return m_below.isMapped; }));
        m_panel.setFrame(QRectF(330, 692, 940, 300), PanelWindow::FrameChange::immediate);
        m_panel.setInputShape(capsule());
        m_panel.orderFrontRegardless();
        ASSERT_TRUE(eventually([&] { return Xcb::isViewable(id()); }));
    }

    xcb_window_t id() { return xcb_window_t(m_panel.contentWindow()->winId()); }
    /// The closed island: 260 by 38 at the top centre of the panel.
    static QPainterPath capsule()
    {
        QPainterPath path;
        path.addRect(340, 0, 260, 38);
        return path;
    }
    /// A point of the panel on the root window.
    static QPoint at(int x, int y) { return {330 + x, 8 + y}; }
};

TEST_F(X11Panel, HangsEightPointsBelowTheTopOfTheDisplay)
{
    EXPECT_EQ(m_panel.contentWindow()->geometry(), QRect(330, 8, 940, 300));
}

TEST_F(X11Panel, AClickInsideTheShapeIsThePanels)
{
    m_hand.click(at(470, 20));
    EXPECT_TRUE(eventually([&] { return m_content.presses == 1; }));
    EXPECT_TRUE(m_below.presses.isEmpty());
}

TEST_F(X11Panel, AClickJustOutsideTheShapeReachesTheWindowBelow)
{
    for (const QPoint point : {at(339, 20), at(600, 20), at(470, 38), at(470, 200)})
        m_hand.click(point);
    EXPECT_TRUE(eventually([&] { return m_below.presses.size() == 4; }));
    EXPECT_EQ(m_content.presses, 0);
}

TEST_F(X11Panel, TheEdgePixelsOfTheShapeBelongToThePanel)
{
    for (const QPoint point : {at(340, 0), at(599, 0), at(340, 37), at(599, 37)})
        m_hand.click(point);
    EXPECT_TRUE(eventually([&] { return m_content.presses == 4; }));
    EXPECT_TRUE(m_below.presses.isEmpty());
}

TEST_F(X11Panel, ANewShapeTakesThePointerAtOnce)
{
    QPainterPath whole;
    whole.addRect(0, 0, 940, 300);
    m_panel.setInputShape(whole);
    m_hand.click(at(20, 280));
    EXPECT_TRUE(eventually([&] { return m_content.presses == 1; }));
}

TEST_F(X11Panel, AnEmptyShapeTakesNoPointer)
{
    m_panel.setInputShape({});
    m_hand.click(at(470, 20));
    EXPECT_TRUE(eventually([&] { return m_below.presses.size() == 1; }));
}

TEST_F(X11Panel, TypingGoesBackToTheWindowThatHadIt)
{
    m_below.takeFocus();
    m_hand.type(keycodeOfA);
    ASSERT_TRUE(eventually([&] { return m_below.keys.size() == 1; }));

    m_panel.makeKeyAndOrderFront();
    ASSERT_TRUE(eventually([&] { return m_panel.isKeyWindow(); }));
    m_hand.type(keycodeOfA);
    ASSERT_TRUE(eventually([&] { return m_content.keys == 1; }));

    m_panel.orderFrontRegardless();
    ASSERT_TRUE(eventually([&] { return m_below.hasFocus(); }));
    m_hand.type(keycodeOfA);
    EXPECT_TRUE(eventually([&] { return m_below.keys.size() == 2; }));
    EXPECT_EQ(m_content.keys, 1);
}

TEST_F(X11Panel, WhoeverTookTheKeyboardMeanwhileKeepsIt)
{
    OtherProgram third(QRect(100, 500, 200, 100));
    ASSERT_TRUE(eventually([&] { return third.isMapped; }));
    m_below.takeFocus();
    m_panel.makeKeyAndOrderFront();
    ASSERT_TRUE(eventually([&] { return m_panel.isKeyWindow(); }));
    third.takeFocus();
    ASSERT_TRUE(eventually([&] { return !m_panel.isKeyWindow(); }));
    m_panel.orderFrontRegardless();
    test::deliverEvents();
    EXPECT_TRUE(third.hasFocus());
}

TEST_F(X11Panel, GivingTheKeyboardBackToAWindowThatIsGoneHarmsNothing)
{
    auto gone = std::make_unique<OtherProgram>(QRect(100, 500, 200, 100));
    ASSERT_TRUE(eventually([&] { return gone->isMapped; }));
    gone->takeFocus();
    ASSERT_TRUE(eventually([&] { return gone->hasFocus(); }));
    m_panel.makeKeyAndOrderFront();
    ASSERT_TRUE(eventually([&] { return m_panel.isKeyWindow(); }));
    gone.reset();
    m_panel.orderFrontRegardless();
    EXPECT_TRUE(eventually([&] { return !m_panel.isKeyWindow(); }));
}

TEST_F(X11Panel, AFocusedTextFieldIsTypedInto)
{
    auto *field = new QQuickItem(m_panel.contentWindow()->contentItem());
    field->setFlag(QQuickItem::ItemAcceptsInputMethod);
    m_panel.makeKeyAndOrderFront();
    ASSERT_TRUE(eventually([&] { return m_panel.isKeyWindow(); }));
    EXPECT_FALSE(m_panel.isEditingText());
    field->forceActiveFocus();
    EXPECT_TRUE(m_panel.isEditingText());
}

TEST_F(X11Panel, ComesBackAboveAWindowThatCoversIt)
{
    OtherProgram cover(QRect(0, 0, 1600, 1000));
    ASSERT_TRUE(eventually([&] { return cover.isMapped && !cover.isAbove(id()); }));
    cover.raise();
    EXPECT_TRUE(eventually([&] { return !cover.isAbove(id()); }));
}

TEST_F(X11Panel, AgainstAWindowThatInsistsItGivesUpForAWhile)
{
    ManualScheduler time;
    X11PanelWindow panel(PanelStyle{}, time);
    panel.setFrame(QRectF(330, 192, 940, 300), PanelWindow::FrameChange::immediate);
    panel.orderFrontRegardless();
    const auto window = xcb_window_t(panel.contentWindow()->winId());
    ASSERT_TRUE(eventually([&] { return Xcb::isViewable(window); }));
    OtherProgram insistent(QRect(0, 500, 1600, 500));
    ASSERT_TRUE(eventually([&] { return insistent.isMapped; }));
    const auto isRaisedAgain = [&] {
        insistent.raise();
        EXPECT_TRUE(eventually([&] { return time.pendingCount() > 0; }));
        time.advance(0.1);
        return !insistent.isAbove(window);
    };
    int raises = 0;
    while (raises < 100 && isRaisedAgain())
        ++raises;
    EXPECT_GE(raises, 3);
    EXPECT_LT(raises, 10);
    time.advance(6);
    EXPECT_TRUE(insistent.isAbove(window));
    const OtherProgram later(QRect(0, 900, 10, 10));
    ASSERT_TRUE(eventually([&] { return time.pendingCount() > 0; }));
    time.advance(0.1);
    EXPECT_FALSE(insistent.isAbove(window));
}

TEST_F(X11Panel, IsCutToTheShapeWhereNothingComposesTransparency)
{
    const XcbReply<xcb_shape_query_extents_reply_t> extents(xcb_shape_query_extents_reply(
        Xcb::connection(), xcb_shape_query_extents(Xcb::connection(), id()), nullptr));
    ASSERT_TRUE(extents);
    EXPECT_TRUE(extents->bounding_shaped);
    EXPECT_EQ(extents->bounding_shape_extents_width, 260);
    EXPECT_EQ(extents->bounding_shape_extents_height, 38);
}

TEST_F(X11Panel, IsWholeAgainWhileACompositorRuns)
{
    const auto isShaped = [this] {
        const XcbReply<xcb_shape_query_extents_reply_t> extents(xcb_shape_query_extents_reply(
            Xcb::connection(), xcb_shape_query_extents(Xcb::connection(), id()), nullptr));
        return extents && extents->bounding_shape_extents_width == 260;
    };
    OtherProgram compositor(QRect(0, 900, 10, 10));
    ASSERT_TRUE(eventually([&] { return compositor.isMapped; }));
    compositor.ownSelection("_NET_WM_CM_S0");
    EXPECT_TRUE(eventually([&] { return !isShaped(); }));
    compositor.destroyWindow();
    EXPECT_TRUE(eventually(isShaped));
}

TEST_F(X11Panel, NoWindowManagerHandlesIt)
{
    const XcbReply<xcb_get_window_attributes_reply_t> attributes(xcb_get_window_attributes_reply(
        Xcb::connection(), xcb_get_window_attributes(Xcb::connection(), id()), nullptr));
    ASSERT_TRUE(attributes);
    EXPECT_TRUE(attributes->override_redirect);
}

} // namespace
} // namespace brindle
