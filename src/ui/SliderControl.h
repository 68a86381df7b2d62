#pragma once

#include <QQuickItem>
#include <QtQml/qqmlregistration.h>

#include <optional>

namespace brindle {

/// A slider without a look: pointer, keys and assistive tools move it, and what stands in it draws it.
///
/// `position` is its owner's and is never written here: what is asked for is only told, as one edit that
/// begins, takes one or several values, and ends or is cancelled. A held key is one edit, as is a drag. Main
/// thread.
class SliderControl : public QQuickItem
{
    Q_OBJECT
    QML_ELEMENT
    /// Where the thumb is, from 0 to `maximumValue`.
    Q_PROPERTY(double position READ position WRITE setPosition NOTIFY valueChanged)
    /// The same for assistive tools; for them to write it is a whole edit.
    Q_PROPERTY(double value READ position WRITE jump NOTIFY valueChanged)
    Q_PROPERTY(double minimumValue READ minimumValue CONSTANT)
    /// Without one above 0 nothing can be moved.
    Q_PROPERTY(double maximumValue READ maximumValue WRITE setMaximumValue NOTIFY maximumValueChanged)
    /// Of one press of a key.
    Q_PROPERTY(double stepSize READ stepSize WRITE setStepSize NOTIFY stepSizeChanged)
    /// Points from either edge to the outermost place of the thumb's middle.
    Q_PROPERTY(double inset READ inset WRITE setInset NOTIFY insetChanged)
    Q_PROPERTY(bool isMovable READ isMovable NOTIFY maximumValueChanged)
    Q_PROPERTY(bool isEditing READ isEditing NOTIFY isEditingChanged)

public:
    explicit SliderControl(QQuickItem *parent = nullptr);

    double position() const { return m_position; }
    void setPosition(double position);
    static double minimumValue() { return 0; }
    double maximumValue() const { return m_maximumValue; }
    void setMaximumValue(double value);
    double stepSize() const { return m_stepSize; }
    void setStepSize(double size);
    double inset() const { return m_inset; }
    void setInset(double inset);
    bool isMovable() const { return m_maximumValue > 0; }
    bool isEditing() const { return m_hand != Hand::none; }

    /// One whole edit.
    void jump(double value);
    /// One whole edit by that many steps.
    Q_INVOKABLE void step(int steps);

Q_SIGNALS:
    void valueChanged();
    void maximumValueChanged();
    void stepSizeChanged();
    void insetChanged();
    void isEditingChanged();
    void editingStarted();
    void edited(double value);
    void editingEnded();
    /// The edit is void: the slider was taken away or made unmovable.
    void editingCancelled();

protected:
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void mouseUngrabEvent() override;
    void keyPressEvent(QKeyEvent *event) override;
    void keyReleaseEvent(QKeyEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;
    void itemChange(ItemChange change, const ItemChangeData &value) override;

private:
    enum class Hand { none, pointer, key };

    void begin(Hand hand);
    void edit(double value);
    void end();
    void cancel();
    void takeHandOff();
    double valueAt(double x) const;
    /// Where this key leads; absent for keys that mean nothing here.
    std::optional<double> valueBy(int key) const;

    double m_position = 0;
    double m_maximumValue = 0;
    double m_stepSize = 1;
    double m_inset = 0;
    Hand m_hand = Hand::none;
    int m_key = 0;
    /// What was last asked for in this edit.
    double m_edited = 0;
};

} // namespace brindle
