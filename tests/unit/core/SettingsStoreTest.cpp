#include "core/SettingsStore.h"

#include "foundation/ManualScheduler.h"
#include "platform/fake/FakeUserDefaults.h"

#include <QMetaProperty>
#include <QSet>
#include <QSignalSpy>

#include <algorithm>
#include <gmock/gmock.h>

namespace brindle {
namespace {

using testing::ElementsAre;

struct Setting
{
    const char *name;
    const char *key;
    QVariant registered;
    /// What a stored 0 or -5 of a number reads as, where that is not the number itself.
    std::optional<double> instead = std::nullopt;
};

void PrintTo(const Setting &setting, std::ostream *stream)
{
    *stream << setting.name;
}

QVariant text(const char *value)
{
    return QString::fromLatin1(value);
}

/// Every preference, but the cached models, which nothing is registered for.
const std::vector<Setting> settings{
    {"openOnHover", "openOnHover", true},
    {"hoverDelay", "hoverDelay", 0.05},
    {"collapseDelay", "collapseDelay", 0.2},
    {"clipboardHistoryEnabled", "clipboardHistory", true},
    {"shelfRetentionHours", "shelfRetentionHours", 24.0},
    {"reduceEffects", "reduceEffects", false},
    {"preferredModel", "preferredModel", text("gemini-3.7-flash")},
    {"automaticFallback", "automaticFallback", true},
    {"selectedDisplayName", "selectedDisplayName", text("Automatic")},
    {"collapsedWidth", "collapsedWidth", 260.0, 260.0},
    {"collapsedHeight", "collapsedHeight", 38.0, 38.0},
    {"collapsedActivityExpansion", "collapsedActivityExpansion", 108.0, 108.0},
    {"animationDuration", "animationDuration", 0.38, 0.38},
    {"expandedCornerRadius", "expandedCornerRadius", 26.0, 26.0},
    {"topCornerRadius", "topCornerRadius", 28.0, 28.0},
    {"expandedContentBottomInset", "expandedContentBottomInset", 18.0, 18.0},
    {"showMediaTab", "showMediaTab", true},
    {"showShelfTab", "showShelfTab", true},
    {"showCalculatorTab", "showCalculatorTab", true},
    {"showAssistantTab", "showAssistantTab", false},
    {"showMediaPlayer", "showMediaPlayer", true},
    {"showMediaClock", "showMediaClock", true},
    {"showMediaWeather", "showMediaWeather", false},
    {"showMediaCalendar", "showMediaCalendar", true},
    {"showShelfPanel", "showShelfPanel", true},
    {"showClipboardPanel", "showClipboardPanel", true},
    {"showCalculatorPanel", "showCalculatorPanel", true},
    {"showCurrencyPanel", "showCurrencyPanel", true},
    {"systemControlsEnabled", "systemControlsEnabled", false},
    {"weatherEnabled", "weatherEnabled", false},
};

class SettingsTest : public testing::Test
{
protected:
    SettingsTest()
    {
        // The migration has been, so that what a test stores is what is read.
        defaults.stored[QStringLiteral("weatherOptInMigrationVersion")] = 1;
    }

    SettingsStore &store()
    {
        if (!m_store)
            m_store = std::make_unique<SettingsStore>(defaults, time);
        return *m_store;
    }
    void relaunch() { m_store.reset(); }

    FakeUserDefaults defaults;
    ManualScheduler time;

private:
    std::unique_ptr<SettingsStore> m_store;
};

class EachSetting : public SettingsTest, public testing::WithParamInterface<Setting>
{
protected:
    const Setting &setting = GetParam();
    const QString key = QString::fromLatin1(setting.key);

    bool isInert() const { return key == u"shelfRetentionHours"; }
    /// Another value of the same type.
    QVariant another() const
    {
        switch (setting.registered.typeId()) {
        case QMetaType::Bool:
            return !setting.registered.toBool();
        case QMetaType::Double:
            return setting.registered.toDouble() + 1;
        default:
            return QStringLiteral("Another");
        }
    }
};

INSTANTIATE_TEST_SUITE_P(Settings, EachSetting, testing::ValuesIn(settings),
    [](const auto &instance) { return std::string(instance.param.name); });

TEST_P(EachSetting, IsRegisteredAndReadsAsRegistered)
{
    EXPECT_EQ(store().property(setting.name), setting.registered);
    EXPECT_EQ(defaults.registered.value(key), setting.registered);
    EXPECT_FALSE(defaults.stored.contains(key));
}

TEST_P(EachSetting, IsLoadedFromItsKey)
{
    defaults.stored[key] = another();
    EXPECT_EQ(store().property(setting.name), another());
}

TEST_P(EachSetting, IsWrittenThroughAndReadAgain)
{
    ASSERT_TRUE(store().setProperty(setting.name, another()));
    EXPECT_EQ(store().property(setting.name), another());
    EXPECT_EQ(defaults.stored.value(key), isInert() ? QVariant() : another());
    relaunch();
    EXPECT_EQ(store().property(setting.name), isInert() ? setting.registered : another());
}

TEST_P(EachSetting, IsToldToObserversOnlyOnChange)
{
    const QMetaObject *type = store().metaObject();
    const QMetaProperty property = type->property(type->indexOfProperty(setting.name));
    QSignalSpy changes(&store(), property.notifySignal());
    ASSERT_TRUE(changes.isValid());
    property.write(&store(), setting.registered);
    EXPECT_EQ(changes.count(), 0);
    property.write(&store(), another());
    property.write(&store(), another());
    EXPECT_EQ(changes.count(), 1);
}

TEST_P(EachSetting, AWrongTypeReadsAsTheTypesZeroOrItsRule)
{
    defaults.stored[key] = QDateTime::fromSecsSinceEpoch(0);
    QVariant zero = setting.instead.value_or(0);
    if (!setting.instead)
        zero = setting.registered.typeId() == QMetaType::QString ? setting.registered
                                                                 : QVariant(setting.registered.metaType());
    EXPECT_EQ(store().property(setting.name), zero);
}

class EachNumber : public EachSetting
{
};

std::vector<Setting> numbers()
{
    std::vector<Setting> found;
    std::ranges::copy_if(settings, std::back_inserter(found),
        [](const Setting &setting) { return setting.registered.typeId() == QMetaType::Double; });
    return found;
}

INSTANTIATE_TEST_SUITE_P(Settings, EachNumber, testing::ValuesIn(numbers()),
    [](const auto &instance) { return std::string(instance.param.name); });

TEST_P(EachNumber, OfNothingOrLessIsReadByItsRule)
{
    for (const double value : {0.0, -5.0}) {
        relaunch();
        defaults.stored[key] = value;
        EXPECT_EQ(store().property(setting.name), setting.instead.value_or(value));
    }
}

TEST_F(SettingsTest, AFreshDomainHoldsNothingButTheMigration)
{
    defaults.stored.clear();
    store();
    EXPECT_EQ(defaults.stored,
        (QVariantMap{{QStringLiteral("weatherOptInMigrationVersion"), qint64(1)},
            {QStringLiteral("showMediaWeather"), false}, {QStringLiteral("weatherEnabled"), false}}));
    EXPECT_EQ(defaults.registered.size(), qsizetype(settings.size()));
    EXPECT_EQ(store().cachedModels(), QStringList());
    EXPECT_EQ(store().modelCacheDate(), std::nullopt);
}

TEST_F(SettingsTest, TheStoreHasNoOtherProperties)
{
    const QMetaObject *type = store().metaObject();
    const QSet<QString> others{QStringLiteral("cachedModels"), QStringLiteral("visibleTabs")};
    qsizetype known = 0;
    for (int index = type->propertyOffset(); index < type->propertyCount(); ++index)
        known += !others.contains(QString::fromLatin1(type->property(index).name()));
    EXPECT_EQ(known, qsizetype(settings.size()));
}

TEST_F(SettingsTest, WeatherOfAnEarlierVersionIsSwitchedOffOnce)
{
    defaults.stored = {{QStringLiteral("weatherEnabled"), true}, {QStringLiteral("showMediaWeather"), true}};
    EXPECT_FALSE(store().weatherEnabled());
    EXPECT_FALSE(store().showMediaWeather());
    store().setWeatherEnabled(true);
    relaunch();
    EXPECT_TRUE(store().weatherEnabled());
}

TEST_F(SettingsTest, AFormerDefaultWidthIsReadAsTheNewOneAndLeftStored)
{
    const QString key = QStringLiteral("collapsedWidth");
    for (const auto &[stored, loaded] : {std::pair(224.0, 260.0), std::pair(224.5, 224.5),
             std::pair(223.5, 223.5), std::pair(0.0, 260.0), std::pair(-5.0, 260.0)}) {
        relaunch();
        defaults.stored[key] = stored;
        EXPECT_EQ(store().collapsedWidth(), loaded) << stored;
        EXPECT_EQ(defaults.stored.value(key), stored);
    }
}

TEST_F(SettingsTest, AHeightOfNothingReadsAsTheDefaultButADelayOfNothingStays)
{
    defaults.stored[QStringLiteral("collapsedHeight")] = 0.0;
    defaults.stored[QStringLiteral("hoverDelay")] = 0.0;
    EXPECT_EQ(store().collapsedHeight(), 38);
    EXPECT_EQ(store().hoverDelay(), 0);
}

TEST_F(SettingsTest, ANegativeDelayIsStoredAndLoadedAsSuch)
{
    store().setHoverDelay(-1.5);
    relaunch();
    EXPECT_EQ(store().hoverDelay(), -1.5);
}

TEST_F(SettingsTest, WithAllTabsOffMediaAloneIsVisible)
{
    store().setShowMediaTab(false);
    store().setShowShelfTab(false);
    store().setShowCalculatorTab(false);
    EXPECT_THAT(store().visibleTabs(), ElementsAre(IslandTab::media));
    EXPECT_FALSE(store().showMediaTab());
}

TEST_F(SettingsTest, TheAssistantAloneIsVisibleAlone)
{
    store().setShowMediaTab(false);
    store().setShowShelfTab(false);
    store().setShowCalculatorTab(false);
    store().setShowAssistantTab(true);
    EXPECT_THAT(store().visibleTabs(), ElementsAre(IslandTab::assistant));
}

TEST_F(SettingsTest, VisibleTabsKeepTheirOrderAndTellTheirChange)
{
    EXPECT_THAT(
        store().visibleTabs(), ElementsAre(IslandTab::media, IslandTab::shelf, IslandTab::calculator));
    QSignalSpy changes(&store(), &SettingsStore::visibleTabsChanged);
    store().setShowShelfTab(false);
    store().setShowAssistantTab(true);
    EXPECT_EQ(changes.count(), 2);
    EXPECT_THAT(
        store().visibleTabs(), ElementsAre(IslandTab::media, IslandTab::calculator, IslandTab::assistant));
}

TEST_F(SettingsTest, CachedModelsAreStoredWithTheMoment)
{
    const QStringList models{QStringLiteral("a"), QStringLiteral("b")};
    store().setCachedModels(models);
    EXPECT_EQ(defaults.stored.value(QStringLiteral("cachedModels")), models);
    EXPECT_EQ(store().modelCacheDate(), time.now());
    time.advance(60);
    store().setCachedModels(models);
    EXPECT_EQ(store().modelCacheDate(), time.now());
    relaunch();
    EXPECT_EQ(store().cachedModels(), models);
}

TEST_F(SettingsTest, AnEmptyListOfModelsStillWritesTheDate)
{
    store().setCachedModels({});
    EXPECT_EQ(store().modelCacheDate(), time.now());
    EXPECT_TRUE(defaults.stored.contains(QStringLiteral("cachedModels")));
}

TEST_F(SettingsTest, ACacheDateThatIsNoDateIsAbsent)
{
    defaults.stored[QStringLiteral("modelCacheDate")] = 12.5;
    EXPECT_EQ(store().modelCacheDate(), std::nullopt);
}

TEST_F(SettingsTest, TheRetentionOfTheShelfLeavesTheDefaultsUntouched)
{
    store();
    const QVariantMap before = defaults.stored;
    store().setShelfRetentionHours(1);
    EXPECT_EQ(store().shelfRetentionHours(), 1);
    EXPECT_EQ(defaults.stored, before);
}

TEST_F(SettingsTest, AnObserverSeesTheNewValueBeforeItIsWritten)
{
    QVariant storedThen = true;
    QObject::connect(&store(), &SettingsStore::hoverDelayChanged, [&] {
        EXPECT_EQ(store().hoverDelay(), 1);
        storedThen = defaults.stored.value(QStringLiteral("hoverDelay"));
    });
    store().setHoverDelay(1);
    EXPECT_FALSE(storedThen.isValid());
}

TEST_F(SettingsTest, AnObserverThatSetsAgainLeavesItsOwnValue)
{
    QObject::connect(&store(), &SettingsStore::hoverDelayChanged, [&] {
        if (store().hoverDelay() < 0)
            store().setHoverDelay(0);
    });
    store().setHoverDelay(-1);
    EXPECT_EQ(store().hoverDelay(), 0);
    EXPECT_EQ(defaults.stored.value(QStringLiteral("hoverDelay")), 0.0);
}

} // namespace
} // namespace brindle
