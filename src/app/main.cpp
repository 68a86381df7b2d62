#include "app/LinuxPlatform.h"
#include "app/Renderer.h"
#include "app/TerminationSignals.h"
#include "core/AppContainer.h"
#include "core/AppDelegate.h"
#include "foundation/NotificationCenter.h"
#include "island/IslandHost.h"
#include "island/IslandPanelController.h"
#include "media/MediaProvider.h"
#include "platform/linux/dbus/SingleInstance.h"
#include "platform/linux/x11/XcbConnection.h"

#include <QApplication>
#include <QFileInfo>
#include <QLoggingCategory>

#include <cstdio>

namespace {

/// The island speaks X11 so far; a Wayland desktop shows it through XWayland.
void chooseWindowSystem()
{
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "xcb");
}

/// Without a display Qt ends the program as one that has crashed. Arguments may choose another display.
bool lacksDisplay(int argc)
{
    return argc == 1 && qgetenv("QT_QPA_PLATFORM") == "xcb" && !brindle::Xcb::serverAnswers();
}

/// Where the session has no bus, the client libraries would start one of their own, which nobody else is on.
void refuseToStartBuses()
{
    constexpr auto address = "DBUS_SESSION_BUS_ADDRESS";
    const QString usualSocket = qEnvironmentVariable("XDG_RUNTIME_DIR") + QStringLiteral("/bus");
    if (!qEnvironmentVariableIsSet(address) && !QFileInfo::exists(usualSocket))
        qputenv(address, "disabled:");
}

/// Pictures come from strangers, and a broken one is nothing to tell anyone.
void silenceDecoders()
{
    QLoggingCategory::setFilterRules(QStringLiteral("qt.gui.imageio*=false"));
}

/// Lets the desktop, and a second start, reach the island that is there.
void serveDesktop(
    brindle::SingleInstance &instance, brindle::Platform &platform, brindle::AppDelegate &delegate)
{
    using brindle::SingleInstance;
    QObject::connect(&instance, &SingleInstance::activated, &instance, [&delegate] {
        if (delegate.panelController())
            delegate.panelController()->show();
    });
    QObject::connect(
        &instance, &SingleInstance::actionActivated, &instance, [&platform](const QString &action) {
            if (action == QStringLiteral("toggle"))
                platform.notifications().post(brindle::toggleIslandNotification);
        });
}

} // namespace

int main(int argc, char **argv)
{
    using namespace brindle;

    chooseWindowSystem();
    if (lacksDisplay(argc)) {
        std::fputs("velmora: no display here to show the island on\n", stderr);
        return 1;
    }
    refuseToStartBuses();
    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("Velmora"));
    QApplication::setDesktopFileName(QStringLiteral("com.brindle.app"));
    chooseRenderer();
    silenceDecoders();
    const TerminationSignals signals;

    LinuxPlatform platform;
    SingleInstance instance(platform.sessionBus());
    if (instance.claim() == SingleInstance::Claim::second) {
        instance.activateFirst();
        return 0;
    }
    AppContainer container(platform);
    AppDelegate delegate(
        container, [](IslandViewModel &viewModel, PanelWindow &panel) -> std::unique_ptr<QObject> {
            return std::make_unique<IslandHost>(viewModel, panel);
        });
    QObject::connect(&application, &QCoreApplication::aboutToQuit, &application,
        [&delegate] { delegate.applicationWillTerminate(); });
    serveDesktop(instance, platform, delegate);
    delegate.applicationDidFinishLaunching();
    return QApplication::exec();
}
