#pragma once

#include "platform/linux/scripts/Deadline.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <optional>

namespace brindle {

class MediaStates;

/// A browser's remote-debugging port, which speaks for its tabs. Only ever reached on this machine. Blocks;
/// any thread.
class DevTools
{
public:
    /// A tab may take `patience` seconds: one that hangs must not keep the others from being asked.
    DevTools(quint16 port, double patience) : m_port(port), m_patience(patience) { }

    /// The port that a browser wrote into its profile folder when it opened it; absent when it did not, or
    /// what is there is no such file. That the browser still runs is not said.
    static std::optional<quint16> portOfProfile(const QString &folder);

    /// Runs `javaScript` in one tab after the other until the choice is made. A tab that refuses, hangs or
    /// gives no text is passed over. False when nobody at the port answers as a browser does.
    bool askTabs(const QString &javaScript, MediaStates &states, const Deadline &deadline) const;

private:
    std::optional<QList<QByteArray>> tabs(const Deadline &deadline) const;
    std::optional<QString> evaluate(
        const QByteArray &tab, const QString &javaScript, const Deadline &deadline) const;

    const quint16 m_port;
    const double m_patience;
};

} // namespace brindle
