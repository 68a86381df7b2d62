#pragma once

#include "foundation/Date.h"
#include "ui/Motion.h"
#include "ui/Stage.h"

#include <QLocale>
#include <QObject>
#include <QtQml/qqmlregistration.h>

namespace brindle {

class AppContainer;

/// The open island's status bar: the current event or the time on the left, the battery on the right. Main
/// thread; the container outlives it.
class StatusBar : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("part of the island")
    /// An `ActivityPresentation`; without content, the clock.
    Q_PROPERTY(brindle::StageSubject leading READ leading NOTIFY leadingChanged)
    Q_PROPERTY(QString batteryText READ batteryText NOTIFY batteryChanged)
    Q_PROPERTY(QString batterySymbol READ batterySymbol NOTIFY batteryChanged)
    Q_PROPERTY(bool isACConnected READ isACConnected NOTIFY batteryChanged)
    Q_PROPERTY(bool isCharging READ isCharging NOTIFY batteryChanged)
    /// The battery group as it is read out.
    Q_PROPERTY(QString batteryName READ batteryName NOTIFY batteryChanged)
    Q_PROPERTY(brindle::Motion activityMotion READ activityMotion NOTIFY motionChanged)
    Q_PROPERTY(brindle::Motion batteryMotion READ batteryMotion NOTIFY motionChanged)

public:
    explicit StatusBar(AppContainer &container, QObject *parent = nullptr);

    StageSubject leading() const;
    QString batteryText() const;
    QString batterySymbol() const;
    bool isACConnected() const;
    bool isCharging() const;
    QString batteryName() const;
    Motion activityMotion() const;
    Motion batteryMotion() const;

    /// The clock's text: weekday, hour and minute as the locale writes them, in the local time zone.
    static QString clockText(Date date, const QLocale &locale);
    /// The same in the user's locale; `seconds` since the start of 2001, UTC.
    Q_INVOKABLE static QString clockText(double seconds);
    static QString batterySymbol(int percentage, bool isCharging);

Q_SIGNALS:
    void leadingChanged();
    void batteryChanged();
    void motionChanged();

private:
    bool reducesMotion() const;

    AppContainer &m_container;
};

} // namespace brindle
