#include "adapter/linux/Artwork.h"

#include <fcntl.h>
#include <optional>
#include <sys/stat.h>
#include <unistd.h>

namespace brindle::adapter::Artwork {

namespace {

bool hasScheme(const QByteArray &address, QByteArrayView scheme)
{
    return QByteArrayView(address)
               .first(qMin(address.size(), scheme.size()))
               .compare(scheme, Qt::CaseInsensitive)
        == 0;
}

constexpr QByteArrayView fileScheme = "file://";
constexpr QByteArrayView dataScheme = "data:";

/// The path of a file address; empty where that names another machine. Taken as bytes, since a path need not
/// be text, and to the end, since some players leave '#' and '?' as they are.
QByteArray localPath(const QByteArray &address)
{
    if (address.startsWith('/'))
        return address;
    const QByteArray rest = address.mid(fileScheme.size());
    const qsizetype path = rest.indexOf('/');
    const QByteArray host = rest.first(qMax(path, qsizetype(0))).toLower();
    if (path < 0 || (!host.isEmpty() && host != "localhost"))
        return {};
    return QByteArray::fromPercentEncoding(rest.mid(path));
}

class OpenFile
{
public:
    // Opening must neither wait for a writer of a pipe nor act on a device.
    explicit OpenFile(const QByteArray &path)
        : m_descriptor(::open(path.constData(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC))
    { }
    ~OpenFile()
    {
        if (m_descriptor >= 0)
            ::close(m_descriptor);
    }
    OpenFile(const OpenFile &) = delete;
    OpenFile &operator=(const OpenFile &) = delete;

    /// Of a plain file; absent for all else.
    std::optional<qsizetype> size() const
    {
        struct stat status = {};
        if (m_descriptor < 0 || ::fstat(m_descriptor, &status) != 0 || !S_ISREG(status.st_mode))
            return std::nullopt;
        return qsizetype(status.st_size);
    }

    /// Up to `length` bytes; fewer where the file ends.
    QByteArray read(qsizetype length) const
    {
        QByteArray bytes(length, Qt::Uninitialized);
        qsizetype done = 0;
        while (done < length) {
            const ssize_t count = ::read(m_descriptor, bytes.data() + done, size_t(length - done));
            if (count <= 0)
                break;
            done += count;
        }
        bytes.truncate(done);
        return bytes;
    }

private:
    int m_descriptor;
};

QByteArray readFile(const QByteArray &path)
{
    if (path.isEmpty() || path.contains('\0'))
        return {};
    const OpenFile file(path);
    const auto size = file.size();
    return size && *size <= largest ? file.read(*size) : QByteArray();
}

/// The bytes that stand in a data address, in Base64 or percent-encoded.
QByteArray readData(const QByteArray &address)
{
    const qsizetype comma = address.indexOf(',');
    if (comma < 0)
        return {};
    const QByteArray kind = address.first(comma).toLower();
    QByteArray bytes = QByteArray::fromPercentEncoding(address.mid(comma + 1));
    if (!kind.endsWith(";base64"))
        return bytes;
    // Long data are often broken into lines, and often lack the padding.
    bytes.removeIf(
        [](char letter) { return letter == '\n' || letter == '\r' || letter == ' ' || letter == '\t'; });
    return QByteArray::fromBase64Encoding(bytes, QByteArray::AbortOnBase64DecodingErrors).decoded;
}

} // namespace

Kind kindOf(const QByteArray &address)
{
    if (hasScheme(address, dataScheme))
        return Kind::data;
    if (hasScheme(address, "http://") || hasScheme(address, "https://"))
        return Kind::remote;
    if (address.startsWith('/') || hasScheme(address, fileScheme))
        return Kind::file;
    return Kind::none;
}

QByteArray read(const QByteArray &address)
{
    QByteArray bytes;
    if (kindOf(address) == Kind::file)
        bytes = readFile(localPath(address));
    else if (kindOf(address) == Kind::data)
        bytes = readData(address);
    return bytes.size() <= largest ? bytes.toBase64() : QByteArray();
}

} // namespace brindle::adapter::Artwork
