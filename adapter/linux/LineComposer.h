#pragma once

#include "adapter/linux/Payload.h"

#include <QByteArrayList>

#include <optional>

namespace brindle::adapter {

/// Says in lines what a payload is, or how it differs from the one told last.
///
/// The first line, and the first of another player, tells all; the others tell the difference. Whoever merges
/// the lines has at any time what was told last.
class LineComposer
{
public:
    /// A line, with its line feed, in parts to be written one after the other, so that a large picture need
    /// not be copied into it. Absent when there is nothing new.
    std::optional<QByteArrayList> compose(const Payload &payload) const;
    /// The line for `payload` has been told.
    void told(const Payload &payload) { m_told = payload; }
    const std::optional<Payload> &lastTold() const { return m_told; }

private:
    std::optional<Payload> m_told;
};

} // namespace brindle::adapter
