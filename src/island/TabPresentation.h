#pragma once

#include "core/IslandTab.h"

#include <QString>

namespace brindle {

/// A tab with its name and its symbol, as the sidebar shows it. A plain value that QML reads.
struct TabPresentation
{
    Q_GADGET
    Q_PROPERTY(brindle::IslandTab tab MEMBER tab)
    Q_PROPERTY(QString title MEMBER title)
    Q_PROPERTY(QString symbol MEMBER symbol)

public:
    IslandTab tab = IslandTab::media;
    QString title;
    /// The name of a symbol.
    QString symbol;
};

TabPresentation presentationOf(IslandTab tab);

} // namespace brindle
