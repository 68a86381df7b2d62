#pragma once

class QMimeData;

namespace brindle {

/// What the island hands a finished drag to: the shelf, as the island sees it. Main thread.
///
/// Shelf items, files and images are looked for in what was dropped, in this order; text alone is not taken.
/// `items` lasts as long as the call.
class ShelfDropTarget
{
public:
    virtual ~ShelfDropTarget() = default;

    /// Whether the drag under way came out of the shelf itself.
    virtual bool hasActiveManagedDrag() const = 0;
    /// Sends what was dropped to a device nearby and keeps nothing. False when nothing in it could be taken.
    virtual bool sendByAirDrop(const QMimeData *items) = 0;
    /// Keeps what was dropped. False when nothing in it could be taken.
    virtual bool importItems(const QMimeData *items) = 0;
};

} // namespace brindle
