#pragma once

#include "media/NowPlayingTrack.h"

#include <QString>
#include <QUrl>

#include <optional>

namespace brindle {

/// Which dialect of scripts a browser speaks.
enum class BrowserFamily { safari, chromium };

/// A browser that can be asked by script.
struct BrowserDescriptor
{
    QString bundle;
    /// What people call it.
    QString name;
    BrowserFamily family;

    bool operator==(const BrowserDescriptor &) const = default;
};

/// The hosts behind the pictures of videos. Empty where the program was configured without them.
struct VideoHosts
{
    /// Serves a picture for each video.
    QString thumbnails;
    /// Whose pages have the video's identifier for a path.
    QString shortLinks;
};

/// The browsers: what they are asked, and what their answer means. Plain functions; any thread.
namespace BrowserScripts {

/// Runs a line of JavaScript in one tab after the other. Gives what the first tab with playing media says,
/// else the first one with media, else the empty text.
QString nowPlaying(const BrowserDescriptor &browser);

/// JavaScript as it stands between the quotes of a script.
QString escaped(QString javaScript);

/// The track in the answer to `nowPlaying`: a sign for playing, the page's title and address, the duration
/// and the position, joined by unit separators. Absent when the text is anything else, or the page is none
/// of the web. A page has its say in this text, so nothing in it is trusted.
std::optional<NowPlayingTrack> track(
    const QString &answer, const BrowserDescriptor &browser, const VideoHosts &hosts, Date now);

/// A page's title without what video sites append to it.
QString cleanTitle(QString title);
/// The address of the picture that goes with the video on `page`.
std::optional<QUrl> thumbnail(const QUrl &page, const VideoHosts &hosts);

} // namespace BrowserScripts

} // namespace brindle
