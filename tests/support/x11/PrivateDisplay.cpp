#include "support/x11/PrivateDisplay.h"

#include <array>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace brindle::test {

namespace {

/// Runs in the child between fork and exec: nothing here may allocate.
[[noreturn]] void becomeServer(int numberPipe)
{
    // The server writes the number that it chose to this descriptor.
    constexpr int numberDescriptor = 3;
    dup2(numberPipe, numberDescriptor);
    const int nothing = open("/dev/null", O_RDWR);
    if (nothing >= 0) {
        dup2(nothing, STDOUT_FILENO);
        dup2(nothing, STDERR_FILENO);
    }
    execlp("Xvfb", "Xvfb", "-displayfd", "3", "-screen", "0", "1600x1000x24", "-nolisten", "tcp", "-noreset",
        static_cast<char *>(nullptr));
    _exit(127);
}

std::string readLine(int descriptor)
{
    std::string line;
    char next = 0;
    while (read(descriptor, &next, 1) == 1 && next != '\n')
        line += next;
    return line;
}

} // namespace

PrivateDisplay::PrivateDisplay()
{
    std::array<int, 2> ends{};
    if (pipe(ends.data()) != 0)
        return;
    m_process = fork();
    if (m_process == 0)
        becomeServer(ends[1]);
    close(ends[1]);
    const std::string number = readLine(ends[0]);
    close(ends[0]);
    if (number.empty())
        return;
    m_name = ":" + number;
    setenv("DISPLAY", m_name.c_str(), 1);
    setenv("QT_QPA_PLATFORM", "xcb", 1);
}

PrivateDisplay::~PrivateDisplay()
{
    if (m_process <= 0)
        return;
    kill(m_process, SIGTERM);
    waitpid(m_process, nullptr, 0);
}

} // namespace brindle::test
