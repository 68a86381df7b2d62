#include "app/LinuxPlatform.h"

#include "foundation/NotificationCenter.h"
#include "foundation/SystemScheduler.h"
#include "foundation/ThreadQueue.h"
#include "platform/linux/QtScreens.h"
#include "platform/linux/applications/XdgWorkspace.h"
#include "platform/linux/audio/PulseAudioOutput.h"
#include "platform/linux/dbus/BlueZDevices.h"
#include "platform/linux/dbus/BusConnection.h"
#include "platform/linux/dbus/PortalAccessibilitySettings.h"
#include "platform/linux/dbus/UPowerSources.h"
#include "platform/linux/desktop/QtHostApplication.h"
#include "platform/linux/desktop/TrayMenuBarItem.h"
#include "platform/linux/files/JsonUserDefaults.h"
#include "platform/linux/files/LinuxBundle.h"
#include "platform/linux/files/XdgDirectories.h"
#include "platform/linux/files/XdgLoginItem.h"
#include "platform/linux/hardware/KernelInputMonitoring.h"
#include "platform/linux/hardware/KernelMediaKeys.h"
#include "platform/linux/hardware/SysfsBrightness.h"
#include "platform/linux/network/QtUrlSession.h"
#include "platform/linux/process/LinuxChildProcesses.h"
#include "platform/linux/scripts/LinuxScriptRunner.h"
#include "platform/linux/x11/X11EventMonitors.h"
#include "platform/linux/x11/X11InputMonitoring.h"
#include "platform/linux/x11/X11MediaKeys.h"
#include "platform/linux/x11/X11PanelWindow.h"
#include "platform/null/NullPorts.h"

namespace brindle {

namespace {

/// Who tells of the media keys, and whether this user may listen.
struct KeyWatch
{
    std::unique_ptr<MediaKeys> keys;
    std::unique_ptr<InputMonitoring> permission;
};

/// An X server lets every program listen. A Wayland session lets none, and neither does the X server that it
/// may have; there the kernel is asked.
KeyWatch watchKeys()
{
    if (qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY"))
        return {std::make_unique<X11MediaKeys>(), std::make_unique<X11InputMonitoring>()};
    return {std::make_unique<KernelMediaKeys>(), std::make_unique<KernelInputMonitoring>()};
}

} // namespace

/// In the order in which they need each other.
struct LinuxPlatform::Parts
{
    SystemScheduler scheduler;
    NotificationCenter notifications;
    XdgDirectories directories;
    JsonUserDefaults userDefaults{directories.configuration(), scheduler};
    XdgLoginItem loginItem{directories};
    LinuxBundle bundle;
    QtScreens screens{scheduler};
    X11EventMonitors eventMonitors{scheduler};
    BusConnection systemBus{BusConnection::systemBus(), scheduler};
    BusConnection sessionBus{BusConnection::sessionBus(), scheduler};
    UPowerSources powerSources{systemBus, scheduler};
    BlueZDevices bluetoothDevices{systemBus};
    NullHaptics haptics;
    PortalAccessibilitySettings accessibilitySettings{sessionBus};
    TrayMenuBarItem menuBarItem{scheduler, sessionBus};
    QtHostApplication application;
    PulseAudioOutput audioOutput{scheduler};
    SysfsBrightness displayBrightness{scheduler};
    KeyWatch keyWatch = watchKeys();
    XdgWorkspace workspace{scheduler, XdgWorkspace::usualSurroundings(directories)};
    LinuxScriptRunner scriptRunner{sessionBus, scheduler,
        {.configuration = directories.configuration(),
            .flatpaks = directories.home() + QStringLiteral("/.var/app")}};
    LinuxChildProcesses childProcesses;
    QtUrlSession urlSession{scheduler, directories.caches() + QStringLiteral("/com.brindle.app/network")};
};

LinuxPlatform::LinuxPlatform() : m_parts(std::make_unique<Parts>()) { }

LinuxPlatform::~LinuxPlatform() = default;

BusConnection &LinuxPlatform::sessionBus()
{
    return m_parts->sessionBus;
}

Scheduler &LinuxPlatform::scheduler()
{
    return m_parts->scheduler;
}

NotificationCenter &LinuxPlatform::notifications()
{
    return m_parts->notifications;
}

UserDefaults &LinuxPlatform::userDefaults()
{
    return m_parts->userDefaults;
}

LoginItem &LinuxPlatform::loginItem()
{
    return m_parts->loginItem;
}

Bundle &LinuxPlatform::bundle()
{
    return m_parts->bundle;
}

Directories &LinuxPlatform::directories()
{
    return m_parts->directories;
}

Screens &LinuxPlatform::screens()
{
    return m_parts->screens;
}

EventMonitors &LinuxPlatform::eventMonitors()
{
    return m_parts->eventMonitors;
}

PowerSources &LinuxPlatform::powerSources()
{
    return m_parts->powerSources;
}

BluetoothDevices &LinuxPlatform::bluetoothDevices()
{
    return m_parts->bluetoothDevices;
}

Haptics &LinuxPlatform::haptics()
{
    return m_parts->haptics;
}

AccessibilitySettings &LinuxPlatform::accessibilitySettings()
{
    return m_parts->accessibilitySettings;
}

MenuBarItem &LinuxPlatform::menuBarItem()
{
    return m_parts->menuBarItem;
}

HostApplication &LinuxPlatform::application()
{
    return m_parts->application;
}

AudioOutput &LinuxPlatform::audioOutput()
{
    return m_parts->audioOutput;
}

DisplayBrightness &LinuxPlatform::displayBrightness()
{
    return m_parts->displayBrightness;
}

MediaKeys &LinuxPlatform::mediaKeys()
{
    return *m_parts->keyWatch.keys;
}

InputMonitoring &LinuxPlatform::inputMonitoring()
{
    return *m_parts->keyWatch.permission;
}

Workspace &LinuxPlatform::workspace()
{
    return m_parts->workspace;
}

ScriptRunner &LinuxPlatform::scriptRunner()
{
    return m_parts->scriptRunner;
}

ChildProcesses &LinuxPlatform::childProcesses()
{
    return m_parts->childProcesses;
}

UrlSession &LinuxPlatform::urlSession()
{
    return m_parts->urlSession;
}

std::unique_ptr<SerialQueue> LinuxPlatform::makeSerialQueue(const QString &label)
{
    return std::make_unique<ThreadQueue>(label);
}

std::unique_ptr<PanelWindow> LinuxPlatform::makePanelWindow(const PanelStyle &style)
{
    return std::make_unique<X11PanelWindow>(style, m_parts->scheduler);
}

} // namespace brindle
