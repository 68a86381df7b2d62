#pragma once

#include <QObject>

#include <functional>
#include <memory>

namespace brindle {

class IslandViewModel;
class PanelWindow;

/// Makes what the panel shows: it draws into the window's content, sets its input shape, and lasts until it
/// is dropped. Both arguments outlive the result. May be empty, and may answer null: the panel is empty then.
using PanelContentFactory = std::function<std::unique_ptr<QObject>(IslandViewModel &, PanelWindow &)>;

} // namespace brindle
