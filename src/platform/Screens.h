#pragma once

#include <QList>
#include <QObject>
#include <QRectF>
#include <QString>

#include <optional>

namespace brindle {

/// A display, in the program's coordinates: points, origin at the bottom left of the primary display, y
/// upwards. A rectangle's `top()` is its lower edge there, and `top() + height()` its upper one.
struct Screen
{
    QString localizedName;
    QRectF frame;
    /// Height of the area at the top that a camera housing cuts into; 0 on a display without one.
    double safeAreaTop = 0;
    /// Device pixels per point.
    double scale = 1;

    bool operator==(const Screen &) const = default;
};

/// The displays of the machine. Answers from memory; main thread.
class Screens : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    /// In the system's order; may be empty while displays are being changed.
    virtual QList<Screen> screens() const = 0;
    /// The display that has the keyboard's attention, else the primary one; absent when there is none.
    virtual std::optional<Screen> mainScreen() const = 0;

Q_SIGNALS:
    /// A display came or went, or its frame, scale or name changed. Once for each turn.
    void parametersChanged();
};

} // namespace brindle
