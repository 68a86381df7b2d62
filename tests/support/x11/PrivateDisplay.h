#pragma once

#include <string>
#include <sys/types.h>

namespace brindle::test {

/// An X server of the test's own, without a screen that anybody sees. Ends with the object. Made before the
/// application object, for which it sets `DISPLAY`.
class PrivateDisplay
{
public:
    PrivateDisplay();
    ~PrivateDisplay();
    PrivateDisplay(const PrivateDisplay &) = delete;
    PrivateDisplay &operator=(const PrivateDisplay &) = delete;

    bool isRunning() const { return m_process > 0 && !m_name.empty(); }
    const std::string &name() const { return m_name; }

private:
    pid_t m_process = -1;
    std::string m_name;
};

} // namespace brindle::test
