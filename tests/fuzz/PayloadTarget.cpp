// Lines of the adapter's, from bytes to a track.

#include "fuzz/FuzzTarget.h"
#include "media/PayloadTrack.h"
#include "platform/fake/FakeMedia.h"

#include <QByteArrayList>

#include <cmath>

namespace {

using brindle::fuzz::require;

void examine(const brindle::NowPlayingTrack &track)
{
    require(!track.title.trimmed().isEmpty(), "a track has a title");
    require(
        !track.duration || (std::isfinite(*track.duration) && *track.duration > 0), "a duration is above 0");
    require(
        !track.elapsed || (std::isfinite(*track.elapsed) && *track.elapsed >= 0), "a position is 0 or more");
    require(std::isfinite(track.playbackRate), "a rate is finite");
    require(std::isfinite(track.elapsedUpdatedAt.secondsSince1970()), "a timestamp is a moment");
    require(!track.artworkURL, "artwork comes as bytes");
    require(!track.artwork || track.artworkFingerprint, "artwork has a fingerprint");
    if (track.artwork) {
        const QSize size = track.artwork->size();
        require(
            !size.isEmpty() && size.width() <= 1024 && size.height() <= 1024, "artwork is of a size to keep");
    }
    require(!track.sourceName || track.sourceBundleIdentifier, "a source's name comes from its identifier");
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    static const brindle::FakeWorkspace workspace = [] {
        brindle::FakeWorkspace made;
        made.install(QStringLiteral("org.example.player"), QStringLiteral("Player"));
        return made;
    }();
    brindle::MergedPayload merged;
    const QByteArray text(
        reinterpret_cast<const char *>(data), qsizetype(size)); // NOLINT(*-reinterpret-cast)
    for (const QByteArray &line : text.split('\n')) {
        const auto before = merged.payload().fields;
        if (!merged.apply(line))
            require(merged.payload().fields == before, "what is no line changes nothing");
        for (const QJsonValue &value : merged.payload().fields)
            require(!value.isNull() && !value.isUndefined(), "nothing is kept under a key that has no value");
        if (const auto track = makeTrack(merged.payload(), workspace, brindle::Date::fromSecondsSince1970(0)))
            examine(*track);
    }
    return 0;
}
