#include "ui/LevelReadout.h"

#include <QAccessibleObject>
#include <QQuickWindow>

#include <algorithm>
#include <cmath>

namespace brindle {
namespace {

/// Qt Quick's own gives a value only to what a person can set.
class AccessibleLevel : public QAccessibleObject, public QAccessibleValueInterface
{
public:
    explicit AccessibleLevel(LevelReadout *item) : QAccessibleObject(item) { }

    QAccessibleInterface *parent() const override
    {
        for (QQuickItem *above = item()->parentItem(); above; above = above->parentItem()) {
            if (QAccessibleInterface *found = QAccessible::queryAccessibleInterface(above))
                return found;
        }
        return QAccessible::queryAccessibleInterface(window());
    }
    QAccessibleInterface *child(int /*index*/) const override { return nullptr; }
    int childCount() const override { return 0; }
    int indexOfChild(const QAccessibleInterface * /*child*/) const override { return -1; }
    QWindow *window() const override { return item()->window(); }

    QAccessible::Role role() const override
    {
        return item()->hasLevel() ? QAccessible::ProgressBar : QAccessible::StaticText;
    }
    QAccessible::State state() const override
    {
        QAccessible::State state;
        state.readOnly = true;
        state.invisible =
            !window() || !window()->isVisible() || !item()->isVisible() || qFuzzyIsNull(item()->opacity());
        return state;
    }
    QString text(QAccessible::Text kind) const override
    {
        switch (kind) {
        case QAccessible::Name:
            return item()->label();
        case QAccessible::Value:
            return item()->reading();
        default:
            return {};
        }
    }
    QRect rect() const override
    {
        if (!window())
            return {};
        const QRectF place = item()->mapRectToScene(item()->boundingRect());
        return {window()->mapToGlobal(place.topLeft().toPoint()), place.size().toSize()};
    }

    void *interface_cast(QAccessible::InterfaceType type) override
    {
        if (type == QAccessible::ValueInterface && item()->hasLevel())
            return static_cast<QAccessibleValueInterface *>(this);
        return nullptr;
    }
    QVariant currentValue() const override { return item()->percent(); }
    void setCurrentValue(const QVariant & /*value*/) override { }
    QVariant minimumValue() const override { return 0; }
    QVariant maximumValue() const override { return 100; }
    QVariant minimumStepSize() const override { return 1; }

private:
    LevelReadout *item() const { return static_cast<LevelReadout *>(object()); }
};

QAccessibleInterface *makeAccessible(const QString & /*className*/, QObject *object)
{
    auto *item = qobject_cast<LevelReadout *>(object);
    return item ? new AccessibleLevel(item) : nullptr;
}

} // namespace

LevelReadout::LevelReadout(QQuickItem *parent) : QQuickItem(parent)
{
    // Once for all of them: what is installed already is not installed again.
    QAccessible::installFactory(makeAccessible);
    connect(this, &LevelReadout::labelChanged, this, &LevelReadout::tellLabel);
    connect(this, &LevelReadout::levelChanged, this, &LevelReadout::tellLevel);
}

int LevelReadout::percent() const
{
    return int(std::lround(std::clamp(m_level, 0.0, 1.0) * 100));
}

void LevelReadout::tellLabel()
{
    QAccessibleEvent event(this, QAccessible::NameChanged);
    QAccessible::updateAccessibility(&event);
}

void LevelReadout::tellLevel()
{
    if (!m_hasLevel)
        return;
    QAccessibleValueChangeEvent event(this, percent());
    QAccessible::updateAccessibility(&event);
}

} // namespace brindle
