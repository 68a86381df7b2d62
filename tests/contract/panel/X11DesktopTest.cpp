#include "foundation/SystemScheduler.h"
#include "platform/linux/x11/X11PanelWindow.h"
#include "platform/linux/x11/XcbConnection.h"
#include "support/EventLoop.h"
#include "support/x11/Desktop.h"
#include "support/x11/OtherProgram.h"

#include <QDir>
#include <QPainter>
#include <QQuickPaintedItem>
#include <QQuickWindow>
#include <QTemporaryFile>

#include <gtest/gtest.h>
#include <xcb/shape.h>

namespace brindle {
namespace {

using test::eventually;
using test::OtherProgram;
using test::soon;

const QColor black(0, 0, 0);
/// What other programs paint their windows with.
const QColor paper(0xd8, 0xc2, 0x7a);

/// The closed island: 260 by 38 at the top centre of the panel, round below.
QPainterPath closedShape()
{
    QPainterPath path;
    path.setFillRule(Qt::WindingFill);
    path.addRect(340, 0, 260, 20);
    path.addRoundedRect(340, 0, 260, 38, 16, 16);
    return path.simplified();
}

class Ink : public QQuickPaintedItem
{
public:
    explicit Ink(QQuickItem *parent) : QQuickPaintedItem(parent) { setSize({940, 300}); }

    void paint(QPainter *painter) override { painter->fillPath(closedShape(), Qt::black); }
};

/// How often the program's threads went to sleep and were woken.
int wakeUps()
{
    int count = 0;
    const QDir tasks(QStringLiteral("/proc/self/task"));
    for (const QString &task : tasks.entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
        QFile status(tasks.filePath(task + QStringLiteral("/status")));
        if (!status.open(QIODevice::ReadOnly))
            continue;
        for (const QByteArray &line : status.readAll().split('\n')) {
            if (line.startsWith("voluntary_ctxt_switches:"))
                count += line.mid(line.indexOf(':') + 1).trimmed().toInt();
        }
    }
    return count;
}

/// The panel, drawn, over a window that fills the display, with a window manager.
class X11Desktop : public testing::Test
{
protected:
    SystemScheduler m_time;
    test::Desktop m_desktop;
    OtherProgram m_below{QRect(0, 0, 1600, 1000), OtherProgram::Kind::managed};
    X11PanelWindow m_panel{PanelStyle{}, m_time};
    Ink *m_ink = new Ink(m_panel.contentWindow()->contentItem());

    void SetUp() override
    {
        ASSERT_TRUE(m_desktop.isThere());
        ASSERT_TRUE(comesUp(m_below));
        m_panel.setFrame(QRectF(330, 692, 940, 300), PanelWindow::FrameChange::immediate);
        m_panel.setInputShape(closedShape());
        m_panel.orderFrontRegardless();
        ASSERT_TRUE(soon([this] { return isSeen(); }));
    }
    xcb_window_t id() { return xcb_window_t(m_panel.contentWindow()->winId()); }
    /// The window manager has taken the window in; then it gets the keyboard, as by a person's click, which
    /// the manager may undo while it still places the window.
    bool comesUp(OtherProgram &program) const
    {
        return soon([&] {
            if (!program.isMapped || !m_desktop.rootProperty("_NET_CLIENT_LIST").contains(program.window()))
                return false;
            if (m_desktop.rootProperty("_NET_ACTIVE_WINDOW") == QList{program.window()} && program.hasFocus())
                return true;
            program.takeFocus();
            return false;
        });
    }
    bool isSeen() const { return m_desktop.pixelAt({800, 28}) == black; }
    /// Whether nothing but the shape hides what is below the panel, up to and beyond its edges.
    bool isClearAround() const
    {
        constexpr std::array around{QPoint(668, 28), QPoint(932, 28), QPoint(671, 45), QPoint(800, 60),
            QPoint(340, 40), QPoint(1260, 300), QPoint(800, 300), QPoint(800, 312), QPoint(325, 150)};
        return std::ranges::all_of(
            around, [this](QPoint point) { return m_desktop.pixelAt(point) == paper; });
    }
    /// Whether the server shows no more of the panel than the shape.
    bool isCut()
    {
        const XcbReply<xcb_shape_query_extents_reply_t> extents(xcb_shape_query_extents_reply(
            Xcb::connection(), xcb_shape_query_extents(Xcb::connection(), id()), nullptr));
        return extents && extents->bounding_shape_extents_height == 38;
    }
    bool takeKeyboard()
    {
        m_panel.makeKeyAndOrderFront();
        return eventually([this] { return m_panel.isKeyWindow(); });
    }
};

TEST_F(X11Desktop, StandsOverAFocusedFullScreenWindow)
{
    OtherProgram film(QRect(100, 100, 640, 480), OtherProgram::Kind::fullScreen);
    ASSERT_TRUE(comesUp(film));
    ASSERT_TRUE(soon([&] { return film.size() == QSize(1600, 1000); }));
    EXPECT_TRUE(soon([this] { return isSeen(); }));
    EXPECT_TRUE(film.hasFocus());
}

TEST_F(X11Desktop, IsOnEveryWorkspace)
{
    ASSERT_TRUE(m_desktop.goToWorkspace(1));
    EXPECT_TRUE(soon([this] { return isSeen(); }));
    ASSERT_TRUE(m_desktop.goToWorkspace(0));
    EXPECT_TRUE(soon([this] { return isSeen(); }));
}

TEST_F(X11Desktop, IsNoEntryOfTheTaskBar)
{
    const QList<uint32_t> entries = m_desktop.rootProperty("_NET_CLIENT_LIST");
    EXPECT_TRUE(entries.contains(m_below.window()));
    EXPECT_FALSE(entries.contains(id()));
}

TEST_F(X11Desktop, IsNotCoveredByAWindowThatComesLater)
{
    OtherProgram later(QRect(0, 0, 1600, 1000), OtherProgram::Kind::managed);
    ASSERT_TRUE(comesUp(later));
    EXPECT_TRUE(soon([this] { return isSeen(); }));
}

TEST_F(X11Desktop, ShowsWhatIsBelowAroundTheShapeWithoutACompositor)
{
    EXPECT_TRUE(soon([this] { return isClearAround(); }));
}

TEST_F(X11Desktop, ShowsWhatIsBelowAroundTheShapeWhileCompositorsComeAndGo)
{
    for (int round = 0; round < 2; ++round) {
        ASSERT_TRUE(m_desktop.startCompositor());
        ASSERT_TRUE(soon([this] { return !isCut(); }));
        EXPECT_TRUE(soon([this] { return isSeen() && isClearAround(); }));
        m_desktop.killCompositor();
        ASSERT_TRUE(soon([this] { return isCut(); }));
        EXPECT_TRUE(soon([this] { return isSeen() && isClearAround(); }));
    }
}

TEST_F(X11Desktop, IsNotShadedByACompositorThatSparesDocks)
{
    QTemporaryFile configuration;
    ASSERT_TRUE(configuration.open());
    configuration.write("shadow = true; shadow-radius = 20; wintypes: { dock = { shadow = false; }; };");
    configuration.close();
    // A window that is no dock shows when the compositor shades.
    const OtherProgram shaded(QRect(700, 600, 200, 100));
    ASSERT_TRUE(m_desktop.startCompositor(configuration.fileName()));
    ASSERT_TRUE(soon([this] { return m_desktop.pixelAt({800, 704}) != paper; }));
    EXPECT_TRUE(soon([this] { return isSeen() && isClearAround(); }));
}

TEST_F(X11Desktop, AManagedWindowGetsTheKeyboardBack)
{
    ASSERT_TRUE(takeKeyboard());
    m_panel.orderFrontRegardless();
    EXPECT_TRUE(m_below.hasFocus());
}

TEST_F(X11Desktop, MadeKeyTwiceAtOnceItStillKnowsWhoHadTheKeyboard)
{
    m_panel.makeKeyAndOrderFront();
    ASSERT_TRUE(takeKeyboard());
    m_panel.orderFrontRegardless();
    EXPECT_TRUE(m_below.hasFocus());
}

TEST_F(X11Desktop, WhenTheWindowThatHadTheKeyboardIsGoneAnotherOneGetsIt)
{
    auto gone = std::make_unique<OtherProgram>(QRect(100, 500, 200, 100), OtherProgram::Kind::managed);
    ASSERT_TRUE(comesUp(*gone));
    ASSERT_TRUE(takeKeyboard());
    gone.reset();
    ASSERT_TRUE(soon([this] { return m_desktop.rootProperty("_NET_CLIENT_LIST").size() == 1; }));
    m_panel.orderFrontRegardless();
    EXPECT_TRUE(soon([this] { return m_below.hasFocus(); }));
}

TEST_F(X11Desktop, DoesNotKeepTheKeyboardThatNobodyHad)
{
    m_below.destroyWindow();
    m_below.dropFocus();
    ASSERT_TRUE(takeKeyboard());
    m_panel.orderFrontRegardless();
    EXPECT_TRUE(soon([this] { return !m_panel.isKeyWindow(); }));
}

TEST_F(X11Desktop, APanelThatGoesAwayLeavesTheKeyboardToWhoHadIt)
{
    {
        X11PanelWindow shortLived(PanelStyle{}, m_time);
        shortLived.makeKeyAndOrderFront();
        ASSERT_TRUE(eventually([&] { return shortLived.isKeyWindow(); }));
    }
    EXPECT_TRUE(soon([this] { return m_below.hasFocus(); }));
}

TEST_F(X11Desktop, AtRestItWakesNobody)
{
#ifdef __SANITIZE_THREAD__
    GTEST_SKIP() << "the thread sanitizer has a thread of its own, which never rests";
#endif
    ASSERT_TRUE(m_desktop.startCompositor());
    ASSERT_TRUE(soon([this] { return isSeen() && isClearAround(); }));
    const auto wakeUpsWithin = [this](double seconds) {
        bool isOver = false;
        const int before = wakeUps();
        const Delay end = m_time.after(seconds, [&isOver] { isOver = true; });
        eventually([&isOver] { return isOver; });
        return wakeUps() - before;
    };
    wakeUpsWithin(0.5); // what starting has left to do
    // The clock that ends the wait wakes the main thread once; falling asleep for it may count too.
    EXPECT_LE(wakeUpsWithin(2), 2);
}

} // namespace
} // namespace brindle
