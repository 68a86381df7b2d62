#include "platform/linux/applications/KnownApplications.h"

#include "platform/linux/applications/ProcessIdentity.h"

#include <algorithm>

namespace brindle {

namespace {

template <typename Belongs> const KnownApplication *firstThat(Belongs belongs)
{
    const auto &all = knownApplications();
    const auto found = std::ranges::find_if(all, belongs);
    return found == all.end() ? nullptr : &*found;
}

} // namespace

const QList<KnownApplication> &knownApplications()
{
    using namespace Qt::StringLiterals;
    static const QList<KnownApplication> all{
        {u"com.spotify.client"_s, {u"spotify"_s, u"com.spotify.Client"_s, u"spotify_spotify"_s},
            {u"/spotify"_s}, u"com.spotify.Client"_s, {}},
        {u"com.google.Chrome"_s, {u"google-chrome"_s, u"com.google.Chrome"_s}, {u"/google/chrome/chrome"_s},
            u"com.google.Chrome"_s, u"google-chrome"_s},
        {u"com.google.Chrome.canary"_s, {u"google-chrome-canary"_s}, {u"/google/chrome-canary/chrome"_s}, {},
            u"google-chrome-canary"_s},
        {u"com.microsoft.edgemac"_s, {u"microsoft-edge"_s, u"com.microsoft.Edge"_s},
            {u"/microsoft/msedge/msedge"_s}, u"com.microsoft.Edge"_s, u"microsoft-edge"_s},
        {u"com.brave.Browser"_s, {u"brave-browser"_s, u"com.brave.Browser"_s, u"brave_brave"_s},
            {u"/brave.com/brave/brave"_s}, u"com.brave.Browser"_s, u"BraveSoftware/Brave-Browser"_s},
        {u"org.chromium.Chromium"_s,
            {u"chromium"_s, u"chromium-browser"_s, u"org.chromium.Chromium"_s, u"chromium_chromium"_s},
            {u"/chromium/chromium"_s, u"/chromium-browser/chromium-browser"_s, u"/chromium-browser/chrome"_s},
            u"org.chromium.Chromium"_s, u"chromium"_s},
        {u"com.vivaldi.Vivaldi"_s, {u"vivaldi-stable"_s, u"com.vivaldi.Vivaldi"_s},
            {u"/vivaldi/vivaldi-bin"_s}, u"com.vivaldi.Vivaldi"_s, u"vivaldi"_s},
        {u"com.operasoftware.Opera"_s, {u"opera"_s, u"com.opera.Opera"_s, u"opera_opera"_s},
            {u"/opera/opera"_s}, u"com.opera.Opera"_s, u"opera"_s},
        {u"ru.yandex.desktop.yandex-browser"_s, {u"yandex-browser"_s, u"ru.yandex.Browser"_s},
            {u"/yandex/browser/yandex_browser"_s}, u"ru.yandex.Browser"_s, u"yandex-browser"_s},
    };
    return all;
}

const KnownApplication *knownApplication(const QString &identifier)
{
    return firstThat([&](const KnownApplication &known) { return known.identifier == identifier; });
}

const KnownApplication *knownApplication(const ProcessIdentity &process)
{
    // Within a sandbox every program may lie under any path.
    if (!process.flatpak.isEmpty())
        return firstThat([&](const KnownApplication &known) { return known.flatpak == process.flatpak; });
    return firstThat([&](const KnownApplication &known) {
        return std::ranges::any_of(
            known.executables, [&](const QString &end) { return process.executable.endsWith(end); });
    });
}

} // namespace brindle
