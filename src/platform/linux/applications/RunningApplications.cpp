#include "platform/linux/applications/RunningApplications.h"

#include "foundation/Files.h"
#include "platform/linux/applications/ApplicationIndex.h"
#include "platform/linux/applications/ProcessIdentity.h"

#include <QFile>

#include <filesystem>

namespace brindle {

namespace {

/// The unit that the session's manager started the process in; empty where there is no such manager.
QString unitOf(const QString &folder)
{
    constexpr qsizetype limit = 0x4000;
    const auto groups = Files::readAtMost(limit, folder + QStringLiteral("/cgroup"));
    return QString::fromUtf8(groups.value_or(QByteArray()).trimmed()).section(u'/', -1);
}

bool isNumber(const QString &name)
{
    return !name.isEmpty() && name.front().isDigit();
}

} // namespace

QSet<QString> runningApplications(const ApplicationIndex &index, const QString &processes)
{
    QSet<QString> running;
    std::error_code ignored;
    // Unlike Qt's, this asks nothing of each entry but its name.
    std::filesystem::directory_iterator entry(QFile::encodeName(processes).toStdString(), ignored);
    for (; entry != std::filesystem::directory_iterator(); entry.increment(ignored)) {
        const QString name = QFile::decodeName(entry->path().filename().c_str());
        const QString folder = processes + u'/' + name;
        const auto process = isNumber(name) ? identityOfProcess(folder) : std::nullopt;
        if (!process)
            continue;
        QStringList identifiers = index.identifiersOf(*process);
        if (identifiers.isEmpty())
            identifiers = index.identifiersOfUnit(unitOf(folder));
        running.unite(QSet<QString>(identifiers.cbegin(), identifiers.cend()));
    }
    return running;
}

} // namespace brindle
