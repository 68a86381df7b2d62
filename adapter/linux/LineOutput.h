#pragma once

#include <QByteArrayList>

namespace brindle::adapter {

/// Where lines go.
class LineOutput
{
public:
    virtual ~LineOutput() = default;

    /// Takes a line in its parts and sees to it that all of it is written, or refuses it as a whole while it
    /// is busy with an earlier one or nobody reads. Never blocks. What follows a refusal is for the caller to
    /// hear of and to write then.
    virtual bool write(const QByteArrayList &line) = 0;
};

} // namespace brindle::adapter
