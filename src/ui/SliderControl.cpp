#include "ui/SliderControl.h"

#include <algorithm>

namespace brindle {

SliderControl::SliderControl(QQuickItem *parent) : QQuickItem(parent)
{
    setAcceptedMouseButtons(Qt::LeftButton);
}

void SliderControl::setPosition(double position)
{
    if (position == m_position)
        return;
    m_position = position;
    Q_EMIT valueChanged();
}

void SliderControl::setMaximumValue(double value)
{
    if (value == m_maximumValue)
        return;
    m_maximumValue = value;
    if (!isMovable())
        cancel();
    Q_EMIT maximumValueChanged();
}

void SliderControl::setStepSize(double size)
{
    if (size == m_stepSize)
        return;
    m_stepSize = size;
    Q_EMIT stepSizeChanged();
}

void SliderControl::setInset(double inset)
{
    if (inset == m_inset)
        return;
    m_inset = inset;
    Q_EMIT insetChanged();
}

void SliderControl::jump(double value)
{
    if (!isMovable() || isEditing() || !isEnabled())
        return;
    begin(Hand::key);
    edit(value);
    end();
}

void SliderControl::step(int steps)
{
    jump(m_position + steps * m_stepSize);
}

void SliderControl::mousePressEvent(QMouseEvent *event)
{
    if (!isMovable() || isEditing()) {
        event->ignore();
        return;
    }
    setKeepMouseGrab(true);
    begin(Hand::pointer);
    edit(valueAt(event->position().x()));
}

void SliderControl::mouseMoveEvent(QMouseEvent *event)
{
    if (m_hand == Hand::pointer)
        edit(valueAt(event->position().x()));
}

void SliderControl::mouseReleaseEvent(QMouseEvent *event)
{
    if (m_hand != Hand::pointer)
        return;
    edit(valueAt(event->position().x()));
    end();
}

void SliderControl::mouseUngrabEvent()
{
    if (m_hand == Hand::pointer)
        cancel();
}

void SliderControl::keyPressEvent(QKeyEvent *event)
{
    const auto wanted = isMovable() && m_hand != Hand::pointer ? valueBy(event->key()) : std::nullopt;
    event->setAccepted(wanted.has_value());
    if (!wanted)
        return;
    if (m_hand == Hand::none)
        begin(Hand::key);
    m_key = event->key();
    edit(*wanted);
}

void SliderControl::keyReleaseEvent(QKeyEvent *event)
{
    const bool isEnd = m_hand == Hand::key && event->key() == m_key;
    event->setAccepted(isEnd);
    if (isEnd && !event->isAutoRepeat())
        end();
}

void SliderControl::focusOutEvent(QFocusEvent * /*event*/)
{
    if (m_hand == Hand::key)
        end();
}

void SliderControl::itemChange(ItemChange change, const ItemChangeData &value)
{
    const bool isTakenAway = (change == ItemEnabledHasChanged || change == ItemVisibleHasChanged)
        ? !value.boolValue
        : change == ItemSceneChange && !value.window;
    if (isTakenAway)
        cancel();
    QQuickItem::itemChange(change, value);
}

void SliderControl::begin(Hand hand)
{
    m_hand = hand;
    m_edited = m_position;
    Q_EMIT isEditingChanged();
    Q_EMIT editingStarted();
}

void SliderControl::edit(double value)
{
    m_edited = std::clamp(value, 0.0, m_maximumValue);
    Q_EMIT edited(m_edited);
}

void SliderControl::end()
{
    takeHandOff();
    Q_EMIT editingEnded();
}

void SliderControl::cancel()
{
    if (!isEditing())
        return;
    takeHandOff();
    Q_EMIT editingCancelled();
}

void SliderControl::takeHandOff()
{
    m_hand = Hand::none;
    m_key = 0;
    setKeepMouseGrab(false);
    Q_EMIT isEditingChanged();
}

double SliderControl::valueAt(double x) const
{
    const double length = width() - 2 * m_inset;
    return length > 0 ? (x - m_inset) / length * m_maximumValue : 0;
}

std::optional<double> SliderControl::valueBy(int key) const
{
    const double from = isEditing() ? m_edited : m_position;
    switch (key) {
    case Qt::Key_Left:
        return from - m_stepSize;
    case Qt::Key_Right:
        return from + m_stepSize;
    case Qt::Key_Home:
        return 0;
    case Qt::Key_End:
        return m_maximumValue;
    default:
        return std::nullopt;
    }
}

} // namespace brindle
