#include "core/SettingsStore.h"

#include "foundation/Scheduler.h"
#include "platform/UserDefaults.h"

#include <cmath>

namespace brindle {

namespace {

const QString automaticDisplay = QStringLiteral("Automatic");
const QString defaultModel = QStringLiteral("gemini-3.7-flash");
const QString weatherMigrationKey = QStringLiteral("weatherOptInMigrationVersion");
const QString modelCacheDateKey = QStringLiteral("modelCacheDate");

/// An earlier version's default width, which no user chose.
constexpr double formerCollapsedWidth = 224;

// What a property holds when nothing sensible is stored.
constexpr double defaultCollapsedWidth = 260;
constexpr double defaultCollapsedHeight = 38;
constexpr double defaultActivityExpansion = 108;
constexpr double defaultAnimationDuration = 0.38;
constexpr double defaultExpandedCornerRadius = 26;
constexpr double defaultTopCornerRadius = 28;
constexpr double defaultContentBottomInset = 18;

QVariantMap fallBackValues()
{
    return {
        {QStringLiteral("openOnHover"), true},
        {QStringLiteral("hoverDelay"), 0.05},
        {QStringLiteral("collapseDelay"), 0.2},
        {QStringLiteral("clipboardHistory"), true},
        {QStringLiteral("shelfRetentionHours"), 24.0},
        {QStringLiteral("reduceEffects"), false},
        {QStringLiteral("preferredModel"), defaultModel},
        {QStringLiteral("automaticFallback"), true},
        {QStringLiteral("selectedDisplayName"), automaticDisplay},
        {QStringLiteral("collapsedWidth"), defaultCollapsedWidth},
        {QStringLiteral("collapsedHeight"), defaultCollapsedHeight},
        {QStringLiteral("collapsedActivityExpansion"), defaultActivityExpansion},
        {QStringLiteral("animationDuration"), defaultAnimationDuration},
        {QStringLiteral("expandedCornerRadius"), defaultExpandedCornerRadius},
        {QStringLiteral("topCornerRadius"), defaultTopCornerRadius},
        {QStringLiteral("expandedContentBottomInset"), defaultContentBottomInset},
        {QStringLiteral("showMediaTab"), true},
        {QStringLiteral("showShelfTab"), true},
        {QStringLiteral("showCalculatorTab"), true},
        {QStringLiteral("showAssistantTab"), false},
        {QStringLiteral("showMediaPlayer"), true},
        {QStringLiteral("showMediaClock"), true},
        {QStringLiteral("showMediaWeather"), false},
        {QStringLiteral("showMediaCalendar"), true},
        {QStringLiteral("showShelfPanel"), true},
        {QStringLiteral("showClipboardPanel"), true},
        {QStringLiteral("showCalculatorPanel"), true},
        {QStringLiteral("showCurrencyPanel"), true},
        {QStringLiteral("systemControlsEnabled"), false},
        {QStringLiteral("weatherEnabled"), false},
    };
}

double orDefault(double stored, double fallBack)
{
    return stored > 0 ? stored : fallBack;
}

void write(UserDefaults &defaults, const QString &key, bool value)
{
    defaults.setBool(key, value);
}

void write(UserDefaults &defaults, const QString &key, double value)
{
    defaults.setDouble(key, value);
}

void write(UserDefaults &defaults, const QString &key, const QString &value)
{
    defaults.setObject(key, value);
}

} // namespace

SettingsStore::SettingsStore(UserDefaults &defaults, Scheduler &scheduler, QObject *parent)
    : QObject(parent)
    , m_defaults(defaults)
    , m_scheduler(scheduler)
{
    m_defaults.registerDefaults(fallBackValues());
    migrate();
    load();
    for (const auto changed : {&SettingsStore::showMediaTabChanged, &SettingsStore::showShelfTabChanged,
             &SettingsStore::showCalculatorTabChanged, &SettingsStore::showAssistantTabChanged})
        connect(this, changed, this, &SettingsStore::visibleTabsChanged);
}

// Weather tells a server where the user is, so that whoever had it on before it was a choice is asked again.
void SettingsStore::migrate()
{
    constexpr int optInVersion = 1;
    if (m_defaults.integerForKey(weatherMigrationKey) >= optInVersion)
        return;
    m_defaults.setBool(QStringLiteral("showMediaWeather"), false);
    m_defaults.setBool(QStringLiteral("weatherEnabled"), false);
    m_defaults.setInteger(weatherMigrationKey, optInVersion);
}

void SettingsStore::load()
{
    const auto flag = [this](QLatin1StringView key) { return m_defaults.boolForKey(key); };
    const auto number = [this](QLatin1StringView key) { return m_defaults.doubleForKey(key); };
    using namespace Qt::StringLiterals;

    m_openOnHover = flag("openOnHover"_L1);
    m_hoverDelay = number("hoverDelay"_L1);
    m_collapseDelay = number("collapseDelay"_L1);
    m_clipboardHistoryEnabled = flag("clipboardHistory"_L1);
    m_shelfRetentionHours = number("shelfRetentionHours"_L1);
    m_reduceEffects = flag("reduceEffects"_L1);
    m_preferredModel = m_defaults.stringForKey("preferredModel"_L1).value_or(defaultModel);
    m_automaticFallback = flag("automaticFallback"_L1);
    m_selectedDisplayName = m_defaults.stringForKey("selectedDisplayName"_L1).value_or(automaticDisplay);
    const double width = number("collapsedWidth"_L1);
    m_collapsedWidth =
        width == formerCollapsedWidth ? defaultCollapsedWidth : orDefault(width, defaultCollapsedWidth);
    m_collapsedHeight = orDefault(number("collapsedHeight"_L1), defaultCollapsedHeight);
    m_collapsedActivityExpansion =
        orDefault(number("collapsedActivityExpansion"_L1), defaultActivityExpansion);
    m_animationDuration = orDefault(number("animationDuration"_L1), defaultAnimationDuration);
    m_expandedCornerRadius = orDefault(number("expandedCornerRadius"_L1), defaultExpandedCornerRadius);
    m_topCornerRadius = orDefault(number("topCornerRadius"_L1), defaultTopCornerRadius);
    m_expandedContentBottomInset =
        orDefault(number("expandedContentBottomInset"_L1), defaultContentBottomInset);
    m_showMediaTab = flag("showMediaTab"_L1);
    m_showShelfTab = flag("showShelfTab"_L1);
    m_showCalculatorTab = flag("showCalculatorTab"_L1);
    m_showAssistantTab = flag("showAssistantTab"_L1);
    m_showMediaPlayer = flag("showMediaPlayer"_L1);
    m_showMediaClock = flag("showMediaClock"_L1);
    m_showMediaWeather = flag("showMediaWeather"_L1);
    m_showMediaCalendar = flag("showMediaCalendar"_L1);
    m_showShelfPanel = flag("showShelfPanel"_L1);
    m_showClipboardPanel = flag("showClipboardPanel"_L1);
    m_showCalculatorPanel = flag("showCalculatorPanel"_L1);
    m_showCurrencyPanel = flag("showCurrencyPanel"_L1);
    m_systemControlsEnabled = flag("systemControlsEnabled"_L1);
    m_weatherEnabled = flag("weatherEnabled"_L1);
    m_cachedModels = m_defaults.stringArrayForKey("cachedModels"_L1).value_or(QStringList());
}

template <typename T>
void SettingsStore::set(T SettingsStore::*field, const T &value, void (SettingsStore::*changed)())
{
    if (this->*field == value)
        return;
    this->*field = value;
    Q_EMIT(this->*changed)();
}

// Observers first, then the store; an observer that sets the property again leaves its own value in both.
#define BRINDLE_WRITE_THROUGH(Type, name, Name, key)                                                         \
    void SettingsStore::set##Name(const Type &value)                                                         \
    {                                                                                                        \
        set(&SettingsStore::m_##name, value, &SettingsStore::name##Changed);                                 \
        write(m_defaults, QStringLiteral(key), m_##name);                                                    \
    }

BRINDLE_WRITE_THROUGH(bool, openOnHover, OpenOnHover, "openOnHover")
BRINDLE_WRITE_THROUGH(double, hoverDelay, HoverDelay, "hoverDelay")
BRINDLE_WRITE_THROUGH(double, collapseDelay, CollapseDelay, "collapseDelay")
BRINDLE_WRITE_THROUGH(bool, clipboardHistoryEnabled, ClipboardHistoryEnabled, "clipboardHistory")
BRINDLE_WRITE_THROUGH(bool, reduceEffects, ReduceEffects, "reduceEffects")
BRINDLE_WRITE_THROUGH(QString, preferredModel, PreferredModel, "preferredModel")
BRINDLE_WRITE_THROUGH(bool, automaticFallback, AutomaticFallback, "automaticFallback")
BRINDLE_WRITE_THROUGH(QString, selectedDisplayName, SelectedDisplayName, "selectedDisplayName")
BRINDLE_WRITE_THROUGH(double, collapsedWidth, CollapsedWidth, "collapsedWidth")
BRINDLE_WRITE_THROUGH(double, collapsedHeight, CollapsedHeight, "collapsedHeight")
BRINDLE_WRITE_THROUGH(
    double, collapsedActivityExpansion, CollapsedActivityExpansion, "collapsedActivityExpansion")
BRINDLE_WRITE_THROUGH(double, animationDuration, AnimationDuration, "animationDuration")
BRINDLE_WRITE_THROUGH(double, expandedCornerRadius, ExpandedCornerRadius, "expandedCornerRadius")
BRINDLE_WRITE_THROUGH(double, topCornerRadius, TopCornerRadius, "topCornerRadius")
BRINDLE_WRITE_THROUGH(
    double, expandedContentBottomInset, ExpandedContentBottomInset, "expandedContentBottomInset")
BRINDLE_WRITE_THROUGH(bool, showMediaTab, ShowMediaTab, "showMediaTab")
BRINDLE_WRITE_THROUGH(bool, showShelfTab, ShowShelfTab, "showShelfTab")
BRINDLE_WRITE_THROUGH(bool, showCalculatorTab, ShowCalculatorTab, "showCalculatorTab")
BRINDLE_WRITE_THROUGH(bool, showAssistantTab, ShowAssistantTab, "showAssistantTab")
BRINDLE_WRITE_THROUGH(bool, showMediaPlayer, ShowMediaPlayer, "showMediaPlayer")
BRINDLE_WRITE_THROUGH(bool, showMediaClock, ShowMediaClock, "showMediaClock")
BRINDLE_WRITE_THROUGH(bool, showMediaWeather, ShowMediaWeather, "showMediaWeather")
BRINDLE_WRITE_THROUGH(bool, showMediaCalendar, ShowMediaCalendar, "showMediaCalendar")
BRINDLE_WRITE_THROUGH(bool, showShelfPanel, ShowShelfPanel, "showShelfPanel")
BRINDLE_WRITE_THROUGH(bool, showClipboardPanel, ShowClipboardPanel, "showClipboardPanel")
BRINDLE_WRITE_THROUGH(bool, showCalculatorPanel, ShowCalculatorPanel, "showCalculatorPanel")
BRINDLE_WRITE_THROUGH(bool, showCurrencyPanel, ShowCurrencyPanel, "showCurrencyPanel")
BRINDLE_WRITE_THROUGH(bool, systemControlsEnabled, SystemControlsEnabled, "systemControlsEnabled")
BRINDLE_WRITE_THROUGH(bool, weatherEnabled, WeatherEnabled, "weatherEnabled")

#undef BRINDLE_WRITE_THROUGH

void SettingsStore::setShelfRetentionHours(const double &value)
{
    set(&SettingsStore::m_shelfRetentionHours, value, &SettingsStore::shelfRetentionHoursChanged);
}

void SettingsStore::setCachedModels(const QStringList &value)
{
    set(&SettingsStore::m_cachedModels, value, &SettingsStore::cachedModelsChanged);
    m_defaults.setObject(QStringLiteral("cachedModels"), m_cachedModels);
    const qint64 milliseconds = std::llround(m_scheduler.now().secondsSince1970() * 1000);
    m_defaults.setObject(modelCacheDateKey, QDateTime::fromMSecsSinceEpoch(milliseconds, Qt::UTC));
}

QList<IslandTab> SettingsStore::visibleTabs() const
{
    QList<IslandTab> tabs;
    const auto add = [&tabs](IslandTab tab, bool isShown) {
        if (isShown)
            tabs.append(tab);
    };
    add(IslandTab::media, m_showMediaTab);
    add(IslandTab::shelf, m_showShelfTab);
    add(IslandTab::calculator, m_showCalculatorTab);
    add(IslandTab::assistant, m_showAssistantTab);
    return tabs.isEmpty() ? QList{IslandTab::media} : tabs;
}

std::optional<Date> SettingsStore::modelCacheDate() const
{
    const QVariant stored = m_defaults.objectForKey(modelCacheDateKey);
    if (stored.typeId() != QMetaType::QDateTime)
        return std::nullopt;
    return Date::fromSecondsSince1970(double(stored.toDateTime().toMSecsSinceEpoch()) / 1000);
}

} // namespace brindle
