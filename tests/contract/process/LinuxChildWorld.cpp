#include "contract/process/LinuxChildWorld.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

namespace brindle::test {

LinuxChildWorld::LinuxChildWorld() : m_orders(m_folder.filePath(QStringLiteral("orders")))
{
    EXPECT_EQ(mkfifo(QFile::encodeName(m_orders.fileName()).constData(), 0600), 0);
    // Both ways, so that opening waits for nobody.
    EXPECT_TRUE(m_orders.open(QIODevice::ReadWrite | QIODevice::Unbuffered));
}

ChildWorld::Launch LinuxChildWorld::obedientProgram()
{
    return {QStringLiteral("/bin/sh"),
        {QStringLiteral("-c"),
            QStringLiteral("while read -r order; do eval \"$order\"; done < '%1'").arg(m_orders.fileName())},
        {}, {}, {}};
}

void LinuxChildWorld::refuse(Launch &launch)
{
    launch.executable = m_folder.filePath(QStringLiteral("missing"));
}

void LinuxChildWorld::write(const QByteArray &text)
{
    tell("printf %s '" + text + "'");
}

void LinuxChildWorld::writeError(const QByteArray &text)
{
    tell("printf %s '" + text + "' >&2");
}

void LinuxChildWorld::tell(const QByteArray &line)
{
    EXPECT_EQ(m_orders.write(line + '\n'), line.size() + 1);
}

} // namespace brindle::test
