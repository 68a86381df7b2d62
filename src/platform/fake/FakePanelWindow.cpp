#include "platform/fake/FakePanelWindow.h"

namespace brindle {

namespace {

double area(const QRectF &rect)
{
    return rect.width() * rect.height();
}

} // namespace

FakePanelWindow::FakePanelWindow(const PanelStyle &panelStyle, const Screens &screens)
    : style(panelStyle)
    , m_screens(screens)
    , m_frame(QPointF(), panelStyle.placeholderSize)
{ }

void FakePanelWindow::setFrame(const QRectF &frame, FrameChange change)
{
    m_frame = frame;
    placements.append({frame, change});
}

std::optional<Screen> FakePanelWindow::screen() const
{
    if (placements.isEmpty())
        return std::nullopt;
    std::optional<Screen> best;
    double most = 0;
    for (const Screen &screen : m_screens.screens()) {
        const double overlap = area(screen.frame & m_frame);
        if (overlap > most) {
            most = overlap;
            best = screen;
        }
    }
    return best;
}

void FakePanelWindow::orderFrontRegardless()
{
    ++ordersFront;
    isKey = false;
}

void FakePanelWindow::makeKeyAndOrderFront()
{
    ++timesMadeKey;
    isKey = style.canBecomeKey;
}

} // namespace brindle
