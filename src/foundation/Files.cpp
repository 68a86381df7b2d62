#include "foundation/Files.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace brindle::Files {

namespace {

constexpr QFile::Permissions ownerOnly = QFile::ReadOwner | QFile::WriteOwner;

bool makeFolder(const QString &path)
{
    if (QFileInfo(path).isDir())
        return true;
    const QString parent = QFileInfo(path).path();
    if (parent == path || !makeFolder(parent))
        return false;
    // Another process may have made it meanwhile.
    return QDir().mkdir(path, ownerOnly | QFile::ExeOwner) || QFileInfo(path).isDir();
}

/// Of the system call that has just failed.
Error lastError()
{
    return errno == ENOSPC || errno == EDQUOT || errno == EFBIG ? Error::noSpace : Error::refused;
}

} // namespace

std::optional<QByteArray> read(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return std::nullopt;
    QByteArray contents = file.readAll();
    if (file.error() != QFileDevice::NoError)
        return std::nullopt;
    return contents;
}

std::optional<QByteArray> readAtMost(qsizetype limit, const QString &path)
{
    const int descriptor = ::open(QFile::encodeName(path).constData(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    if (descriptor < 0)
        return std::nullopt;
    struct stat state{};
    QFile file;
    if (::fstat(descriptor, &state) != 0 || !S_ISREG(state.st_mode)
        || !file.open(
            descriptor, QIODevice::ReadOnly | QIODevice::Unbuffered, QFileDevice::AutoCloseHandle)) {
        ::close(descriptor);
        return std::nullopt;
    }
    QByteArray contents = file.read(limit + 1);
    if (file.error() != QFileDevice::NoError || contents.size() > limit)
        return std::nullopt;
    return contents;
}

std::optional<Error> writeAtomically(const QString &path, const QByteArray &contents)
{
    if (!makeFolder(QFileInfo(QDir::cleanPath(path)).absolutePath()))
        return Error::noFolder;
    QSaveFile file(path);
    errno = 0;
    if (!file.open(QIODevice::WriteOnly) || !file.setPermissions(ownerOnly))
        return lastError();
    // What the system has accepted may still fail on its way to the disk; only after that may it take the
    // name.
    if (file.write(contents) != contents.size() || !file.flush() || ::fsync(file.handle()) != 0)
        return lastError();
    if (!file.commit())
        return lastError();
    return std::nullopt;
}

} // namespace brindle::Files
