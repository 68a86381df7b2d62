#include "screens/States.h"

#include "activities/ActivityCoordinator.h"
#include "core/SettingsStore.h"
#include "screens/MediaStates.h"

namespace brindle {

namespace {

SystemActivity activity(const IslandScene &scene, ActivityType type, const QString &title,
    std::optional<QString> detail, const QString &symbol, std::optional<double> progress = {})
{
    SystemActivity result;
    result.id = QUuid::createUuidV5(QUuid(), title);
    result.type = type;
    result.createdAt = scene.session.now();
    result.duration = 60;
    result.content = {title, std::move(detail), symbol, progress};
    return result;
}

void showCharging(IslandScene &scene)
{
    scene.show(activity(scene, ActivityType::charging, QStringLiteral("Charging"), QStringLiteral("64%"),
        QStringLiteral("battery.100percent.bolt")));
}

void showOnBattery(IslandScene &scene)
{
    scene.show(activity(scene, ActivityType::charging, QStringLiteral("On Battery"), QStringLiteral("64%"),
        QStringLiteral("battery.75percent")));
}

void showHeadset(IslandScene &scene, const QString &name, const QString &detail)
{
    scene.show(activity(scene, ActivityType::peripheral, name, detail, QStringLiteral("airpodspro")));
}

void openAt(IslandScene &scene, IslandTab tab)
{
    scene.settings().setShowAssistantTab(true);
    scene.plug(76, false, false);
    scene.viewModel().setSelectedTab(tab);
    scene.pass(5); // the event of the plug is over
    scene.open();
}

void openWithBattery(IslandScene &scene, int percentage, bool onMains, bool charging)
{
    scene.plug(percentage, onMains, charging);
    scene.pass(5);
    scene.open();
}

void scrollSidebar(IslandScene &scene, double delta)
{
    InputEvent event = Session::eventOf(EventKind::scrollWheel);
    event.isInPanel = true;
    event.locationInPanel = {60, 150};
    event.hasPreciseScrollingDeltas = true;
    event.phase = ScrollPhase::changed;
    event.scrollingDeltaY = delta;
    scene.session.sendLocal(event);
}

const QList<ScreenState> closedStates{
    {"closed-idle", [](IslandScene &) {}},
    {"closed-idle-charging",
        [](IslandScene &scene) {
            scene.plug(64, true, true);
            scene.pass(6);
        }},
    {"closed-media-playing",
        [](IslandScene &scene) {
            scene.play(songOf(scene, true), 0.8);
            scene.settle();
        }},
    {"closed-media-quiet",
        [](IslandScene &scene) {
            scene.play(songOf(scene, true), 0);
            scene.settle();
        }},
    {"closed-media-paused",
        [](IslandScene &scene) {
            scene.play(songOf(scene, false), 0.8);
            scene.settle();
        }},
    {"closed-media-no-artwork",
        [](IslandScene &scene) {
            scene.play(songOf(scene, true, false), 0.5);
            scene.settle();
        }},
    {"closed-media-source-icon",
        [](IslandScene &scene) {
            NowPlayingTrack track = songOf(scene, true, false);
            track.sourceIcon = coverPicture().scaled(48, 48);
            scene.play(track, 0.5);
            scene.settle();
        }},
    {"closed-media-still",
        [](IslandScene &scene) {
            scene.session.platform.accessibility.setReduceMotion(true);
            scene.play(songOf(scene, true), 0.8);
            scene.settle();
        }},
};

const QList<ScreenState> eventStates{
    {"event-charging",
        [](IslandScene &scene) {
            showCharging(scene);
            scene.settle();
        }},
    {"event-on-battery",
        [](IslandScene &scene) {
            showOnBattery(scene);
            scene.settle();
        }},
    {"event-headset-connected",
        [](IslandScene &scene) {
            showHeadset(scene, QStringLiteral("Ada’s Earbuds"), QStringLiteral("Connected"));
            scene.settle();
        }},
    {"event-headset-disconnected",
        [](IslandScene &scene) {
            showHeadset(scene, QStringLiteral("Ada’s Earbuds"), QStringLiteral("Disconnected"));
            scene.settle();
        }},
    {"event-long-title",
        [](IslandScene &scene) {
            showHeadset(scene,
                QStringLiteral("The very long name of a headset that nobody would ever type twice"),
                QStringLiteral("Connected"));
            scene.settle();
        }},
    {"event-rtl-title",
        [](IslandScene &scene) {
            showHeadset(scene, QStringLiteral("سماعات الرأس"), QStringLiteral("Connected"));
            scene.settle();
        }},
    {"event-cjk-title",
        [](IslandScene &scene) {
            showHeadset(scene, QStringLiteral("小林さんのヘッドホン"), QStringLiteral("Connected"));
            scene.settle();
        }},
    {"event-over-media",
        [](IslandScene &scene) {
            scene.play(songOf(scene, true), 0.8);
            scene.settle();
            showCharging(scene);
            scene.settle();
        }},
};

const QList<ScreenState> openStates{
    {"open-media", [](IslandScene &scene) { openAt(scene, IslandTab::media); }},
    {"open-shelf", [](IslandScene &scene) { openAt(scene, IslandTab::shelf); }},
    {"open-calculator", [](IslandScene &scene) { openAt(scene, IslandTab::calculator); }},
    {"open-assistant", [](IslandScene &scene) { openAt(scene, IslandTab::assistant); }},
    {"open-help",
        [](IslandScene &scene) {
            openAt(scene, IslandTab::media);
            scene.point({65, 42 + 12 + 44 + 17});
            scene.settle();
        }},
    {"open-one-tab",
        [](IslandScene &scene) {
            scene.settings().setShowShelfTab(false);
            scene.settings().setShowCalculatorTab(false);
            scene.open();
        }},
    {"open-event",
        [](IslandScene &scene) {
            scene.open();
            showHeadset(scene, QStringLiteral("Ada’s Earbuds"), QStringLiteral("Connected"));
            scene.settle();
        }},
    {"open-battery-5", [](IslandScene &scene) { openWithBattery(scene, 5, false, false); }},
    {"open-battery-30", [](IslandScene &scene) { openWithBattery(scene, 30, false, false); }},
    {"open-battery-50", [](IslandScene &scene) { openWithBattery(scene, 50, false, false); }},
    {"open-battery-100-mains", [](IslandScene &scene) { openWithBattery(scene, 100, true, false); }},
    {"open-charging", [](IslandScene &scene) { openWithBattery(scene, 64, true, true); }},
    {"open-scroll-feedback",
        [](IslandScene &scene) {
            openAt(scene, IslandTab::shelf);
            scrollSidebar(scene, -60);
        }},
};

/// A level as the machine has it, and its name in the names of pictures.
struct Level
{
    const char *name;
    std::function<void(FakePlatform &)> set;
};

Level sound(const char *name, double level, bool muted = false)
{
    return {name, [level, muted](FakePlatform &machine) { machine.audio.set({{level, muted}}); }};
}

const QList<Level> levels{
    sound("sound-0", 0),
    sound("sound-0004", 0.004),
    sound("sound-033", 0.33),
    sound("sound-034", 0.34),
    sound("sound-067", 0.67),
    sound("sound-100", 1),
    sound("sound-muted", 0.5, true),
    {"display-70", [](FakePlatform &machine) { machine.brightness.set(0.7); }},
};

/// Changes the level, and waits for its display to come to rest.
void change(IslandScene &scene, const Level &level)
{
    scene.session.platform.audio.set({{0.5, false}});
    scene.session.platform.brightness.set(0.5);
    scene.settings().setSystemControlsEnabled(true);
    scene.pass(0.5);
    level.set(scene.session.platform);
    scene.settle();
}

/// Each level in surroundings that `prepare` makes.
QList<ScreenState> levelsIn(const QByteArray &surroundings, const std::function<void(IslandScene &)> &prepare)
{
    QList<ScreenState> states;
    for (const Level &level : levels) {
        states.append({surroundings + '-' + level.name, [prepare, level](IslandScene &scene) {
                           prepare(scene);
                           change(scene, level);
                       }});
    }
    return states;
}

ScreenState openingAt(const char *name, double seconds)
{
    return {name, [seconds](IslandScene &scene) {
                scene.viewModel().expand();
                scene.pass(seconds);
            }};
}

ScreenState closingAt(const char *name, double seconds)
{
    return {name, [seconds](IslandScene &scene) {
                scene.open();
                scene.viewModel().collapse(true);
                scene.pass(seconds);
            }};
}

const QList<ScreenState> movingStates{
    openingAt("opening-004", 0.04),
    openingAt("opening-010", 0.1),
    openingAt("opening-020", 0.2),
    openingAt("opening-030", 0.3),
    closingAt("closing-010", 0.1),
    closingAt("closing-020", 0.2),
    closingAt("closing-030", 0.3),
    {"opening-reduced-006",
        [](IslandScene &scene) {
            scene.settings().setReduceEffects(true);
            scene.viewModel().expand();
            scene.pass(0.06);
        }},
    {"event-arriving-010",
        [](IslandScene &scene) {
            showCharging(scene);
            scene.pass(0.1);
        }},
    {"tab-sliding-008",
        [](IslandScene &scene) {
            openAt(scene, IslandTab::media);
            scrollSidebar(scene, -90);
            scene.pass(0.08);
        }},
};

} // namespace

const QList<ScreenState> &allScreenStates()
{
    static const QList<ScreenState> states = [] {
        QList<ScreenState> small = closedStates + eventStates;
        small += levelsIn("event", [](IslandScene &) {})
            + levelsIn("still", [](IslandScene &scene) { scene.settings().setReduceEffects(true); });
        for (ScreenState &state : small) {
            state.area = QRectF(240, 0, 460, 90);
        }
        QList<ScreenState> chips = levelsIn("chip", [](IslandScene &scene) { scene.open(); });
        for (ScreenState &chip : chips)
            chip.area = QRectF(0, 0, 470, 90);
        return small + openStates + chips + movingStates + mediaStates();
    }();
    return states;
}

} // namespace brindle
