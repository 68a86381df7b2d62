#include "core/AppDelegate.h"

#include "core/AppContainer.h"
#include "foundation/NotificationCenter.h"
#include "foundation/Scheduler.h"
#include "island/IslandPanelController.h"
#include "platform/HostApplication.h"
#include "platform/LoginItem.h"
#include "platform/MenuBarItem.h"
#include "platform/Platform.h"
#include "platform/UserDefaults.h"

#include <utility>

namespace brindle {

namespace {

/// Set once the first launch has dealt with the login item; what the user chooses later is not overruled.
const QString launchAtLoginConfiguredKey = QStringLiteral("launchAtLoginDefaultConfigured");

} // namespace

AppDelegate::AppDelegate(AppContainer &container, PanelContentFactory makeContent)
    : m_container(container)
    , m_makeContent(std::move(makeContent))
{ }

AppDelegate::~AppDelegate() = default;

void AppDelegate::applicationDidFinishLaunching()
{
    installMenu();
    configureLaunchAtLogin();
    m_container.platform().scheduler().post(m_lifetime.guard([this] { bringUp(); }));
}

void AppDelegate::applicationWillTerminate()
{
    m_container.stop();
}

void AppDelegate::bringUp()
{
    m_container.platform().application().setActivationPolicy(HostApplication::ActivationPolicy::accessory);
    m_container.start();
    if (!m_panelController)
        m_panelController = std::make_unique<IslandPanelController>(m_container, m_makeContent);
    m_panelController->show();
}

void AppDelegate::configureLaunchAtLogin()
{
    UserDefaults &defaults = m_container.platform().userDefaults();
    LoginItem &loginItem = m_container.platform().loginItem();
    if (defaults.objectForKey(launchAtLoginConfiguredKey).isValid())
        return;
    // A refusal leaves the key unset, so that the next launch tries again.
    if (loginItem.status() == LoginItem::Status::enabled || loginItem.registerItem())
        defaults.setBool(launchAtLoginConfiguredKey, true);
}

void AppDelegate::installMenu()
{
    Platform &platform = m_container.platform();
    platform.menuBarItem().install(QStringLiteral("capsule.tophalf.filled"),
        {
            {QStringLiteral("Toggle Island"), QKeySequence(QStringLiteral("Ctrl+Shift+N")),
                [&platform] { platform.notifications().post(toggleIslandNotification); }, {}},
            {},
            {QStringLiteral("Quit Velmora"), QKeySequence(QStringLiteral("Ctrl+Q")),
                [&platform] { platform.application().terminate(); }, {}},
        });
}

} // namespace brindle
