#include "screens/IslandScene.h"

#include "activities/ActivityCoordinator.h"
#include "activities/BatteryMonitor.h"
#include "core/SettingsStore.h"

#include <QGuiApplication>
#include <QMouseEvent>
#include <QPainter>
#include <QQuickRenderTarget>

#include <algorithm>
#include <cmath>

namespace brindle {

IslandScene::IslandScene(double scale) : IslandScene(BeforeTheFirstFrame{}, scale)
{
    content();
    QCoreApplication::sendPostedEvents(m_host.get());
    content();
}

IslandScene::IslandScene(BeforeTheFirstFrame /*tag*/, double scale)
    : m_viewModel(session.container)
    , m_window(&m_control)
    , m_panel(session.platform.displays, m_window)
{
    m_window.setColor(Qt::transparent);
    m_window.setGeometry(QRect(QPoint(), IslandSurface::panelSize.toSize()));
    m_window.contentItem()->setSize(IslandSurface::panelSize);
    m_content = QImage((IslandSurface::panelSize * scale).toSize(), QImage::Format_ARGB32_Premultiplied);
    m_content.setDevicePixelRatio(scale);
    m_content.fill(Qt::transparent);
    QQuickRenderTarget target = QQuickRenderTarget::fromPaintDevice(&m_content);
    target.setDevicePixelRatio(scale);
    m_window.setRenderTarget(target);
    session.container.start();
    m_host = std::make_unique<IslandHost>(m_viewModel, m_panel);
}

IslandScene::~IslandScene() = default;

void IslandScene::pass(double seconds)
{
    // Longer than an animation's first step, so that the machine's haste or delay at its start does not show.
    constexpr int longest = 20;
    int frame = 0;
    for (int left = int(std::lround(seconds * 1000)); left > 0; left -= frame) {
        frame = std::min(left, longest);
        session.advance(frame / 1000.0);
        m_frames.advanceBy(frame);
        // What goes may have parts that go on the turn after it.
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
}

void IslandScene::open()
{
    m_viewModel.expand();
    settle();
}

void IslandScene::plug(int percentage, bool onMains, bool charging)
{
    session.platform.power.set(
        QList<std::optional<QVariantMap>>{FakePowerSources::battery(percentage, onMains, charging)});
    session.turn();
}

void IslandScene::play(const NowPlayingTrack &track, double volume)
{
    session.media->track = track;
    session.media->volume = volume;
    Q_EMIT session.media->nowPlayingChanged();
    Q_EMIT session.media->outputVolumeChanged();
}

void IslandScene::show(const SystemActivity &activity)
{
    session.container.activities().post(activity);
}

void IslandScene::point(QPointF position)
{
    QMouseEvent event(QEvent::MouseMove, position, position, Qt::NoButton, Qt::NoButton, {});
    QCoreApplication::sendEvent(&m_window, &event);
}

void IslandScene::pointer(QEvent::Type type, QPointF position)
{
    QMouseEvent event(type, position, position, type == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton,
        type == QEvent::MouseButtonRelease ? Qt::NoButton : Qt::LeftButton, {});
    QCoreApplication::sendEvent(&m_window, &event);
}

void IslandScene::click(QPointF position)
{
    pointer(QEvent::MouseButtonPress, position);
    pointer(QEvent::MouseButtonRelease, position);
}

const QImage &IslandScene::content()
{
    m_control.polishItems();
    m_control.beginFrame();
    m_control.sync();
    m_control.render();
    m_control.endFrame();
    return m_content;
}

QImage IslandScene::picture()
{
    const QImage &island = content();
    QImage image(island.size(), QImage::Format_RGB32);
    QPainter painter(&image);
    painter.fillRect(image.rect(), QColor(0xaf, 0xbd, 0xc9));
    QImage plain = island;
    plain.setDevicePixelRatio(1);
    painter.drawImage(0, 0, plain);
    return image;
}

} // namespace brindle
