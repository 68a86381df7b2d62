#pragma once

#include <QAbstractListModel>
#include <QQmlParserStatus>
#include <QVariant>
#include <QtQml/qqmlregistration.h>

namespace brindle {

/// What is to be on a stage. A plain value; without a key there is nothing.
struct StageSubject
{
    Q_GADGET
    QML_ANONYMOUS
    Q_PROPERTY(QString key MEMBER key)
    Q_PROPERTY(QVariant content MEMBER content)

public:
    /// Two subjects with one key are the same thing, seen again.
    QString key;
    QVariant content;

    bool operator==(const StageSubject &) const = default;
};

/// Keeps what was on stage until it has left: its rows are the present subject and those on their way out.
///
/// A subject with a new key turns the present row into a leaving one and adds one; one with the key that is
/// present only renews the content. The view draws each row, moves it by `isPresent`, and calls `leave()`
/// with the row's serial when a leaving one has gone from sight. What is there when the stage is made makes
/// no entrance. Main thread.
class Stage : public QAbstractListModel, public QQmlParserStatus
{
    Q_OBJECT
    Q_INTERFACES(QQmlParserStatus)
    QML_ELEMENT
    Q_PROPERTY(brindle::StageSubject subject READ subject WRITE setSubject NOTIFY subjectChanged)
    /// For subjects that are their own key.
    Q_PROPERTY(QString key READ key WRITE setKey NOTIFY subjectChanged)

public:
    enum Role { ContentRole = Qt::UserRole, IsPresentRole, SerialRole, MakesEntranceRole };

    using QAbstractListModel::QAbstractListModel;

    const StageSubject &subject() const { return m_subject; }
    void setSubject(const StageSubject &subject);
    QString key() const { return m_subject.key; }
    void setKey(const QString &key) { setSubject({key, key}); }
    /// Takes a leaving row away; a row that is present, or unknown, stays as it is.
    Q_INVOKABLE void leave(int serial);

    void classBegin() override { m_isComplete = false; }
    void componentComplete() override { m_isComplete = true; }

    int rowCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

Q_SIGNALS:
    void subjectChanged();

private:
    struct Entry
    {
        StageSubject subject;
        int serial = 0;
        bool isPresent = true;
        bool makesEntrance = true;
    };

    bool hasPresent() const { return !m_entries.isEmpty() && m_entries.last().isPresent; }
    void renewPresent();
    void dismissPresent();
    void enter();

    StageSubject m_subject;
    QList<Entry> m_entries;
    int m_nextSerial = 0;
    bool m_isComplete = true;
};

} // namespace brindle
