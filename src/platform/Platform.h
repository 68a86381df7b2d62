#pragma once

#include <QString>

#include <memory>

namespace brindle {

class AccessibilitySettings;
class AudioOutput;
class BluetoothDevices;
class Bundle;
class ChildProcesses;
class Directories;
class DisplayBrightness;
class EventMonitors;
class Haptics;
class HostApplication;
class InputMonitoring;
class LoginItem;
class MediaKeys;
class MenuBarItem;
class NotificationCenter;
class PanelWindow;
class PowerSources;
class Scheduler;
class Screens;
class ScriptRunner;
class SerialQueue;
class UrlSession;
class UserDefaults;
class Workspace;
struct PanelStyle;

/// Everything that the operating system supplies, as the container takes it.
///
/// All ports live as long as the platform and are the platform's own; what a machine lacks is a null object.
/// Main thread.
class Platform
{
public:
    virtual ~Platform() = default;

    virtual Scheduler &scheduler() = 0;
    virtual NotificationCenter &notifications() = 0;
    virtual UserDefaults &userDefaults() = 0;
    virtual LoginItem &loginItem() = 0;
    virtual Bundle &bundle() = 0;
    virtual Directories &directories() = 0;
    virtual Screens &screens() = 0;
    virtual EventMonitors &eventMonitors() = 0;
    virtual PowerSources &powerSources() = 0;
    virtual BluetoothDevices &bluetoothDevices() = 0;
    virtual Haptics &haptics() = 0;
    virtual AccessibilitySettings &accessibilitySettings() = 0;
    virtual MenuBarItem &menuBarItem() = 0;
    virtual HostApplication &application() = 0;
    virtual AudioOutput &audioOutput() = 0;
    virtual DisplayBrightness &displayBrightness() = 0;
    virtual MediaKeys &mediaKeys() = 0;
    virtual InputMonitoring &inputMonitoring() = 0;
    virtual Workspace &workspace() = 0;
    virtual ScriptRunner &scriptRunner() = 0;
    virtual ChildProcesses &childProcesses() = 0;
    virtual UrlSession &urlSession() = 0;

    /// A queue of its own, for work that may block; its owner's, and gone before the platform. `label` names
    /// it to whoever looks at the process.
    virtual std::unique_ptr<SerialQueue> makeSerialQueue(const QString &label) = 0;

    virtual std::unique_ptr<PanelWindow> makePanelWindow(const PanelStyle &style) = 0;
};

} // namespace brindle
