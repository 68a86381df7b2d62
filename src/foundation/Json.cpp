#include "foundation/Json.h"

#include <QDateTime>
#include <QJsonArray>
#include <QJsonDocument>
#include <QRegularExpression>

#include <algorithm>
#include <cmath>

namespace brindle::Json {

QByteArray encode(const QJsonObject &object)
{
    return QJsonDocument(object).toJson(QJsonDocument::Indented);
}

QByteArray encode(const QJsonArray &array)
{
    return QJsonDocument(array).toJson(QJsonDocument::Indented);
}

std::optional<QJsonObject> decodeObject(const QByteArray &text)
{
    const QJsonDocument document = QJsonDocument::fromJson(text);
    return document.isObject() ? std::optional(document.object()) : std::nullopt;
}

std::optional<QJsonArray> decodeArray(const QByteArray &text)
{
    const QJsonDocument document = QJsonDocument::fromJson(text);
    return document.isArray() ? std::optional(document.array()) : std::nullopt;
}

QString dateText(Date date)
{
    // The first second of the year 1 and the last of the year 9999.
    constexpr double first = -62135596800.0;
    constexpr double last = 253402300799.0;
    const double seconds = std::floor(std::clamp(date.secondsSince1970(), first, last));
    return QDateTime::fromSecsSinceEpoch(qint64(seconds), Qt::UTC).toString(Qt::ISODate);
}

std::optional<Date> date(const QString &text)
{
    static const QRegularExpression form(
        QStringLiteral("^[0-9]{4}-[0-9]{2}-[0-9]{2}T[0-9]{2}:[0-9]{2}:[0-9]{2}(Z|[+-][0-9]{2}:[0-9]{2})$"),
        QRegularExpression::DontCaptureOption);
    if (!form.match(text).hasMatch())
        return std::nullopt;
    const QDateTime read = QDateTime::fromString(text, Qt::ISODate);
    if (!read.isValid())
        return std::nullopt;
    return Date::fromSecondsSince1970(double(read.toSecsSinceEpoch()));
}

QString identifierText(const QUuid &identifier)
{
    return identifier.toString(QUuid::WithoutBraces).toUpper();
}

std::optional<QUuid> identifier(const QString &text)
{
    // The parser would take braces, and read trash as the null identifier.
    const QUuid read = QUuid::fromString(text);
    if (read.toString(QUuid::WithoutBraces).compare(text, Qt::CaseInsensitive) != 0)
        return std::nullopt;
    return read;
}

} // namespace brindle::Json
