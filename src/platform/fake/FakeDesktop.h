#pragma once

#include "foundation/Listeners.h"
#include "platform/AccessibilitySettings.h"
#include "platform/Bundle.h"
#include "platform/Directories.h"
#include "platform/Haptics.h"
#include "platform/HostApplication.h"
#include "platform/LoginItem.h"
#include "platform/MenuBarItem.h"
#include "platform/Screens.h"

#include <QHash>
#include <QVariantMap>

namespace brindle {

/// The smaller ports, each holding what a test gave it and what the program did to it.

class FakeLoginItem : public LoginItem
{
public:
    Status currentStatus = Status::notRegistered;
    bool refusesRegistration = false;
    int registrations = 0;

    Status status() const override { return currentStatus; }
    [[nodiscard]] bool registerItem() override
    {
        ++registrations;
        if (!refusesRegistration)
            currentStatus = Status::enabled;
        return !refusesRegistration;
    }
    [[nodiscard]] bool unregisterItem() override
    {
        currentStatus = Status::notRegistered;
        return true;
    }
};

class FakeBundle : public Bundle
{
public:
    QHash<QString, QString> resources;
    std::optional<QString> frameworks;
    QVariantMap info;

    std::optional<QString> resourcePath(const QString &name) const override
    {
        const auto found = resources.constFind(name);
        return found == resources.constEnd() ? std::nullopt : std::optional(*found);
    }
    std::optional<QString> privateFrameworksPath() const override { return frameworks; }
    QVariant infoValue(const QString &key) const override { return info.value(key); }
};

class FakeDirectories : public Directories
{
public:
    QString applicationSupportPath;
    QString cachesPath;

    QString applicationSupport() const override { return applicationSupportPath; }
    QString caches() const override { return cachesPath; }
};

class FakeScreens : public Screens
{
    Q_OBJECT

public:
    using Screens::Screens;

    QList<Screen> screens() const override { return m_screens; }
    std::optional<Screen> mainScreen() const override
    {
        return m_screens.isEmpty() ? std::nullopt : std::optional(m_screens.constFirst());
    }
    void set(const QList<Screen> &screens)
    {
        m_screens = screens;
        Q_EMIT parametersChanged();
    }

private:
    QList<Screen> m_screens{{QStringLiteral("Fake"), QRectF(0, 0, 1512, 982), 0, 2}};
};

class FakeHaptics : public Haptics
{
public:
    struct Tick
    {
        Pattern pattern;
        PerformanceTime time;

        bool operator==(const Tick &) const = default;
    };

    QList<Tick> ticks;

    void performFeedback(Pattern pattern, PerformanceTime time) override { ticks.append({pattern, time}); }
};

class FakeAccessibilitySettings : public AccessibilitySettings
{
    Q_OBJECT

public:
    using AccessibilitySettings::AccessibilitySettings;

    bool reduceMotion() const override { return m_reduceMotion; }
    void setReduceMotion(bool reduce)
    {
        if (m_reduceMotion == reduce)
            return;
        m_reduceMotion = reduce;
        Q_EMIT reduceMotionChanged();
    }

private:
    bool m_reduceMotion = false;
};

class FakeMenuBarItem : public MenuBarItem
{
public:
    QString symbol;
    QList<MenuEntry> entries;

    void install(const QString &symbolName, const QList<MenuEntry> &menu) override
    {
        symbol = symbolName;
        entries = menu;
    }
    /// Chooses the entry as a user would; false when there is none or it is disabled.
    bool choose(const QString &title) const
    {
        for (const MenuEntry &entry : entries) {
            if (entry.title == title && (!entry.isEnabled || entry.isEnabled())) {
                entry.action();
                return true;
            }
        }
        return false;
    }
};

class FakeHostApplication : public HostApplication
{
public:
    ActivationPolicy policy = ActivationPolicy::regular;
    bool isTerminated = false;

    void setActivationPolicy(ActivationPolicy activationPolicy) override { policy = activationPolicy; }
    [[nodiscard]] Subscription notifyActivation(std::function<void()> becameActive) override
    {
        return m_activation.add(std::move(becameActive));
    }
    void terminate() override { isTerminated = true; }

    /// The person turns to the program.
    void becomeActive() { m_activation.call(); }
    bool isActivationObserved() const { return !m_activation.isEmpty(); }

private:
    Listeners<> m_activation;
};

} // namespace brindle
