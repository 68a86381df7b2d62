#include "island/IslandFileDropDelegate.h"

#include <QDropEvent>
#include <QMimeData>

namespace brindle {

IslandFileDropDelegate::IslandFileDropDelegate(QQuickItem *parent) : QQuickItem(parent)
{
    setFlag(ItemAcceptsDrops);
}

void IslandFileDropDelegate::setIsland(IslandPresenter *island)
{
    if (island == m_island)
        return;
    m_island = island;
    Q_EMIT islandChanged();
}

bool IslandFileDropDelegate::validateDrop(const QMimeData *items)
{
    return items->hasFormat(QStringLiteral("com.brindle.app.shelf-item")) || items->hasUrls()
        || items->hasImage() || items->hasFormat(QStringLiteral("text/plain"));
}

bool IslandFileDropDelegate::contains(const QPointF &point) const
{
    return m_island && m_island->surface()->outline().contains(point);
}

QPointF IslandFileDropDelegate::locationInIsland(QPointF position) const
{
    return position
        - QPointF((IslandSurface::panelSize.width() - m_island->surface()->targetSize().width()) / 2, 0);
}

void IslandFileDropDelegate::dragEnterEvent(QDragEnterEvent *event)
{
    if (!m_island || !validateDrop(event->mimeData())) {
        event->ignore();
        return;
    }
    event->setDropAction(Qt::CopyAction);
    event->accept();
    const QPointF location = locationInIsland(event->position());
    m_island->viewModel()->animate(Motion::makeSpring(0.32, 0.82, 0),
        [this, location] { m_island->viewModel()->externalDragEntered(location); });
}

void IslandFileDropDelegate::dragMoveEvent(QDragMoveEvent *event)
{
    event->setDropAction(Qt::CopyAction);
    event->accept();
    m_island->viewModel()->externalDragUpdated(locationInIsland(event->position()));
}

void IslandFileDropDelegate::dragLeaveEvent(QDragLeaveEvent *event)
{
    event->accept();
    m_island->viewModel()->externalDragExited();
}

void IslandFileDropDelegate::dropEvent(QDropEvent *event)
{
    event->setDropAction(Qt::CopyAction);
    if (m_island->viewModel()->performExternalDrop(locationInIsland(event->position()), event->mimeData()))
        event->accept();
    else
        event->ignore();
}

} // namespace brindle
