#include "platform/linux/scripts/ScriptShapes.h"

#include <QRegularExpression>
#include <QStringList>

#include <cmath>

namespace brindle {

namespace {

/// What stands between a beginning and an end.
std::optional<QString> between(const QString &beginning, const QString &text, const QString &end)
{
    const qsizetype size = text.size() - beginning.size() - end.size();
    if (size < 0 || !text.startsWith(beginning) || !text.endsWith(end))
        return std::nullopt;
    return text.sliced(beginning.size(), size);
}

bool matches(const QString &pattern, const QString &text)
{
    return QRegularExpression(QRegularExpression::anchoredPattern(pattern)).match(text).hasMatch();
}

/// The application that a line addresses, when it ends so.
std::optional<QString> addressed(const QString &line, const QString &end = QString())
{
    auto application = between(QStringLiteral("tell application id \""), line, u'"' + end);
    const auto identifier = QStringLiteral("[A-Za-z0-9]+(?:[.-][A-Za-z0-9]+)*");
    return application && matches(identifier, *application) ? application : std::nullopt;
}

/// The text that a literal stands for, without its quotes. Absent when it could not stand there.
std::optional<QString> unescaped(const QString &literal)
{
    QString text;
    for (qsizetype i = 0; i < literal.size(); ++i) {
        if (literal[i] == u'"')
            return std::nullopt;
        if (literal[i] == u'\\') {
            ++i;
            if (i == literal.size() || (literal[i] != u'\\' && literal[i] != u'"'))
                return std::nullopt;
        }
        text += literal[i];
    }
    return text;
}

std::optional<Script> recogniseNowPlaying(const QStringList &lines)
{
    const QString question = QStringLiteral(
        "    return {name of currentItem, artist of currentItem, album of currentItem, "
        "(duration of currentItem) as real, (player position) as real, (player state) as text");
    const QStringList plain{QStringLiteral("    if player state is stopped then return missing value"),
        QStringLiteral("    set currentItem to current track"), question + u'}', QStringLiteral("end tell")};
    QStringList withArtwork = plain;
    withArtwork[2] = question + QStringLiteral(", artwork url of currentItem}");

    const auto application = addressed(lines.constFirst());
    const QStringList rest = lines.mid(1);
    if (!application || (rest != plain && rest != withArtwork))
        return std::nullopt;
    return script::NowPlaying{*application, rest == withArtwork};
}

/// The JavaScript that a line runs in one tab, in the dialect of either family of browsers.
std::optional<QString> javaScriptOf(const QString &line)
{
    const QString variable = QStringLiteral("                set mediaState to ");
    auto literal =
        between(variable + QStringLiteral("execute browserTab javascript \""), line, QStringLiteral("\""));
    if (!literal)
        literal =
            between(variable + QStringLiteral("do JavaScript \""), line, QStringLiteral("\" in browserTab"));
    return literal ? unescaped(*literal) : std::nullopt;
}

std::optional<Script> recogniseMediaInTabs(const QStringList &lines)
{
    constexpr qsizetype commandLine = 5;
    const QStringList before{QStringLiteral("    set pausedCandidate to \"\""),
        QStringLiteral("    repeat with browserWindow in windows"),
        QStringLiteral("        repeat with browserTab in tabs of browserWindow"),
        QStringLiteral("            try")};
    const QStringList after{
        QStringLiteral("                if mediaState starts with \"1\" then return mediaState"),
        QStringLiteral("                if mediaState is not \"\" and pausedCandidate is \"\" then "
                       "set pausedCandidate to mediaState"),
        QStringLiteral("            end try"), QStringLiteral("        end repeat"),
        QStringLiteral("    end repeat"), QStringLiteral("    return pausedCandidate"),
        QStringLiteral("end tell")};
    const auto application = addressed(lines.constFirst());
    const auto javaScript = javaScriptOf(lines.value(commandLine));
    if (!application || !javaScript || lines.mid(1, before.size()) != before
        || lines.mid(commandLine + 1) != after)
        return std::nullopt;
    return script::MediaInTabs{*application, *javaScript};
}

std::optional<Script> recogniseCommand(const QString &line)
{
    if (const auto application = addressed(line, QStringLiteral(" to playpause")))
        return script::PlayPause{*application};
    const QString number = line.section(u' ', -1);
    const auto application = addressed(line, QStringLiteral(" to set player position to ") + number);
    const double seconds = number.toDouble();
    const auto decimal = QStringLiteral("\\d+(?:\\.\\d+)?(?:e[+-]?\\d+)?");
    if (!application || !matches(decimal, number) || !std::isfinite(seconds))
        return std::nullopt;
    return script::SetPosition{*application, seconds};
}

} // namespace

std::optional<Script> recogniseScript(const QString &source)
{
    const QStringList lines = source.split(u'\n');
    if (lines.size() == 1)
        return recogniseCommand(source);
    const auto question = recogniseNowPlaying(lines);
    return question ? question : recogniseMediaInTabs(lines);
}

} // namespace brindle
