#pragma once

#include <functional>

namespace brindle::test {

/// Runs the event loop until `holds` is true; false when that did not happen within `seconds`. Wakes for
/// events only, so what is waited for must be brought about by one.
bool eventually(const std::function<bool()> &holds, double seconds = 15);

/// Delivers what has arrived already.
void deliverEvents();

} // namespace brindle::test
