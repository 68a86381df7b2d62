#include "platform/linux/QtScreens.h"

#include "foundation/Scheduler.h"
#include "platform/linux/ScreenCoordinates.h"

#include <QGuiApplication>
#include <QScreen>
#include <QWindow>

namespace brindle {

QtScreens::QtScreens(Scheduler &scheduler, QObject *parent) : Screens(parent), m_scheduler(scheduler)
{
    for (QScreen *screen : QGuiApplication::screens())
        watch(screen);
    connect(qGuiApp, &QGuiApplication::screenAdded, this, [this](QScreen *screen) {
        watch(screen);
        announce();
    });
    connect(qGuiApp, &QGuiApplication::screenRemoved, this, &QtScreens::announce);
    connect(qGuiApp, &QGuiApplication::primaryScreenChanged, this, &QtScreens::announce);
}

QList<Screen> QtScreens::screens() const
{
    QList<Screen> described;
    for (const QScreen *screen : QGuiApplication::screens()) {
        // The window system keeps a nameless display of no size while all others are gone.
        if (!screen->geometry().isEmpty())
            described.append(describe(*screen));
    }
    return described;
}

std::optional<Screen> QtScreens::mainScreen() const
{
    const QWindow *focus = QGuiApplication::focusWindow();
    const QScreen *screen = focus ? focus->screen() : QGuiApplication::primaryScreen();
    if (!screen || screen->geometry().isEmpty())
        return std::nullopt;
    return describe(*screen);
}

Screen QtScreens::describe(const QScreen &screen)
{
    return {screen.name(), ScreenCoordinates::fromWindowSystem(QRectF(screen.geometry())), 0,
        screen.devicePixelRatio()};
}

void QtScreens::watch(const QScreen *screen) const
{
    connect(screen, &QScreen::geometryChanged, this, &QtScreens::announce);
    connect(screen, &QScreen::logicalDotsPerInchChanged, this, &QtScreens::announce);
}

void QtScreens::announce()
{
    if (m_isAnnouncing)
        return;
    m_isAnnouncing = true;
    m_scheduler.post(m_lifetime.guard([this] {
        m_isAnnouncing = false;
        Q_EMIT parametersChanged();
    }));
}

} // namespace brindle
