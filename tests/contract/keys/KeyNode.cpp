#include "contract/keys/KeyNode.h"

#include <QFile>

#include <fcntl.h>
#include <linux/input.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace brindle::test {

KeyNode::KeyNode(QString path) : m_path(std::move(path))
{
    const QByteArray name = QFile::encodeName(m_path);
    mkfifo(name.constData(), 0600);
    // For both, so that it needs no reader to be opened.
    m_writer = open(name.constData(), O_RDWR | O_CLOEXEC);
}

KeyNode::~KeyNode()
{
    unplug();
}

void KeyNode::unplug()
{
    if (m_writer < 0)
        return;
    close(std::exchange(m_writer, -1));
    QFile::remove(m_path);
}

void KeyNode::write(const QByteArray &bytes) const
{
    [[maybe_unused]] const auto written = ::write(m_writer, bytes.constData(), size_t(bytes.size()));
}

void KeyNode::send(int code, int value) const
{
    input_event event{};
    event.type = EV_KEY;
    event.code = uint16_t(code);
    event.value = value;
    write(QByteArray(reinterpret_cast<const char *>(&event), sizeof(event)));
    event.type = EV_SYN;
    event.code = SYN_REPORT;
    event.value = 0;
    write(QByteArray(reinterpret_cast<const char *>(&event), sizeof(event)));
}

void KeyNode::press(int code) const
{
    send(code, 1);
    send(code, 0);
}

} // namespace brindle::test
