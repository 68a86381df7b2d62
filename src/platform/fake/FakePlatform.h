#pragma once

#include "foundation/ManualScheduler.h"
#include "foundation/NotificationCenter.h"
#include "platform/Platform.h"
#include "platform/fake/FakeBluetoothDevices.h"
#include "platform/fake/FakeDesktop.h"
#include "platform/fake/FakeEventMonitors.h"
#include "platform/fake/FakeLevels.h"
#include "platform/fake/FakeMedia.h"
#include "platform/fake/FakePanelWindow.h"
#include "platform/fake/FakePowerSources.h"
#include "platform/fake/FakeUrlSession.h"
#include "platform/fake/FakeUserDefaults.h"

#include <QPointer>

namespace brindle {

/// A whole machine in memory, with every part in reach of the test that owns it.
class FakePlatform : public Platform
{
public:
    ManualScheduler time;
    NotificationCenter notificationCenter;
    FakeUserDefaults defaults;
    FakeLoginItem login;
    FakeBundle resources;
    FakeDirectories folders;
    FakeScreens displays;
    FakeEventMonitors input;
    FakePowerSources power;
    FakeBluetoothDevices bluetooth;
    FakeHaptics ticks;
    FakeAccessibilitySettings accessibility;
    FakeMenuBarItem menu;
    FakeHostApplication host;
    FakeAudioOutput audio;
    FakeDisplayBrightness brightness;
    FakeMediaKeys keys;
    FakeInputMonitoring monitoring;
    FakeWorkspace applications;
    FakeScriptRunner scripts;
    FakeChildProcesses processes;
    FakeUrlSession network{time};
    /// The queue that was made last under each label; its owner's.
    QHash<QString, FakeSerialQueue *> queues;
    /// The panel that was made last, as long as it lives.
    QPointer<FakePanelWindow> panel;

    Scheduler &scheduler() override { return time; }
    NotificationCenter &notifications() override { return notificationCenter; }
    UserDefaults &userDefaults() override { return defaults; }
    LoginItem &loginItem() override { return login; }
    Bundle &bundle() override { return resources; }
    Directories &directories() override { return folders; }
    Screens &screens() override { return displays; }
    EventMonitors &eventMonitors() override { return input; }
    PowerSources &powerSources() override { return power; }
    BluetoothDevices &bluetoothDevices() override { return bluetooth; }
    Haptics &haptics() override { return ticks; }
    AccessibilitySettings &accessibilitySettings() override { return accessibility; }
    MenuBarItem &menuBarItem() override { return menu; }
    HostApplication &application() override { return host; }
    AudioOutput &audioOutput() override { return audio; }
    DisplayBrightness &displayBrightness() override { return brightness; }
    MediaKeys &mediaKeys() override { return keys; }
    InputMonitoring &inputMonitoring() override { return monitoring; }
    Workspace &workspace() override { return applications; }
    ScriptRunner &scriptRunner() override { return scripts; }
    ChildProcesses &childProcesses() override { return processes; }
    UrlSession &urlSession() override { return network; }

    std::unique_ptr<SerialQueue> makeSerialQueue(const QString &label) override
    {
        auto made = std::make_unique<FakeSerialQueue>(time);
        queues.insert(label, made.get());
        return made;
    }

    std::unique_ptr<PanelWindow> makePanelWindow(const PanelStyle &style) override
    {
        auto made = std::make_unique<FakePanelWindow>(style, displays);
        panel = made.get();
        return made;
    }
};

} // namespace brindle
