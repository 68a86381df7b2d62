#pragma once

#include "island/IslandPresenter.h"

#include <QPointer>
#include <QQuickItem>
#include <QStringList>
#include <QtQml/qqmlregistration.h>

class QMimeData;

namespace brindle {

/// Takes drags from other programs over the island and tells the view model of them.
///
/// Takes part where the drawn shape is. The answer to a drag is always "copy": a source that is told "move"
/// may delete what it offered.
class IslandFileDropDelegate : public QQuickItem
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(brindle::IslandPresenter *island READ island WRITE setIsland NOTIFY islandChanged REQUIRED)

public:
    explicit IslandFileDropDelegate(QQuickItem *parent = nullptr);

    IslandPresenter *island() const { return m_island; }
    void setIsland(IslandPresenter *island);

    /// Whether there is anything in it that the island knows.
    static bool validateDrop(const QMimeData *items);
    bool contains(const QPointF &point) const override;

Q_SIGNALS:
    void islandChanged();

protected:
    void dragEnterEvent(QDragEnterEvent *event) override;
    void dragMoveEvent(QDragMoveEvent *event) override;
    void dragLeaveEvent(QDragLeaveEvent *event) override;
    void dropEvent(QDropEvent *event) override;

private:
    /// From the panel's coordinates to those of the island's frame.
    QPointF locationInIsland(QPointF position) const;

    QPointer<IslandPresenter> m_island;
};

} // namespace brindle
