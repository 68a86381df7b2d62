#include "media/BrowserScripts.h"

#include <QUrlQuery>

#include <array>
#include <cmath>

namespace brindle::BrowserScripts {

namespace {

/// Occurs neither in titles nor in addresses, as long as their author means well.
constexpr char16_t unitSeparator = 31;

/// The first media element that plays, else the first that has any data.
QString probe()
{
    return QStringLiteral(
        "(() => {const a=[...document.querySelectorAll('video,audio')];"
        "const m=a.find(x=>!x.paused&&!x.ended)||a.find(x=>x.readyState>0);if(!m)return '';"
        "return [(!m.paused&&!m.ended)?'1':'0',document.title,location.href,"
        "Number.isFinite(m.duration)?m.duration:0,m.currentTime||0].join(String.fromCharCode(31));})()");
}

/// The command that runs the probe in one tab.
QString command(BrowserFamily family)
{
    const QString javaScript = u'"' + escaped(probe()) + u'"';
    if (family == BrowserFamily::safari)
        return QStringLiteral("do JavaScript ") + javaScript + QStringLiteral(" in browserTab");
    return QStringLiteral("execute browserTab javascript ") + javaScript;
}

/// A number if the text is one from end to end.
std::optional<double> number(const QString &text)
{
    bool isNumber = false;
    const double value = text.toDouble(&isNumber);
    const bool isWhole = text.trimmed().size() == text.size();
    return isNumber && isWhole && std::isfinite(value) ? std::optional(value) : std::nullopt;
}

std::optional<QUrl> webPage(const QString &text)
{
    QUrl url(text);
    const bool isOfTheWeb = url.scheme() == u"http" || url.scheme() == u"https"; // lower case already
    return url.isValid() && isOfTheWeb ? std::optional(std::move(url)) : std::nullopt;
}

/// The identifier of the video that a page shows; empty when it names none.
QString videoIdentifier(const QUrl &page, const VideoHosts &hosts)
{
    const bool isShortLink = !hosts.shortLinks.isEmpty() && page.host() == hosts.shortLinks.toLower();
    if (isShortLink || page.path().toLower().startsWith(u"/shorts/")) {
        // The first component, whatever follows: a page under "/shorts/" gets an address that leads nowhere.
        const QString component =
            page.path(QUrl::FullyEncoded).section(u'/', 0, 0, QString::SectionSkipEmpty);
        return QUrl::fromPercentEncoding(component.toUtf8());
    }
    return QUrlQuery(page).queryItemValue(QStringLiteral("v"), QUrl::FullyDecoded);
}

} // namespace

// The order matters: the backslashes that shield the quotes are not to be doubled.
QString escaped(QString javaScript)
{
    return javaScript.replace(u'\\', QStringLiteral("\\\\"))
        .replace(u'"', QStringLiteral("\\\""))
        .replace(u'\n', u' ');
}

// The `try` around each tab keeps one that refuses from spoiling the walk.
QString nowPlaying(const BrowserDescriptor &browser)
{
    return QStringLiteral("tell application id \"") + browser.bundle
        + QStringLiteral("\"\n"
                         "    set pausedCandidate to \"\"\n"
                         "    repeat with browserWindow in windows\n"
                         "        repeat with browserTab in tabs of browserWindow\n"
                         "            try\n"
                         "                set mediaState to ")
        + command(browser.family)
        + QStringLiteral("\n"
                         "                if mediaState starts with \"1\" then return mediaState\n"
                         "                if mediaState is not \"\" and pausedCandidate is \"\" then "
                         "set pausedCandidate to mediaState\n"
                         "            end try\n"
                         "        end repeat\n"
                         "    end repeat\n"
                         "    return pausedCandidate\n"
                         "end tell");
}

std::optional<NowPlayingTrack> track(
    const QString &answer, const BrowserDescriptor &browser, const VideoHosts &hosts, Date now)
{
    constexpr qsizetype fields = 5;
    const QStringList parts = answer.split(QChar(unitSeparator));
    if (parts.size() < fields)
        return std::nullopt;
    const auto page = webPage(parts[2]);
    if (!page)
        return std::nullopt;

    NowPlayingTrack track;
    track.title = cleanTitle(parts[1]);
    if (!page->host().isEmpty())
        track.artist = page->host(QUrl::FullyEncoded);
    track.duration = number(parts[3]);
    if (track.duration && *track.duration <= 0)
        track.duration.reset();
    track.elapsed = number(parts[4]);
    track.elapsedUpdatedAt = now;
    track.isPlaying = parts[0] == u"1";
    track.artworkURL = thumbnail(*page, hosts);
    track.sourceName = browser.name;
    track.sourceBundleIdentifier = browser.bundle;
    return track;
}

QString cleanTitle(QString title)
{
    // Each once, in this order.
    static const std::array suffixes{
        QStringLiteral(" - YouTube"), QStringLiteral(" | Netflix"), QStringLiteral(" - Twitch")};
    for (const QString &suffix : suffixes) {
        if (title.endsWith(suffix))
            title.chop(suffix.size());
    }
    return title;
}

std::optional<QUrl> thumbnail(const QUrl &page, const VideoHosts &hosts)
{
    const QString identifier = videoIdentifier(page, hosts);
    if (identifier.isEmpty() || hosts.thumbnails.isEmpty())
        return std::nullopt;
    QUrl url;
    url.setScheme(QStringLiteral("https"));
    url.setHost(hosts.thumbnails);
    // The page's word for it is one component of the path, whatever it holds.
    url.setPath(QStringLiteral("/vi/") + QString::fromLatin1(QUrl::toPercentEncoding(identifier))
            + QStringLiteral("/hqdefault.jpg"),
        QUrl::TolerantMode);
    return url;
}

} // namespace brindle::BrowserScripts
