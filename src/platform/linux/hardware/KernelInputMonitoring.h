#pragma once

#include "platform/InputMonitoring.h"
#include "platform/linux/hardware/InputNodes.h"

#include <QString>
#include <QStringList>

namespace brindle {

/// The permission to read the kernel's input devices: it is there when this user may open a keyboard.
///
/// Asking shows the desktop's own authentication dialog, where it has one, to let the user join the group
/// that may read keyboards; the system's own tool does it. That, or whatever else a person does to be let in,
/// shows in the preflight; a group that was joined counts from the next login on.
class KernelInputMonitoring : public InputMonitoring
{
public:
    /// `authenticator` is the program that runs another one as the administrator once the person has
    /// authenticated.
    explicit KernelInputMonitoring(
        InputNodes nodes = InputNodes(), QString authenticator = QStringLiteral("pkexec"));

    bool preflightListenEventAccess() const override { return m_nodes.canOpenAny(); }
    void requestListenEventAccess() override;

    /// What the authenticator is asked to run; empty when there is no group to join.
    QStringList joiningCommand() const;

private:
    QString readersGroup() const;

    const InputNodes m_nodes;
    const QString m_authenticator;
};

} // namespace brindle
