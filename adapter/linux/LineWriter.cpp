#include "adapter/linux/LineWriter.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/uio.h>
#include <utility>

namespace brindle::adapter {

namespace {

/// Large pictures then take fewer turns. Where that is not allowed the pipe stays as it is.
constexpr int pipeBytes = 1024 * 1024;

bool isPipeOrSocket(int descriptor)
{
    struct stat status = {};
    return ::fstat(descriptor, &status) == 0 && (S_ISFIFO(status.st_mode) || S_ISSOCK(status.st_mode));
}

/// What else there is (a terminal, a file) is shared with programs that expect it to block.
void makeNonBlocking(int descriptor)
{
    if (!isPipeOrSocket(descriptor))
        return;
    ::fcntl(descriptor, F_SETFL, ::fcntl(descriptor, F_GETFL) | O_NONBLOCK);
    ::fcntl(descriptor, F_SETPIPE_SZ, pipeBytes);
}

} // namespace

LineWriter::LineWriter(int descriptor)
    : m_descriptor(descriptor)
    , m_writable(descriptor, QSocketNotifier::Write)
    , m_broken(descriptor, QSocketNotifier::Exception)
{
    makeNonBlocking(descriptor);
    m_writable.setEnabled(false);
    // A file or a device never breaks, and the event loop cannot wait for all of them.
    m_broken.setEnabled(isPipeOrSocket(descriptor));
    connect(&m_writable, &QSocketNotifier::activated, this, [this] { becomeWritable(); });
    connect(&m_broken, &QSocketNotifier::activated, this, [this] {
        m_broken.setEnabled(false);
        Q_EMIT readerGone();
    });
}

bool LineWriter::write(const QByteArrayList &line)
{
    if (m_parts.isEmpty()) {
        m_parts = line;
        m_offset = 0;
        const Progress progress = push();
        m_writable.setEnabled(progress != Progress::all);
        if (progress != Progress::none)
            return true;
        m_parts.clear();
    }
    m_hasRefused = true;
    return false;
}

void LineWriter::becomeWritable()
{
    if (!m_parts.isEmpty() && push() != Progress::all)
        return;
    m_writable.setEnabled(false);
    if (std::exchange(m_hasRefused, false))
        Q_EMIT free();
}

LineWriter::Progress LineWriter::push()
{
    bool hasMoved = false;
    while (!m_parts.isEmpty()) {
        std::array<iovec, 8> pieces{};
        const auto count = std::min(qsizetype(pieces.size()), m_parts.size());
        for (qsizetype index = 0; index < count; ++index) {
            const qsizetype skip = index == 0 ? m_offset : 0;
            // The kernel only reads what it is given here.
            pieces[size_t(index)] = {const_cast<char *>(m_parts.at(index).constData()) + skip,
                size_t(m_parts.at(index).size() - skip)};
        }
        const ssize_t written = ::writev(m_descriptor, pieces.data(), int(count));
        if (written < 0 && errno == EINTR)
            continue;
        if (written < 0) {
            if (errno != EAGAIN)
                Q_EMIT readerGone();
            return hasMoved ? Progress::some : Progress::none;
        }
        hasMoved = true;
        advance(written);
    }
    return Progress::all;
}

void LineWriter::advance(qsizetype count)
{
    m_offset += count;
    while (!m_parts.isEmpty() && m_offset >= m_parts.first().size()) {
        m_offset -= m_parts.first().size();
        m_parts.removeFirst();
    }
}

} // namespace brindle::adapter
