#pragma once

#include "island/SidebarNavigation.h"

#include <QtQml/qqmlregistration.h>

namespace brindle {

/// The sidebar's rules, under the name that its view makes them by.
struct SidebarRules
{
    Q_GADGET
    QML_FOREIGN(brindle::SidebarNavigation)
    QML_NAMED_ELEMENT(SidebarRules)
};

/// The island's state, as views hand it on.
struct IslandState
{
    Q_GADGET
    QML_FOREIGN(brindle::IslandViewModel)
    QML_NAMED_ELEMENT(IslandState)
    QML_UNCREATABLE("made by the panel's controller")
};

} // namespace brindle
