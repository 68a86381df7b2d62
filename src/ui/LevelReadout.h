#pragma once

#include <QQuickItem>
#include <QtQml/qqmlregistration.h>

namespace brindle {

/// What assistive tools read as one thing: words, or words with a level that is only shown. What stands in it
/// draws it.
///
/// They find only items that QML calls accessible, so whoever uses it sets `Accessible.role` too. Main
/// thread.
class LevelReadout : public QQuickItem
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QString label READ label WRITE setLabel NOTIFY labelChanged)
    /// Whether there is a level.
    Q_PROPERTY(bool hasLevel READ hasLevel WRITE setHasLevel NOTIFY hasLevelChanged)
    /// From 0 to 1; read as whole percents.
    Q_PROPERTY(double level READ level WRITE setLevel NOTIFY levelChanged)
    /// The level in words.
    Q_PROPERTY(QString reading READ reading WRITE setReading NOTIFY readingChanged)

public:
    explicit LevelReadout(QQuickItem *parent = nullptr);

    const QString &label() const { return m_label; }
    void setLabel(const QString &label);
    bool hasLevel() const { return m_hasLevel; }
    void setHasLevel(bool hasLevel);
    double level() const { return m_level; }
    void setLevel(double level);
    const QString &reading() const { return m_reading; }
    void setReading(const QString &reading);

    int percent() const;

Q_SIGNALS:
    void labelChanged();
    void hasLevelChanged();
    void levelChanged();
    void readingChanged();

private:
    QString m_label;
    bool m_hasLevel = false;
    double m_level = 0;
    QString m_reading;
};

} // namespace brindle
