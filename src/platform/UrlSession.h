#pragma once

#include "foundation/Subscription.h"

#include <QByteArray>
#include <QUrl>

#include <functional>
#include <optional>

namespace brindle {

/// Fetches what addresses name: over HTTP and HTTPS, from files and from `data:` addresses.
///
/// What servers allow to be kept is kept, so that asking again costs little. No request carries or leaves a
/// cookie. Main thread; no call waits for the network.
class UrlSession
{
public:
    /// What a fetch may cost; one that would cost more fails.
    struct Limits
    {
        /// Bytes.
        qint64 size = 0;
        /// Seconds from the call to the last byte.
        double duration = 0;
    };
    /// The whole content; absent when it could not be had, for whatever reason.
    using Completion = std::function<void(std::optional<QByteArray> content)>;

    virtual ~UrlSession() = default;

    /// Calls `completion` once, on a later turn. Dropping the subscription gives the fetch up, and nothing is
    /// called.
    [[nodiscard]] virtual Subscription fetch(
        const QUrl &url, const Limits &limits, Completion completion) = 0;
};

} // namespace brindle
