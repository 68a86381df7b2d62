#pragma once

#include "core/IslandTab.h"
#include "foundation/Date.h"

#include <QDateTime>
#include <QObject>
#include <QString>
#include <QStringList>

#include <optional>

namespace brindle {

class Scheduler;
class UserDefaults;

/// States one preference: its property, its getter and setter, its signal and its field.
#define BRINDLE_SETTING(Type, name, Name)                                                                    \
    Q_PROPERTY(Type name READ name WRITE set##Name NOTIFY name##Changed)                                     \
public:                                                                                                      \
    Type name() const                                                                                        \
    {                                                                                                        \
        return m_##name;                                                                                     \
    }                                                                                                        \
    void set##Name(const Type &value);                                                                       \
Q_SIGNALS:                                                                                                   \
    void name##Changed();                                                                                    \
                                                                                                             \
private:                                                                                                     \
    Type m_##name{};

/// The single holder of the user's preferences.
///
/// Read from the defaults at construction and never again; each set is told to observers, if the value
/// changed, and then written through. Nothing is validated here: ranges are the business of the controls that
/// set a value. Main thread.
class SettingsStore : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QList<brindle::IslandTab> visibleTabs READ visibleTabs NOTIFY visibleTabsChanged)

    // The numbers among them need the initializer that the texts could do without.
    // NOLINTBEGIN(readability-redundant-member-init)
    BRINDLE_SETTING(bool, openOnHover, OpenOnHover)
    /// Seconds.
    BRINDLE_SETTING(double, hoverDelay, HoverDelay)
    /// Seconds.
    BRINDLE_SETTING(double, collapseDelay, CollapseDelay)
    BRINDLE_SETTING(bool, clipboardHistoryEnabled, ClipboardHistoryEnabled)
    /// Hours. Kept for its key alone: nothing reads it, and setting it is not written.
    BRINDLE_SETTING(double, shelfRetentionHours, ShelfRetentionHours)
    BRINDLE_SETTING(bool, reduceEffects, ReduceEffects)
    BRINDLE_SETTING(QString, preferredModel, PreferredModel)
    BRINDLE_SETTING(bool, automaticFallback, AutomaticFallback)
    /// The name of a display, or "Automatic".
    BRINDLE_SETTING(QString, selectedDisplayName, SelectedDisplayName)
    /// Points.
    BRINDLE_SETTING(double, collapsedWidth, CollapsedWidth)
    /// Points.
    BRINDLE_SETTING(double, collapsedHeight, CollapsedHeight)
    /// Points that the closed island grows by for an activity.
    BRINDLE_SETTING(double, collapsedActivityExpansion, CollapsedActivityExpansion)
    /// Seconds.
    BRINDLE_SETTING(double, animationDuration, AnimationDuration)
    /// Points.
    BRINDLE_SETTING(double, expandedCornerRadius, ExpandedCornerRadius)
    /// Points.
    BRINDLE_SETTING(double, topCornerRadius, TopCornerRadius)
    /// Points.
    BRINDLE_SETTING(double, expandedContentBottomInset, ExpandedContentBottomInset)
    BRINDLE_SETTING(bool, showMediaTab, ShowMediaTab)
    BRINDLE_SETTING(bool, showShelfTab, ShowShelfTab)
    BRINDLE_SETTING(bool, showCalculatorTab, ShowCalculatorTab)
    BRINDLE_SETTING(bool, showAssistantTab, ShowAssistantTab)
    BRINDLE_SETTING(bool, showMediaPlayer, ShowMediaPlayer)
    BRINDLE_SETTING(bool, showMediaClock, ShowMediaClock)
    BRINDLE_SETTING(bool, showMediaWeather, ShowMediaWeather)
    BRINDLE_SETTING(bool, showMediaCalendar, ShowMediaCalendar)
    BRINDLE_SETTING(bool, showShelfPanel, ShowShelfPanel)
    BRINDLE_SETTING(bool, showClipboardPanel, ShowClipboardPanel)
    BRINDLE_SETTING(bool, showCalculatorPanel, ShowCalculatorPanel)
    BRINDLE_SETTING(bool, showCurrencyPanel, ShowCurrencyPanel)
    BRINDLE_SETTING(bool, systemControlsEnabled, SystemControlsEnabled)
    BRINDLE_SETTING(bool, weatherEnabled, WeatherEnabled)
    /// Setting it, also to an equal value, moves `modelCacheDate` to now.
    BRINDLE_SETTING(QStringList, cachedModels, CachedModels)
    // NOLINTEND(readability-redundant-member-init)

public:
    /// Registers the fall-back values, migrates what an earlier version stored, and loads. Never fails.
    SettingsStore(UserDefaults &defaults, Scheduler &scheduler, QObject *parent = nullptr);

    /// The tabs that are switched on, in their order; media alone when none is. Never empty.
    QList<IslandTab> visibleTabs() const;
    /// When `cachedModels` was last set; absent when it never was.
    std::optional<Date> modelCacheDate() const;

Q_SIGNALS:
    void visibleTabsChanged();

private:
    void migrate();
    void load();
    template <typename T> void set(T SettingsStore::*field, const T &value, void (SettingsStore::*changed)());

    UserDefaults &m_defaults;
    Scheduler &m_scheduler;
};

#undef BRINDLE_SETTING

} // namespace brindle
