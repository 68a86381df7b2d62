#pragma once

#include "platform/Platform.h"

#include <memory>

namespace brindle {

class BusConnection;

/// The machine that the program runs on, when that is a Linux desktop. Needs the application object; main
/// thread.
class LinuxPlatform : public Platform
{
public:
    LinuxPlatform();
    ~LinuxPlatform() override;

    /// The bus of the user's session, for what is the program's own business there.
    BusConnection &sessionBus();

    Scheduler &scheduler() override;
    NotificationCenter &notifications() override;
    UserDefaults &userDefaults() override;
    LoginItem &loginItem() override;
    Bundle &bundle() override;
    Directories &directories() override;
    Screens &screens() override;
    EventMonitors &eventMonitors() override;
    PowerSources &powerSources() override;
    BluetoothDevices &bluetoothDevices() override;
    Haptics &haptics() override;
    AccessibilitySettings &accessibilitySettings() override;
    MenuBarItem &menuBarItem() override;
    HostApplication &application() override;
    AudioOutput &audioOutput() override;
    DisplayBrightness &displayBrightness() override;
    MediaKeys &mediaKeys() override;
    InputMonitoring &inputMonitoring() override;
    Workspace &workspace() override;
    ScriptRunner &scriptRunner() override;
    ChildProcesses &childProcesses() override;
    UrlSession &urlSession() override;

    std::unique_ptr<SerialQueue> makeSerialQueue(const QString &label) override;
    std::unique_ptr<PanelWindow> makePanelWindow(const PanelStyle &style) override;

private:
    struct Parts;
    std::unique_ptr<Parts> m_parts;
};

} // namespace brindle
