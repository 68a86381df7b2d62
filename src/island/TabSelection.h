#pragma once

#include "core/IslandTab.h"
#include "ui/Motion.h"

#include <QObject>

namespace brindle {

class IslandViewModel;

/// Choosing a tab in the open island, and keeping the choice among the tabs that can be seen.
///
/// Lives as long as the open island does: made with it, it mends a selection that has no tab any more at once
/// and without animation; later, when the visible tabs change, with one. The view model outlives it. Main
/// thread.
class TabSelection : public QObject
{
    Q_OBJECT

public:
    explicit TabSelection(IslandViewModel &viewModel, QObject *parent = nullptr);

    /// Selects a tab as a tap on it does.
    void select(IslandTab tab);
    /// Selects the next (+1) or the previous (-1) visible tab, wrapping at the ends; nothing when the
    /// selected one is hidden.
    void step(int offset);

private:
    void keepLegal();
    bool reducesMotion() const;

    IslandViewModel &m_viewModel;
};

} // namespace brindle
