#pragma once

#include <QString>

namespace brindle {

/// The user's folders for what the program keeps. Absolute paths; the folders need not exist yet, and what is
/// made in them is for the user alone.
class Directories
{
public:
    virtual ~Directories() = default;

    virtual QString applicationSupport() const = 0;
    virtual QString caches() const = 0;
};

} // namespace brindle
