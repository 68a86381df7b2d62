#pragma once

#include "foundation/Lifetime.h"
#include "platform/Screens.h"

class QScreen;

namespace brindle {

class Scheduler;

/// The displays as the window system tells of them, on X11 and Wayland alike.
class QtScreens : public Screens
{
    Q_OBJECT

public:
    explicit QtScreens(Scheduler &scheduler, QObject *parent = nullptr);

    QList<Screen> screens() const override;
    std::optional<Screen> mainScreen() const override;

    static Screen describe(const QScreen &screen);

private:
    void watch(const QScreen *screen) const;
    void announce();

    Scheduler &m_scheduler;
    bool m_isAnnouncing = false;
    Lifetime m_lifetime;
};

} // namespace brindle
