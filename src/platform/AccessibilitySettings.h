#pragma once

#include <QObject>

namespace brindle {

/// What the user asked of the whole desktop for accessibility's sake. Answers from memory; main thread.
class AccessibilitySettings : public QObject
{
    Q_OBJECT
    Q_PROPERTY(bool reduceMotion READ reduceMotion NOTIFY reduceMotionChanged)

public:
    using QObject::QObject;

    virtual bool reduceMotion() const = 0;

Q_SIGNALS:
    void reduceMotionChanged();
};

} // namespace brindle
