#include "platform/linux/desktop/TrayHosts.h"

#include "foundation/SystemScheduler.h"
#include "platform/linux/dbus/BusConnection.h"
#include "platform/linux/x11/XcbConnection.h"
#include "support/EventLoop.h"
#include "support/dbus/DbusMock.h"
#include "support/dbus/PrivateBus.h"

#include <QDBusVariant>
#include <QSignalSpy>

#include <gmock/gmock.h>

namespace brindle::test {

namespace {

using namespace Qt::StringLiterals;

const QString watcherName = u"org.kde.StatusNotifierWatcher"_s;
const QString watcherPath = u"/StatusNotifierWatcher"_s;

/// A bar on the display that shows icons.
class DisplayTray
{
public:
    DisplayTray() : m_window(xcb_generate_id(Xcb::connection()))
    {
        xcb_create_window(Xcb::connection(), XCB_COPY_FROM_PARENT, m_window, Xcb::root(), 0, 0, 1, 1, 0,
            XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, 0, nullptr);
        xcb_set_selection_owner(Xcb::connection(), m_window, Xcb::atom(X11Selection::tray), XCB_CURRENT_TIME);
        xcb_flush(Xcb::connection());
    }
    ~DisplayTray()
    {
        xcb_destroy_window(Xcb::connection(), m_window);
        xcb_flush(Xcb::connection());
    }
    DisplayTray(const DisplayTray &) = delete;
    DisplayTray &operator=(const DisplayTray &) = delete;

private:
    xcb_window_t m_window;
};

class TrayHostsTest : public testing::Test
{
protected:
    /// The desktop's list of icons; somebody may show them or not yet.
    void startWatcher(DbusMock &watcher, bool isShown)
    {
        watcher.script(watcherPath, u"AddProperty"_s,
            {watcherName, u"IsStatusNotifierHostRegistered"_s, QVariant::fromValue(QDBusVariant(isShown))});
    }
    bool isFound()
    {
        return eventually([this] { return found.size() == 1; });
    }
    void settle(const DbusMock *watcher = nullptr) { deliverInRounds(*bus.waitForConnection(10), watcher); }

    PrivateBus sessionBus;
    SystemScheduler time;
    BusConnection bus{BusConnection::busAt(sessionBus.address()), time};
    TrayHosts hosts{bus};
    QSignalSpy found{&hosts, &TrayHosts::found};
};

} // namespace

TEST_F(TrayHostsTest, WithoutABarThereIsNoPlace)
{
    hosts.follow();
    settle();
    EXPECT_TRUE(found.isEmpty());
}

TEST_F(TrayHostsTest, ABarOfTheDisplayIsFound)
{
    const DisplayTray tray;
    hosts.follow();
    EXPECT_EQ(found.size(), 1);
}

TEST_F(TrayHostsTest, ABarOfTheDisplayThatComesLaterIsFound)
{
    hosts.follow();
    settle();
    const DisplayTray tray;
    EXPECT_TRUE(isFound());
}

TEST_F(TrayHostsTest, ABarOnTheBusIsFound)
{
    DbusMock watcher{DbusMock::Bare{sessionBus, watcherName, watcherPath, watcherName}};
    startWatcher(watcher, true);
    hosts.follow();
    EXPECT_TRUE(isFound());
}

TEST_F(TrayHostsTest, AListThatNobodyShowsIsNoPlaceUntilSomebodyDoes)
{
    DbusMock watcher{DbusMock::Bare{sessionBus, watcherName, watcherPath, watcherName}};
    startWatcher(watcher, false);
    hosts.follow();
    settle(&watcher);
    EXPECT_TRUE(found.isEmpty());
    watcher.script(watcherPath, u"EmitSignal"_s,
        {watcherName, u"StatusNotifierHostRegistered"_s, QString(), QVariantList()});
    EXPECT_TRUE(isFound());
}

TEST_F(TrayHostsTest, APlaceIsToldOnce)
{
    DbusMock watcher{DbusMock::Bare{sessionBus, watcherName, watcherPath, watcherName}};
    startWatcher(watcher, true);
    const DisplayTray tray;
    hosts.follow();
    settle(&watcher);
    EXPECT_EQ(found.size(), 1);
}

TEST_F(TrayHostsTest, AListThatHangsHoldsNothingUp)
{
    DbusMock watcher{DbusMock::Bare{sessionBus, watcherName, watcherPath, watcherName}};
    watcher.freeze();
    hosts.follow();
    settle();
    EXPECT_TRUE(found.isEmpty());
    const DisplayTray tray;
    EXPECT_TRUE(isFound());
}

} // namespace brindle::test
