// Starts the program that its arguments name, hands on what that writes, and waits to be killed.

#include "platform/linux/process/LinuxChildProcesses.h"

#include <unistd.h>

int main(int argc, char **argv)
{
    QStringList arguments;
    for (int i = 1; i < argc; ++i)
        arguments.append(QString::fromLocal8Bit(argv[i]));
    brindle::LinuxChildProcesses processes;
    const auto child = processes.launch({arguments.value(0), arguments.sliced(1),
        [](const QByteArray &chunk) {
            return void(write(STDOUT_FILENO, chunk.constData(), std::size_t(chunk.size())) < 0);
        },
        {}, {}});
    if (!child)
        return 1;
    child->waitUntilExit();
    return 0;
}
