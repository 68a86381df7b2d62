#include "screens/MediaStates.h"

#include "core/SettingsStore.h"

#include <QPainter>
#include <QQmlComponent>
#include <QQmlEngine>

namespace brindle {

namespace {

QImage iconPicture()
{
    QImage image(64, 64, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(0x3d, 0xb8, 0x8a));
    painter.drawRoundedRect(QRectF(2, 2, 60, 60), 14, 14);
    painter.setBrush(Qt::white);
    painter.drawEllipse(QPointF(32, 32), 15, 15);
    return image;
}

void show(IslandScene &scene, const NowPlayingTrack &track)
{
    scene.play(track, 0.6);
    scene.open();
}

ScreenState showing(const char *name, const std::function<void(NowPlayingTrack &)> &change)
{
    return {name, [change](IslandScene &scene) {
                NowPlayingTrack track = songOf(scene, true);
                change(track);
                show(scene, track);
            }};
}

ScreenState withBlocks(const char *name, bool player, bool clock)
{
    return {name, [player, clock](IslandScene &scene) {
                scene.settings().setShowMediaPlayer(player);
                scene.settings().setShowMediaClock(clock);
                show(scene, songOf(scene, true));
            }};
}

/// Where the slider of the open media tab has half of the song behind it.
constexpr QPointF middleOfSlider{506, 188};

/// The media view in a frame of its own, as other views beside it would leave it.
ScreenState alone(const char *name, QSizeF size, const std::function<void(IslandScene &)> &stage)
{
    const QRectF frame(QPointF(4, 4), size);
    const auto place = [stage, frame](IslandScene &scene) {
        QQuickItem *panel = scene.window().contentItem();
        QQmlComponent component(qmlEngine(panel->childItems().constFirst()));
        component.setData("import QtQuick; import Brindle.Ui; import Brindle.Media\n"
                          "Rectangle {\n"
                          "    required property MediaPresenter media; required property Clock clock\n"
                          "    width: 940; height: 300; z: 1; color: 'black'\n"
                          "    property alias frame: view\n"
                          "    MediaView {\n"
                          "        id: view; media: parent.media; clock: parent.clock; isShown: true\n"
                          "    }\n"
                          "}",
            {});
        auto *item = qobject_cast<QQuickItem *>(component.createWithInitialProperties(
            {{QStringLiteral("media"), QVariant::fromValue(scene.presenter().media())},
                {QStringLiteral("clock"), QVariant::fromValue(scene.presenter().clock())}}));
        item->setParentItem(panel);
        item->setParent(panel);
        auto *view = item->property("frame").value<QQuickItem *>();
        view->setPosition(frame.topLeft());
        view->setSize(frame.size());
        stage(scene);
        scene.settle();
    };
    return {name, place, frame.adjusted(-4, -4, 4, 4)};
}

void changeSong(IslandScene &scene, double after)
{
    show(scene, songOf(scene, true));
    NowPlayingTrack next = songOf(scene, true, false);
    next.title = QStringLiteral("Paper Boats");
    next.artist = QStringLiteral("Odd Weather");
    next.elapsed = 0;
    scene.play(next, 0.6);
    scene.pass(after);
}

} // namespace

QImage coverPicture()
{
    QImage image(456, 456, QImage::Format_RGB32);
    QPainter painter(&image);
    painter.scale(image.width() / 96.0, image.height() / 96.0);
    QLinearGradient sky(0, 0, 96, 96);
    sky.setColorAt(0, QColor(0xf2, 0x7a, 0x54));
    sky.setColorAt(1, QColor(0x5b, 0x3f, 0x8c));
    painter.fillRect(QRect(0, 0, 96, 96), sky);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(0xff, 0xe0, 0x9a));
    painter.drawEllipse(QPointF(60, 38), 17, 17);
    return image;
}

NowPlayingTrack songOf(const IslandScene &scene, bool isPlaying, bool hasArtwork)
{
    NowPlayingTrack track;
    track.title = QStringLiteral("Slow Harbour");
    track.artist = QStringLiteral("The Lanterns");
    track.duration = 222;
    track.elapsed = 72;
    track.elapsedUpdatedAt = scene.session.now();
    track.isPlaying = isPlaying;
    track.sourceName = QStringLiteral("Tideplayer");
    track.sourceBundleIdentifier = QStringLiteral("org.example.tideplayer");
    if (hasArtwork)
        track.artwork = coverPicture();
    return track;
}

QList<ScreenState> mediaStates()
{
    return {
        showing("media-playing", [](NowPlayingTrack &track) { track.sourceIcon = iconPicture(); }),
        showing("media-paused",
            [](NowPlayingTrack &track) {
                track.isPlaying = false;
                track.sourceIcon = iconPicture();
            }),
        showing("media-no-artwork", [](NowPlayingTrack &track) { track.artwork.reset(); }),
        showing("media-wide-artwork",
            [](NowPlayingTrack &track) { track.artwork = coverPicture().copy(0, 100, 456, 256); }),
        showing("media-title-alone",
            [](NowPlayingTrack &track) {
                track = {};
                track.title = QStringLiteral("Recording 14");
            }),
        showing("media-no-duration", [](NowPlayingTrack &track) { track.duration.reset(); }),
        showing("media-hours",
            [](NowPlayingTrack &track) {
                track.duration = 36000;
                track.elapsed = 3725;
            }),
        showing("media-long-texts",
            [](NowPlayingTrack &track) {
                track.title =
                    QStringLiteral("The Unabridged and Annotated Voyage of a Very Small Boat Around an "
                                   "Improbably Large Island, Part the Third");
                track.artist = QStringLiteral("The Combined Philharmonic, Chorus and Brass of the Seven "
                                              "Harbours, with Soloists Too Many to Name Here in Full");
                track.sourceName = QStringLiteral("An Application Whose Name Was Chosen by a Committee and "
                                                  "Then Extended by Another One Just to Be Sure of It");
                track.sourceIcon = iconPicture();
            }),
        showing("media-rtl",
            [](NowPlayingTrack &track) {
                track.title = QStringLiteral("أغنية الميناء الهادئ");
                track.artist = QStringLiteral("الفوانيس");
            }),
        showing("media-rtl-long",
            [](NowPlayingTrack &track) {
                track.title = QStringLiteral("أغنية الميناء الهادئ في ليلة صيف طويلة بلا قمر ولا ريح ولا "
                                             "صوت غير صوت القوارب");
                track.artist = QStringLiteral("الفوانيس");
            }),
        showing("media-cjk",
            [](NowPlayingTrack &track) {
                track.title = QStringLiteral("静かな港の歌");
                track.artist = QStringLiteral("提灯楽団");
                track.sourceName = QStringLiteral("音楽");
            }),
        {"media-empty", [](IslandScene &scene) { scene.open(); }},
        withBlocks("media-player-alone", true, false),
        withBlocks("media-clock-alone", false, true),
        withBlocks("media-no-blocks", false, false),
        {"media-empty-alone",
            [](IslandScene &scene) {
                scene.settings().setShowMediaClock(false);
                scene.open();
            }},
        {"media-scrubbing",
            [](IslandScene &scene) {
                show(scene, songOf(scene, true));
                scene.pointer(QEvent::MouseButtonPress, middleOfSlider);
                scene.pass(0.6);
            }},
        alone("media-narrow", {440, 240}, [](IslandScene &scene) { scene.play(songOf(scene, true), 0.6); }),
        alone(
            "media-narrow-low", {440, 218}, [](IslandScene &scene) { scene.play(songOf(scene, true), 0.6); }),
        alone("media-narrow-empty", {440, 240}, [](IslandScene &) {}),
        alone("media-lowest", {810, 120}, [](IslandScene &scene) { scene.play(songOf(scene, true), 0.6); }),
        alone("media-lowest-narrow", {440, 120},
            [](IslandScene &scene) { scene.play(songOf(scene, true), 0.6); }),
        {"media-reduced",
            [](IslandScene &scene) {
                scene.settings().setReduceEffects(true);
                changeSong(scene, 0.06);
            }},
        {"media-song-changing-008", [](IslandScene &scene) { changeSong(scene, 0.08); }},
        {"media-song-changing-020", [](IslandScene &scene) { changeSong(scene, 0.2); }},
        {"media-song-changed", [](IslandScene &scene) { changeSong(scene, 1.5); }},
    };
}

} // namespace brindle
