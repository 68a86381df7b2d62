#pragma once

#include <QSet>
#include <QString>

namespace brindle {

class ApplicationIndex;

/// The identifiers of all applications that have a process of the user's now. `processes` is where the system
/// shows its processes. Costs a few calls of the system for each of them, and waits for none. Any thread.
QSet<QString> runningApplications(const ApplicationIndex &index, const QString &processes);

} // namespace brindle
