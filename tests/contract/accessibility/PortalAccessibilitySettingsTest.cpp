#include "platform/linux/dbus/PortalAccessibilitySettings.h"

#include "foundation/SystemScheduler.h"
#include "platform/linux/dbus/BusConnection.h"
#include "support/EventLoop.h"
#include "support/dbus/DbusMock.h"
#include "support/dbus/PrivateBus.h"

#include <QDBusVariant>
#include <QSignalSpy>

#include <gmock/gmock.h>
#include <memory>

namespace brindle::test {

namespace {

using namespace Qt::StringLiterals;

const QString path = u"/org/freedesktop/portal/desktop"_s;
const QString interface = u"org.freedesktop.portal.Settings"_s;
const QString gnome = u"org.gnome.desktop.interface"_s;
const QString appearance = u"org.freedesktop.appearance"_s;
const QString kde = u"org.kde.kdeglobals.KDE"_s;

class PortalAccessibilitySettingsTest : public testing::Test
{
protected:
    /// `settings` is what the portal answers, in the words of its script.
    void startPortal(const QString &settings)
    {
        m_portal = std::make_unique<DbusMock>(
            DbusMock::Bare{bus, u"org.freedesktop.portal.Desktop"_s, path, interface});
        m_portal->script(path, u"AddMethod"_s,
            {interface, u"ReadAll"_s, u"as"_s, u"a{sa{sv}}"_s, QString(u"ret = "_s + settings)});
    }
    /// Looks at the portal that was started before.
    void look()
    {
        port = std::make_unique<PortalAccessibilitySettings>(connection);
        settle();
    }
    void change(
        const QString &group, const QString &key, const QVariant &value, const QString &signature = u"ssv"_s)
    {
        m_portal->script(path, u"EmitSignal"_s,
            {interface, u"SettingChanged"_s, signature, QVariant(QVariantList{group, key, value})});
        settle();
    }
    void settle() { deliverInRounds(*connection.waitForConnection(10), m_portal.get()); }
    DbusMock &portal() { return *m_portal; }

    PrivateBus bus;
    SystemScheduler time;
    BusConnection connection{BusConnection::busAt(bus.address()), time};
    std::unique_ptr<PortalAccessibilitySettings> port;

private:
    std::unique_ptr<DbusMock> m_portal;
};

} // namespace

TEST_F(PortalAccessibilitySettingsTest, WithoutAPortalNothingIsReduced)
{
    look();
    EXPECT_FALSE(port->reduceMotion());
}

TEST_F(PortalAccessibilitySettingsTest, ADesktopWithoutWishesReducesNothing)
{
    startPortal(u"{'org.freedesktop.appearance': {'color-scheme': dbus.UInt32(1)}}"_s);
    look();
    EXPECT_FALSE(port->reduceMotion());
}

TEST_F(PortalAccessibilitySettingsTest, AnimationsSwitchedOffReduceMotion)
{
    startPortal(u"{'org.gnome.desktop.interface': {'enable-animations': False}}"_s);
    look();
    EXPECT_TRUE(port->reduceMotion());
}

TEST_F(PortalAccessibilitySettingsTest, TheWishForReducedMotionReducesIt)
{
    startPortal(u"{'org.freedesktop.appearance': {'reduced-motion': dbus.UInt32(1)}}"_s);
    look();
    EXPECT_TRUE(port->reduceMotion());
}

TEST_F(PortalAccessibilitySettingsTest, AnimationsOfNoLengthReduceMotion)
{
    startPortal(u"{'org.kde.kdeglobals.KDE': {'AnimationDurationFactor': '0'}}"_s);
    look();
    EXPECT_TRUE(port->reduceMotion());
    change(kde, u"AnimationDurationFactor"_s, u"0.5"_s);
    EXPECT_FALSE(port->reduceMotion());
}

TEST_F(PortalAccessibilitySettingsTest, AChangeIsFollowedAndToldOnce)
{
    startPortal(u"{'org.gnome.desktop.interface': {'enable-animations': True}}"_s);
    look();
    QSignalSpy changes(port.get(), &AccessibilitySettings::reduceMotionChanged);
    change(gnome, u"enable-animations"_s, false);
    EXPECT_TRUE(port->reduceMotion());
    change(gnome, u"enable-animations"_s, false);
    change(appearance, u"reduced-motion"_s, 1U);
    EXPECT_EQ(changes.size(), 1);
    change(appearance, u"reduced-motion"_s, 0U);
    change(gnome, u"enable-animations"_s, true);
    EXPECT_FALSE(port->reduceMotion());
    EXPECT_EQ(changes.size(), 2);
}

TEST_F(PortalAccessibilitySettingsTest, AValueThatIsWrappedTwiceIsRead)
{
    startPortal(
        u"{'org.gnome.desktop.interface': {'enable-animations': dbus.Boolean(False, variant_level=2)}}"_s);
    look();
    EXPECT_TRUE(port->reduceMotion());
}

TEST_F(PortalAccessibilitySettingsTest, ValuesOfWrongTypesAreNoWish)
{
    startPortal(u"{'org.gnome.desktop.interface': {'enable-animations': 'no'},"
                " 'org.freedesktop.appearance': {'reduced-motion': '1'},"
                " 'org.kde.kdeglobals.KDE': {'AnimationDurationFactor': 'zero'}}"_s);
    look();
    EXPECT_FALSE(port->reduceMotion());
}

TEST_F(PortalAccessibilitySettingsTest, MessagesOfAWrongShapeAreIgnored)
{
    startPortal(u"{'org.gnome.desktop.interface': {'enable-animations': True}}"_s);
    look();
    change(gnome, u"enable-animations"_s, u"false"_s, u"sss"_s);
    EXPECT_FALSE(port->reduceMotion());
}

TEST_F(PortalAccessibilitySettingsTest, APortalThatComesLateIsRead)
{
    look();
    startPortal(u"{'org.gnome.desktop.interface': {'enable-animations': False}}"_s);
    // Its first answer came before the script had taught it; what changes afterwards comes through.
    change(gnome, u"enable-animations"_s, false);
    EXPECT_TRUE(port->reduceMotion());
}

TEST_F(PortalAccessibilitySettingsTest, WhatAPortalSaidStandsWhenItDies)
{
    startPortal(u"{'org.gnome.desktop.interface': {'enable-animations': False}}"_s);
    look();
    portal().kill();
    deliverEvents();
    EXPECT_TRUE(port->reduceMotion());
}

TEST_F(PortalAccessibilitySettingsTest, AHungPortalHoldsNothingUp)
{
    startPortal(u"{'org.gnome.desktop.interface': {'enable-animations': False}}"_s);
    portal().freeze();
    look();
    EXPECT_FALSE(port->reduceMotion());
    portal().thaw();
    settle();
    EXPECT_TRUE(port->reduceMotion());
}

} // namespace brindle::test
