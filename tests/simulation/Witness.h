#pragma once

#include "activities/SystemActivity.h"
#include "simulation/Program.h"

#include <QObject>
#include <QSet>

#include <optional>

namespace brindle {
class SystemMediaService;
}

namespace brindle::simulation {

/// Follows one launch of the program and says what is wrong with it.
///
/// It sees changes at the moment when they come about, also amid a pause, and looks at everything when it is
/// asked to. The first complaint is kept.
class Witness final : public QObject, public PersonWatcher
{
public:
    explicit Witness(Program &program);
    ~Witness() override;

    /// Looks at everything. `isSettled`: nothing waits for the next turn.
    void check(bool isSettled);
    /// Looks whether the pointer, which was just moved, is known to be where it is.
    void checkPointer();
    const std::optional<QString> &complaint() const { return m_complaint; }

    void openedByHand() override;
    void interactionEnded() override;
    void dragReported(bool isInside) override;
    void buttonPressed() override;
    void buttonReleased() override;

private:
    using Key = QString;

    static Key keyOf(const SystemActivity &activity);
    void expect(bool holds, const QString &otherwise);
    void currentActivityChanged();
    void islandChanged();
    void checkActivities();
    void checkIsland();
    void checkDrag();
    void checkServices();
    void checkMedia();
    void checkSettledMedia();
    const SystemMediaService &media() const;
    void checkLevels();
    void checkPanel();
    void checkDelays();
    void checkShape();
    double uptime() const;

    Program &m_program;
    IslandViewModel &m_island;
    std::optional<QString> m_complaint;

    struct Shown
    {
        Key key;
        double since;
        double duration;
    };
    std::optional<Shown> m_shown;
    QSet<Key> m_waiting;
    QSet<Key> m_known;
    QSet<Key> m_gone;

    bool m_isOpenByHand = false;
    /// When an island that nothing holds must be closed; absent while something holds it.
    std::optional<double> m_closesBy;
    /// When a drag whose button is up must be over; absent while nothing is known of it.
    std::optional<double> m_dragEndsBy;
    bool m_hasDragLeft = false;
};

} // namespace brindle::simulation
