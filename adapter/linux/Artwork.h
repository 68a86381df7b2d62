#pragma once

#include <QByteArray>

/// The pictures that players name by an address. Any thread.
namespace brindle::adapter::Artwork {

/// Bytes of a picture, from whatever source; larger ones count as none.
constexpr qsizetype largest = qsizetype(16) * 1024 * 1024;

enum class Kind {
    none,
    /// A file of this machine.
    file,
    /// In the address itself.
    data,
    /// To be fetched over the network.
    remote,
};

Kind kindOf(const QByteArray &address);

/// The picture in Base64; empty where there is none, or none that can be had. Only for files and data. Waits
/// for the disk, for ever if that hangs.
QByteArray read(const QByteArray &address);

} // namespace brindle::adapter::Artwork
