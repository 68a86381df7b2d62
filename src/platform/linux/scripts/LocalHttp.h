#pragma once

#include "platform/linux/scripts/LocalConnection.h"

#include <QHash>

/// As much of HTTP as it takes to talk to a browser's debugging port. Nothing is followed, decoded or
/// guessed: an answer that is not the plain one counts as none.
namespace brindle::http {

struct Head
{
    int status = 0;
    /// Names in lower case.
    QHash<QByteArray, QByteArray> fields;
};

/// The head of an answer, from its first line to the empty one.
std::optional<Head> parseHead(const QByteArray &text);

/// Asks for `path`, with `fields` as the further lines of the request, and reads the head of the answer.
std::optional<Head> request(
    LocalConnection &connection, quint16 port, const QByteArray &path, const QByteArray &fields = {});

/// What lies at `path`; absent when it is longer than `limit` bytes.
std::optional<QByteArray> get(
    quint16 port, const QByteArray &path, qsizetype limit, const Deadline &deadline);

} // namespace brindle::http
