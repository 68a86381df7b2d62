#include "screens/States.h"

#include "activities/ActivityCoordinator.h"
#include "core/SettingsStore.h"

#include <QPainter>

namespace brindle {

namespace {

QImage cover()
{
    QImage image(96, 96, QImage::Format_RGB32);
    QPainter painter(&image);
    QLinearGradient sky(0, 0, 96, 96);
    sky.setColorAt(0, QColor(0xf2, 0x7a, 0x54));
    sky.setColorAt(1, QColor(0x5b, 0x3f, 0x8c));
    painter.fillRect(image.rect(), sky);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(0xff, 0xe0, 0x9a));
    painter.drawEllipse(QPointF(60, 38), 17, 17);
    return image;
}

NowPlayingTrack song(bool isPlaying, bool hasArtwork = true)
{
    NowPlayingTrack track;
    track.title = QStringLiteral("Slow Harbour");
    track.artist = QStringLiteral("The Lanterns");
    track.isPlaying = isPlaying;
    if (hasArtwork)
        track.artwork = cover();
    return track;
}

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

void showSound(IslandScene &scene, double level, const QString &symbol)
{
    scene.show(activity(scene, ActivityType::systemControl, QStringLiteral("Sound"), {}, symbol, level));
}

void showDisplay(IslandScene &scene, double level)
{
    scene.show(activity(scene, ActivityType::systemControl, QStringLiteral("Display"), {},
        QStringLiteral("sun.max.fill"), level));
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
            scene.play(song(true), 0.8);
            scene.settle();
        }},
    {"closed-media-quiet",
        [](IslandScene &scene) {
            scene.play(song(true), 0);
            scene.settle();
        }},
    {"closed-media-paused",
        [](IslandScene &scene) {
            scene.play(song(false), 0.8);
            scene.settle();
        }},
    {"closed-media-no-artwork",
        [](IslandScene &scene) {
            scene.play(song(true, false), 0.5);
            scene.settle();
        }},
    {"closed-media-source-icon",
        [](IslandScene &scene) {
            NowPlayingTrack track = song(true, false);
            track.sourceIcon = cover().scaled(48, 48);
            scene.play(track, 0.5);
            scene.settle();
        }},
    {"closed-media-still",
        [](IslandScene &scene) {
            scene.session.platform.accessibility.setReduceMotion(true);
            scene.play(song(true), 0.8);
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
    {"event-sound-0",
        [](IslandScene &scene) {
            showSound(scene, 0, QStringLiteral("speaker.slash.fill"));
            scene.settle();
        }},
    {"event-sound-0004",
        [](IslandScene &scene) {
            showSound(scene, 0.004, QStringLiteral("speaker.wave.1.fill"));
            scene.settle();
        }},
    {"event-sound-50",
        [](IslandScene &scene) {
            showSound(scene, 0.5, QStringLiteral("speaker.wave.2.fill"));
            scene.settle();
        }},
    {"event-sound-100",
        [](IslandScene &scene) {
            showSound(scene, 1, QStringLiteral("speaker.wave.3.fill"));
            scene.settle();
        }},
    {"event-sound-still",
        [](IslandScene &scene) {
            scene.session.platform.accessibility.setReduceMotion(true);
            showSound(scene, 0.5, QStringLiteral("speaker.wave.2.fill"));
            scene.settle();
        }},
    {"event-display-70",
        [](IslandScene &scene) {
            showDisplay(scene, 0.7);
            scene.settle();
        }},
    {"event-over-media",
        [](IslandScene &scene) {
            scene.play(song(true), 0.8);
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
    {"open-level",
        [](IslandScene &scene) {
            scene.open();
            showSound(scene, 0.5, QStringLiteral("speaker.wave.2.fill"));
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
        for (ScreenState &state : small) {
            state.area = QRectF(240, 0, 460, 90);
            state.isForEyesOnly = QLatin1StringView(state.name).contains(u"-rtl-")
                || QLatin1StringView(state.name).contains(u"-cjk-");
        }
        return small + openStates + movingStates;
    }();
    return states;
}

} // namespace brindle
