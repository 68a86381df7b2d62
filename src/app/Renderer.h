#pragma once

namespace brindle {

/// Chooses how the scene is drawn, unless the environment has: by a GPU where one is known to do it, else by
/// the processor.
///
/// After the application object, before the first window. Costs one question to the display.
void chooseRenderer();

} // namespace brindle
