#pragma once

#include "foundation/Date.h"

#include <QByteArray>
#include <QJsonObject>
#include <QString>
#include <QUuid>

#include <optional>

/// How all of the program's JSON files read and write. Any thread.
namespace brindle::Json {

/// Pretty-printed, keys sorted, with a line's end at the end.
QByteArray encode(const QJsonObject &object);
QByteArray encode(const QJsonArray &array);
/// Absent when the text is no JSON or is something else at its top.
std::optional<QJsonObject> decodeObject(const QByteArray &text);
std::optional<QJsonArray> decodeArray(const QByteArray &text);

/// "2026-11-21T08:15:30Z": UTC, in whole seconds, the fraction cut off. Dates outside the years 1 to 9999
/// become the nearest one within.
QString dateText(Date date);
/// Reads the above, also with an offset for the Z. A fraction of a second is refused.
std::optional<Date> date(const QString &text);

/// Upper case, without braces.
QString identifierText(const QUuid &identifier);
/// Reads the above in any case of letters.
std::optional<QUuid> identifier(const QString &text);

} // namespace brindle::Json
