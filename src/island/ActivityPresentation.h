#pragma once

#include "activities/SystemActivity.h"

#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>

namespace brindle {

/// A brief event as views show it. A plain value.
struct ActivityPresentation
{
    Q_GADGET
    QML_ANONYMOUS
    Q_PROPERTY(QString title MEMBER title)
    /// Empty when there is none.
    Q_PROPERTY(QString detail MEMBER detail)
    Q_PROPERTY(QString symbol MEMBER symbol)
    Q_PROPERTY(bool hasProgress MEMBER hasProgress)
    Q_PROPERTY(double progress MEMBER progress)
    /// What is read out: the name, and the level in words.
    Q_PROPERTY(QString accessibleName MEMBER accessibleName)
    Q_PROPERTY(QString accessibleValue MEMBER accessibleValue)

public:
    static ActivityPresentation of(const SystemActivity &activity);

    QString title;
    QString detail;
    QString symbol;
    bool hasProgress = false;
    double progress = 0;
    QString accessibleName;
    QString accessibleValue;

    bool operator==(const ActivityPresentation &) const = default;
};

} // namespace brindle
