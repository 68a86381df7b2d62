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
    Q_PROPERTY(QString label MEMBER m_label NOTIFY labelChanged)
    /// Whether there is a level.
    Q_PROPERTY(bool hasLevel MEMBER m_hasLevel NOTIFY hasLevelChanged)
    /// From 0 to 1; read as whole percents.
    Q_PROPERTY(double level MEMBER m_level NOTIFY levelChanged)
    /// The level in words.
    Q_PROPERTY(QString reading MEMBER m_reading NOTIFY readingChanged)

public:
    explicit LevelReadout(QQuickItem *parent = nullptr);

    const QString &label() const { return m_label; }
    bool hasLevel() const { return m_hasLevel; }
    int percent() const;
    const QString &reading() const { return m_reading; }

Q_SIGNALS:
    void labelChanged();
    void hasLevelChanged();
    void levelChanged();
    void readingChanged();

private:
    void tellLabel();
    void tellLevel();

    QString m_label;
    bool m_hasLevel = false;
    double m_level = 0;
    QString m_reading;
};

} // namespace brindle
