#pragma once

#include <QKeySequence>
#include <QList>
#include <QString>

#include <functional>

namespace brindle {

/// An entry of the status menu. One without a title is a divider.
struct MenuEntry
{
    QString title;
    /// Shown beside the title; nothing is grabbed from other programs.
    QKeySequence shortcut;
    std::function<void()> action;
    /// Asked each time the menu is about to be seen; an empty function means enabled.
    std::function<bool()> isEnabled;

    bool isDivider() const { return title.isEmpty(); }
};

/// The standing entry of the program in the desktop's bar: a symbol with a menu. A desktop that has no place
/// for it shows nothing, and the item appears by itself once there is one. Main thread.
class MenuBarItem
{
public:
    virtual ~MenuBarItem() = default;

    virtual void install(const QString &symbol, const QList<MenuEntry> &entries) = 0;
};

} // namespace brindle
