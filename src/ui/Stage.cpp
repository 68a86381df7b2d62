#include "ui/Stage.h"

#include <algorithm>

namespace brindle {

void Stage::setSubject(const StageSubject &subject)
{
    if (subject == m_subject)
        return;
    m_subject = subject;
    // What was only thought of while the view was being made was never seen.
    if (!m_isComplete && !m_entries.isEmpty()) {
        beginResetModel();
        m_entries.clear();
        endResetModel();
    }
    if (hasPresent() && m_entries.last().subject.key == subject.key) {
        renewPresent();
    } else {
        dismissPresent();
        if (!subject.key.isEmpty())
            enter();
    }
    Q_EMIT subjectChanged();
}

void Stage::renewPresent()
{
    m_entries.last().subject = m_subject;
    const QModelIndex last = index(int(m_entries.size()) - 1);
    Q_EMIT dataChanged(last, last, {ContentRole});
}

void Stage::dismissPresent()
{
    if (!hasPresent())
        return;
    m_entries.last().isPresent = false;
    const QModelIndex last = index(int(m_entries.size()) - 1);
    Q_EMIT dataChanged(last, last, {IsPresentRole});
}

void Stage::enter()
{
    const int row = int(m_entries.size());
    beginInsertRows({}, row, row);
    m_entries.append({m_subject, m_nextSerial, true, m_isComplete});
    ++m_nextSerial;
    endInsertRows();
}

void Stage::leave(int serial)
{
    const auto found = std::find_if(
        m_entries.begin(), m_entries.end(), [serial](const Entry &entry) { return entry.serial == serial; });
    if (found == m_entries.end() || found->isPresent)
        return;
    const int row = int(found - m_entries.begin());
    beginRemoveRows({}, row, row);
    m_entries.erase(found);
    endRemoveRows();
}

int Stage::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_entries.size());
}

QVariant Stage::data(const QModelIndex &index, int role) const
{
    if (!index.isValid() || index.row() >= m_entries.size())
        return {};
    const Entry &entry = m_entries[index.row()];
    switch (role) {
    case ContentRole:
        return entry.subject.content;
    case IsPresentRole:
        return entry.isPresent;
    case SerialRole:
        return entry.serial;
    case MakesEntranceRole:
        return entry.makesEntrance;
    default:
        return {};
    }
}

QHash<int, QByteArray> Stage::roleNames() const
{
    return {{ContentRole, "content"}, {IsPresentRole, "isPresent"}, {SerialRole, "serial"},
        {MakesEntranceRole, "makesEntrance"}};
}

} // namespace brindle
