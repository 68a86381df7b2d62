#pragma once

#include <QObject>
#include <QtQml/qqmlregistration.h>

namespace brindle {

/// Keeps the position under the user's hand apart from the one that is reported.
///
/// While `isScrubbing`, `shown` is `scrubValue`, whatever `elapsed` becomes; otherwise it is `elapsed`. Main
/// thread.
class Scrubber : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    /// The reported position, in seconds, as are all values.
    Q_PROPERTY(double elapsed READ elapsed WRITE setElapsed NOTIFY elapsedChanged)
    Q_PROPERTY(double scrubValue READ scrubValue NOTIFY scrubValueChanged)
    Q_PROPERTY(bool isScrubbing READ isScrubbing NOTIFY isScrubbingChanged)
    Q_PROPERTY(double shown READ shown NOTIFY shownChanged)

public:
    using QObject::QObject;

    double elapsed() const { return m_elapsed; }
    void setElapsed(double seconds);
    double scrubValue() const { return m_scrubValue; }
    bool isScrubbing() const { return m_isScrubbing; }
    double shown() const { return m_isScrubbing ? m_scrubValue : m_elapsed; }

    /// The hand takes hold where the position is.
    Q_INVOKABLE void begin();
    Q_INVOKABLE void move(double seconds);
    /// The hand lets go: asks for a seek. What listens has set `elapsed` by the time that anyone hears that
    /// the scrub is over, so that the old position never shows again.
    Q_INVOKABLE void end();
    /// The hand lets go without wanting anything.
    Q_INVOKABLE void cancel();

Q_SIGNALS:
    void elapsedChanged();
    void scrubValueChanged();
    void isScrubbingChanged();
    void shownChanged();
    void seekWanted(double seconds);

private:
    double m_elapsed = 0;
    double m_scrubValue = 0;
    bool m_isScrubbing = false;
};

} // namespace brindle
