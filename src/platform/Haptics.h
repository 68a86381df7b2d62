#pragma once

namespace brindle {

/// Small ticks under the finger, where the machine's trackpad has them. Never fails, never blocks.
class Haptics
{
public:
    enum class Pattern { generic = 0, alignment = 1, levelChange = 2 };
    enum class PerformanceTime { defaultTime = 0, now = 1, drawCompleted = 2 };

    virtual ~Haptics() = default;

    virtual void performFeedback(Pattern pattern, PerformanceTime time) = 0;
};

} // namespace brindle
