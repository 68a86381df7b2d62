#include "media/ApplicationMediaFallback.h"

#include "foundation/Scheduler.h"
#include "media/PlayerScripts.h"
#include "platform/Bundle.h"
#include "platform/ScriptRunner.h"

namespace brindle {

namespace {

QList<BrowserDescriptor> allBrowsers()
{
    using enum BrowserFamily;
    return {
        {QStringLiteral("com.apple.Safari"), QStringLiteral("Safari"), safari},
        {QStringLiteral("com.google.Chrome"), QStringLiteral("Google Chrome"), chromium},
        {QStringLiteral("com.google.Chrome.canary"), QStringLiteral("Chrome Canary"), chromium},
        {QStringLiteral("com.microsoft.edgemac"), QStringLiteral("Microsoft Edge"), chromium},
        {QStringLiteral("com.brave.Browser"), QStringLiteral("Brave Browser"), chromium},
        {QStringLiteral("org.chromium.Chromium"), QStringLiteral("Chromium"), chromium},
        {QStringLiteral("com.vivaldi.Vivaldi"), QStringLiteral("Vivaldi"), chromium},
        {QStringLiteral("com.operasoftware.Opera"), QStringLiteral("Opera"), chromium},
        {QStringLiteral("ru.yandex.desktop.yandex-browser"), QStringLiteral("Yandex Browser"), chromium},
        {QStringLiteral("com.apple.SafariTechnologyPreview"), QStringLiteral("Safari Technology Preview"),
            safari},
    };
}

} // namespace

ApplicationMediaFallback::ApplicationMediaFallback(
    ScriptRunner &scripts, const Scheduler &scheduler, const Bundle &bundle)
    : m_scripts(scripts)
    , m_scheduler(scheduler)
    , m_browsers(allBrowsers())
    , m_hosts{bundle.infoValue(QStringLiteral("BrindleThumbnailHost")).toString(),
          bundle.infoValue(QStringLiteral("BrindleShortLinkHost")).toString()}
{ }

QList<NowPlayingTrack> ApplicationMediaFallback::tracks(const QSet<QString> &running)
{
    QList<NowPlayingTrack> found;
    for (const QString &player : {PlayerScripts::spotify, PlayerScripts::music}) {
        if (const auto track = running.contains(player) ? playerTrack(player) : std::nullopt)
            found.append(*track);
    }
    for (const BrowserDescriptor &browser : m_browsers) {
        if (const auto track = running.contains(browser.bundle) ? browserTrack(browser) : std::nullopt)
            found.append(*track);
    }
    return found;
}

std::optional<NowPlayingTrack> ApplicationMediaFallback::playerTrack(const QString &player)
{
    const auto answer = m_scripts.run(PlayerScripts::nowPlaying(player)).result;
    return answer ? PlayerScripts::track(*answer, player, m_scheduler.now()) : std::nullopt;
}

std::optional<NowPlayingTrack> ApplicationMediaFallback::browserTrack(const BrowserDescriptor &browser)
{
    const auto answer = m_scripts.run(BrowserScripts::nowPlaying(browser)).result;
    if (!answer || !answer->stringValue)
        return std::nullopt;
    return BrowserScripts::track(*answer->stringValue, browser, m_hosts, m_scheduler.now());
}

bool ApplicationMediaFallback::togglePlayback(const std::optional<QString> &bundle)
{
    return isControllable(bundle) && command(PlayerScripts::togglePlayback(*bundle));
}

bool ApplicationMediaFallback::seek(double seconds, const std::optional<QString> &bundle)
{
    return isControllable(bundle) && command(PlayerScripts::seek(seconds, *bundle));
}

bool ApplicationMediaFallback::isControllable(const std::optional<QString> &bundle) const
{
    return bundle == PlayerScripts::spotify || bundle == PlayerScripts::music;
}

// A command whose text is no script has met no application that could refuse it.
bool ApplicationMediaFallback::command(const QString &script)
{
    return m_scripts.run(script).status != ScriptOutcome::Status::failed;
}

} // namespace brindle
