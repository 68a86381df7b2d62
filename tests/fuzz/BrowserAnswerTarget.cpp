// What a page in a browser says of itself.

#include "fuzz/FuzzTarget.h"
#include "media/BrowserScripts.h"

#include <cmath>

using brindle::fuzz::require;

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QString answer = QString::fromUtf8(
        reinterpret_cast<const char *>(data), qsizetype(size)); // NOLINT(*-reinterpret-cast)
    const brindle::BrowserDescriptor browser{
        QStringLiteral("org.example.browser"), QStringLiteral("Browser"), brindle::BrowserFamily::chromium};
    const brindle::VideoHosts hosts{QStringLiteral("pictures.example"), QStringLiteral("short.example")};
    const auto track =
        brindle::BrowserScripts::track(answer, browser, hosts, brindle::Date::fromSecondsSince1970(0));
    if (!track)
        return 0;
    require(!track->duration || (std::isfinite(*track->duration) && *track->duration > 0),
        "a duration is above 0");
    require(!track->elapsed || std::isfinite(*track->elapsed), "a position is finite");
    require(!track->artworkURL || track->artworkURL->host() == hosts.thumbnails,
        "pictures come from the host for them");
    require(track->sourceBundleIdentifier == browser.bundle, "the source is the browser");
    return 0;
}
