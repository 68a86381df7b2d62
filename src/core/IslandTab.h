#pragma once

#include <QList>
#include <QObject>
#include <QString>

namespace brindle {
Q_NAMESPACE

/// The tabs of the open island, in the order in which they stand in the sidebar.
enum class IslandTab { media, shelf, calculator, assistant };
Q_ENUM_NS(IslandTab)

inline const QList<IslandTab> allIslandTabs{
    IslandTab::media, IslandTab::shelf, IslandTab::calculator, IslandTab::assistant};

} // namespace brindle
