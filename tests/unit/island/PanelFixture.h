#pragma once

#include "core/AppContainer.h"
#include "core/SettingsStore.h"
#include "island/IslandPanelController.h"
#include "support/Session.h"

#include <gtest/gtest.h>

namespace brindle {

inline const QRectF displayFrame(0, 0, 1512, 982);

/// An island on a display with a notch, controlled as in the program but empty.
class IslandPanelControllerTest : public testing::Test
{
protected:
    IslandPanelControllerTest()
    {
        session.platform.displays.set(
            {{.localizedName = QStringLiteral("Built-in"), .frame = displayFrame, .safeAreaTop = 32}});
    }

    void launch()
    {
        controller = std::make_unique<IslandPanelController>(session.container);
        controller->show();
        session.turn();
    }

    IslandViewModel &island() { return controller->viewModel(); }
    SettingsStore &settings() const { return session.container.settings(); }
    FakePanelWindow &window() const { return session.panel(); }

    // A point in the middle of the closed island, and one of the open island only.
    QPointF inside() const { return {756, 981}; }
    QPointF inOpenOnly() const { return {400, 750}; }
    QPointF outside() const { return {10, 10}; }

    void hoverOpen()
    {
        session.movePointer(inside());
        session.advance(settings().hoverDelay());
        ASSERT_TRUE(island().isExpanded());
        session.turn();
        ASSERT_TRUE(window().isKeyWindow());
    }

    Session session;
    std::unique_ptr<IslandPanelController> controller;
};

} // namespace brindle
