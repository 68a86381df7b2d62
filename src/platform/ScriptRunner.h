#pragma once

#include <QList>
#include <QString>

#include <optional>

namespace brindle {

/// What a script gave: a text, a number, or a list of such.
struct ScriptDescriptor
{
    /// Absent where the value has no text, as a list has none.
    std::optional<QString> stringValue;
    /// 0 where the value is no number.
    double doubleValue = 0;
    /// Empty for a value that is no list.
    QList<ScriptDescriptor> items;

    static ScriptDescriptor text(const QString &value) { return {value, value.toDouble(), {}}; }
    static ScriptDescriptor number(double value) { return {QString::number(value, 'g', 17), value, {}}; }
    static ScriptDescriptor list(const QList<ScriptDescriptor> &values) { return {std::nullopt, 0, values}; }
    /// The "missing value" of a script that has nothing to say.
    static ScriptDescriptor missing() { return {}; }

    bool operator==(const ScriptDescriptor &) const = default;
};

/// How a script ended.
struct ScriptOutcome
{
    enum class Status {
        executed,
        /// The text is no script, and nothing ran.
        notCompiled,
        /// It ran into an error: the application is gone, refuses, or took too long.
        failed,
    };

    Status status = Status::failed;
    /// Absent unless executed, and where the script gave nothing.
    std::optional<ScriptDescriptor> result;
};

/// Runs scripts that address applications.
///
/// `run` blocks until the script has ended, 2 seconds at most where the platform can see to it. Any thread
/// but the main one; one script at a time.
class ScriptRunner
{
public:
    virtual ~ScriptRunner() = default;

    virtual ScriptOutcome run(const QString &source) = 0;
};

} // namespace brindle
