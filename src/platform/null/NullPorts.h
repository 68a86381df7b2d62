#pragma once

#include "platform/AccessibilitySettings.h"
#include "platform/AudioOutput.h"
#include "platform/BluetoothDevices.h"
#include "platform/ChildProcesses.h"
#include "platform/DisplayBrightness.h"
#include "platform/EventMonitors.h"
#include "platform/Haptics.h"
#include "platform/InputMonitoring.h"
#include "platform/LoginItem.h"
#include "platform/MediaKeys.h"
#include "platform/MenuBarItem.h"
#include "platform/PowerSources.h"
#include "platform/Screens.h"
#include "platform/ScriptRunner.h"
#include "platform/Workspace.h"

namespace brindle {

// What stands in for a part that the machine lacks: it keeps the port's promises and does nothing.

class NullHaptics : public Haptics
{
public:
    void performFeedback(Pattern, PerformanceTime) override { }
};

class NullAudioOutput : public AudioOutput
{
public:
    std::optional<OutputLevel> level() const override { return std::nullopt; }
    // What never changes is told whenever it does.
    [[nodiscard]] Subscription notify(std::function<void()>) override
    {
        return Subscription([] { });
    }
};

class NullDisplayBrightness : public DisplayBrightness
{
public:
    std::optional<double> brightness() const override { return std::nullopt; }
    [[nodiscard]] Subscription notify(std::function<void()>) override
    {
        return Subscription([] { });
    }
};

class NullMediaKeys : public MediaKeys
{
public:
    [[nodiscard]] Subscription addGlobalMonitor(std::function<void(long)>) override { return {}; }
};

class NullInputMonitoring : public InputMonitoring
{
public:
    bool preflightListenEventAccess() const override { return false; }
    void requestListenEventAccess() override { }
};

class NullWorkspace : public Workspace
{
public:
    std::optional<QUrl> urlForApplication(const QString &) const override { return std::nullopt; }
    std::optional<QString> localizedName(const QUrl &) const override { return std::nullopt; }
    QImage icon(const QString &) const override
    {
        QImage clear(1, 1, QImage::Format_ARGB32_Premultiplied);
        clear.fill(Qt::transparent);
        return clear;
    }
    QSet<QString> runningApplications() const override { return {}; }
    void openApplication(const QUrl &) override { }
    bool open(const QUrl &) override { return false; }
};

class NullScriptRunner : public ScriptRunner
{
public:
    ScriptOutcome run(const QString &) override { return {}; }
};

class NullChildProcesses : public ChildProcesses
{
public:
    std::shared_ptr<ChildProcess> launch(Launch) override { return nullptr; }
};

class NullPowerSources : public PowerSources
{
public:
    std::optional<QList<std::optional<QVariantMap>>> sources() const override { return std::nullopt; }
    [[nodiscard]] Subscription notify(std::function<void()>) override { return {}; }
};

class NullBluetoothDevices : public BluetoothDevices
{
public:
    std::shared_ptr<BluetoothNotification> registerForConnectNotifications(Handler) override
    {
        return std::make_shared<Registration>();
    }
    std::shared_ptr<BluetoothNotification> registerForDisconnectNotification(
        const BluetoothDevice &, Handler) override
    {
        return nullptr;
    }

private:
    class Registration : public BluetoothNotification
    {
    public:
        void unregister() override { }
    };
};

class NullLoginItem : public LoginItem
{
public:
    Status status() const override { return Status::notFound; }
    [[nodiscard]] bool registerItem() override { return false; }
    [[nodiscard]] bool unregisterItem() override { return false; }
};

class NullMenuBarItem : public MenuBarItem
{
public:
    void install(const QString &, const QList<MenuEntry> &) override { }
};

class NullAccessibilitySettings : public AccessibilitySettings
{
    Q_OBJECT

public:
    using AccessibilitySettings::AccessibilitySettings;

    bool reduceMotion() const override { return false; }
};

class NullScreens : public Screens
{
    Q_OBJECT

public:
    using Screens::Screens;

    QList<Screen> screens() const override { return {}; }
    std::optional<Screen> mainScreen() const override { return std::nullopt; }
};

class NullEventMonitors : public EventMonitors
{
public:
    QPointF mouseLocation() const override { return {}; }
    quint32 pressedMouseButtons() const override { return 0; }
    [[nodiscard]] Subscription addGlobalMonitor(EventMask, std::function<void(const InputEvent &)>) override
    {
        return {};
    }
    [[nodiscard]] Subscription addLocalMonitor(
        EventMask, std::function<Disposition(const InputEvent &)>) override
    {
        return {};
    }
};

} // namespace brindle
