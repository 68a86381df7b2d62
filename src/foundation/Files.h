#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

/// The program's own files: read whole and written whole. What others wrote is read with a limit. Any thread;
/// the calls wait for the disk.
namespace brindle::Files {

enum class Error {
    /// A folder on the way is missing and could not be made.
    noFolder,
    /// The disk, a quota or a limit is full.
    noSpace,
    /// The file could not be written for any other reason.
    refused,
};

/// What the file holds; absent when there is none or it cannot be read.
std::optional<QByteArray> read(const QString &path);
/// The same of a file that is not the program's own: absent also when it holds more than `limit` bytes or is
/// no plain file, so that neither a device nor a pipe holds the caller up.
std::optional<QByteArray> readAtMost(qsizetype limit, const QString &path);

/// Replaces the file by one of these contents, or leaves it as it is and tells why. At no moment, and after
/// no crash, is there a half-written file under the name. File and folders made on the way are for the user
/// alone.
[[nodiscard]] std::optional<Error> writeAtomically(const QString &path, const QByteArray &contents);

} // namespace brindle::Files
