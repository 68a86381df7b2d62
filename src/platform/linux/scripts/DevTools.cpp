#include "platform/linux/scripts/DevTools.h"

#include "foundation/Files.h"
#include "foundation/Json.h"
#include "platform/linux/scripts/LocalHttp.h"
#include "platform/linux/scripts/MediaStates.h"
#include "platform/linux/scripts/WebSocketMessages.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>

namespace brindle {

namespace {

/// Addresses of pages and of their icons can be long, and tabs many.
constexpr qsizetype longestList = 8LL * 1024 * 1024;
constexpr qsizetype longestAnswer = 256LL * 1024;

/// The path of a tab's socket, if that is at the very port that was asked.
std::optional<QByteArray> socketPath(const QString &url, quint16 port)
{
    const QRegularExpression expression(QRegularExpression::anchoredPattern(
        QStringLiteral(R"(ws://(?:127\.0\.0\.1|localhost):%1(/devtools/page/[A-Za-z0-9_-]+))").arg(port)));
    const auto match = expression.match(url);
    return match.hasMatch() ? std::optional(match.captured(1).toLatin1()) : std::nullopt;
}

/// The text that an evaluation gave; absent when the page threw, or gave something else.
std::optional<QString> textOf(const QJsonObject &answer)
{
    const QJsonObject evaluation = answer.value(QStringLiteral("result")).toObject();
    const QJsonValue value =
        evaluation.value(QStringLiteral("result")).toObject().value(QStringLiteral("value"));
    if (evaluation.contains(QStringLiteral("exceptionDetails")) || !value.isString())
        return std::nullopt;
    return value.toString();
}

} // namespace

std::optional<quint16> DevTools::portOfProfile(const QString &folder)
{
    constexpr qsizetype limit = 1024;
    const auto text = Files::readAtMost(limit, folder + QStringLiteral("/DevToolsActivePort"));
    const QString line = QString::fromLatin1(text.value_or(QByteArray())).section(u'\n', 0, 0);
    const QRegularExpression number(QRegularExpression::anchoredPattern(QStringLiteral("[1-9][0-9]{0,4}")));
    bool isPort = false;
    const quint16 port = line.toUShort(&isPort);
    return isPort && number.match(line).hasMatch() ? std::optional(port) : std::nullopt;
}

bool DevTools::askTabs(const QString &javaScript, MediaStates &states, const Deadline &deadline) const
{
    const auto paths = tabs(deadline);
    for (const QByteArray &path : paths.value_or(QList<QByteArray>())) {
        if (states.isDecided() || deadline.hasPassed())
            break;
        if (const auto state = evaluate(path, javaScript, deadline.within(m_patience)))
            states.take(*state);
    }
    return paths.has_value();
}

std::optional<QList<QByteArray>> DevTools::tabs(const Deadline &deadline) const
{
    const auto text = http::get(m_port, "/json/list", longestList, deadline);
    const auto targets = text ? Json::decodeArray(*text) : std::nullopt;
    if (!targets)
        return std::nullopt;
    QList<QByteArray> paths;
    for (const auto &value : *targets) {
        const QJsonObject target = value.toObject();
        const QString url = target.value(QStringLiteral("webSocketDebuggerUrl")).toString();
        const auto path = target.value(QStringLiteral("type")) == QStringLiteral("page")
            ? socketPath(url, m_port)
            : std::nullopt;
        if (path)
            paths.append(*path);
    }
    return paths;
}

std::optional<QString> DevTools::evaluate(
    const QByteArray &tab, const QString &javaScript, const Deadline &deadline) const
{
    constexpr int number = 1;
    const QJsonObject request{{QStringLiteral("id"), number},
        {QStringLiteral("method"), QStringLiteral("Runtime.evaluate")},
        {QStringLiteral("params"),
            QJsonObject{
                {QStringLiteral("expression"), javaScript}, {QStringLiteral("returnByValue"), true}}}};
    auto socket = WebSocketMessages::open(m_port, tab, deadline);
    if (!socket || !socket->send(QJsonDocument(request).toJson(QJsonDocument::Compact)))
        return std::nullopt;
    while (const auto message = socket->receive(longestAnswer)) {
        const auto answer = Json::decodeObject(*message);
        if (!answer)
            return std::nullopt;
        if (answer->value(QStringLiteral("id")) == number) // anything else is an event
            return textOf(*answer);
    }
    return std::nullopt;
}

} // namespace brindle
