#include "simulation/Play.h"

#include "simulation/Program.h"
#include "simulation/Witness.h"

#include <memory>

namespace brindle::simulation {

namespace {

class Player
{
public:
    Player() { watch(); }

    std::optional<QString> step(const Event &event)
    {
        const int launches = m_program.launches();
        // Nobody watches what is about to be taken down.
        if (event.act == Act::relaunch)
            m_witness.reset();
        const bool wasOpen = m_program.island().isExpanded();
        m_program.apply(event);
        if (m_program.launches() != launches)
            watch();
        m_witness->check(false);
        if (event.endsTurn) {
            const QRectF frame = m_program.platform.panel->frame();
            m_program.platform.time.runPosted();
            // A panel that was moved under the pointer notices at the pointer's next movement.
            const bool isPointerDue =
                event.act == Act::movePointer || m_program.island().isExpanded() != wasOpen;
            if (isPointerDue && m_program.platform.panel->frame() == frame)
                m_witness->checkPointer();
            m_witness->check(true);
        }
        if (event.pause > 0) {
            m_program.pass(event.pause);
            m_witness->check(true);
        }
        return m_witness->complaint();
    }

private:
    void watch() { m_witness = std::make_unique<Witness>(m_program); }

    Program m_program;
    std::unique_ptr<Witness> m_witness;
};

} // namespace

std::optional<trails::Failure> play(const Trail &trail)
{
    Player player;
    for (std::size_t index = 0; index < trail.size(); ++index) {
        if (const auto complaint = player.step(trail[index]))
            return trails::Failure{index, *complaint};
    }
    return std::nullopt;
}

} // namespace brindle::simulation
