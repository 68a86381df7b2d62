#pragma once

#include "ui/FrameTicker.h"
#include "ui/MotionTrack.h"

#include <QObject>
#include <QQmlParserStatus>
#include <QtQml/qqmlregistration.h>

#include <optional>

namespace brindle {

/// A number that follows `to` by `motion`, frame by frame, and rests when it is there.
///
/// What `to` is when the object has been made is where the value starts, unless `from` says otherwise: then
/// the value sets out from there. `motion` counts at the moment `to` changes.
class Animated : public QObject, public QQmlParserStatus
{
    Q_OBJECT
    Q_INTERFACES(QQmlParserStatus)
    QML_ELEMENT
    Q_PROPERTY(double to READ to WRITE setTo NOTIFY toChanged)
    Q_PROPERTY(double from READ from WRITE setFrom)
    Q_PROPERTY(brindle::Motion motion READ motion WRITE setMotion NOTIFY motionChanged)
    /// Of changes to a lesser target; `motion` unless it is set.
    Q_PROPERTY(brindle::Motion fallingMotion READ fallingMotion WRITE setFallingMotion NOTIFY motionChanged)
    Q_PROPERTY(double value READ value NOTIFY valueChanged)
    Q_PROPERTY(bool isMoving READ isMoving NOTIFY isMovingChanged)

public:
    explicit Animated(QObject *parent = nullptr);

    double to() const { return m_to; }
    void setTo(double to);
    double from() const { return m_from.value_or(m_to); }
    void setFrom(double from) { m_from = from; }
    const Motion &motion() const { return m_motion; }
    void setMotion(const Motion &motion);
    Motion fallingMotion() const { return m_fallingMotion.value_or(m_motion); }
    void setFallingMotion(const Motion &motion);
    double value() const { return m_track.value(); }
    bool isMoving() const { return m_isMoving; }

    void classBegin() override { m_isComplete = false; }
    void componentComplete() override;

Q_SIGNALS:
    void toChanged();
    void motionChanged();
    void valueChanged();
    void isMovingChanged();
    /// The value has arrived at `to`.
    void settled();

private:
    void retarget();
    void tick(double seconds);
    void setMoving(bool moving);

    double m_to = 0;
    std::optional<double> m_from;
    Motion m_motion;
    std::optional<Motion> m_fallingMotion;
    MotionTrack m_track;
    FrameTicker m_ticker;
    bool m_isMoving = false;
    bool m_isComplete = true;
};

} // namespace brindle
