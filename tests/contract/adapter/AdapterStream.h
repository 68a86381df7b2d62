#pragma once

#include "media/LineReader.h"
#include "media/MediaPayload.h"

#include <QJsonObject>
#include <QProcess>
#include <QSocketNotifier>

#include <array>
#include <functional>
#include <optional>
#include <vector>

namespace brindle::test {

class PrivateBus;

/// The arguments of perl with which the program runs the adapter.
QStringList adapterArguments(const QStringList &command);

/// The adapter's stream, run as the program runs it and read as the program reads it.
class AdapterStream
{
public:
    explicit AdapterStream(
        const PrivateBus &bus, const QStringList &options = {QStringLiteral("--debounce=80")});
    AdapterStream(const AdapterStream &) = delete;
    AdapterStream &operator=(const AdapterStream &) = delete;
    ~AdapterStream();

    /// Every line until now, in order.
    std::vector<QJsonObject> lines;
    /// What the lines come to.
    const MediaPayload &state() const { return m_merged.payload(); }
    QString text(const QString &key) const { return state().fields.value(key).toString(); }
    double number(const QString &key) const { return state().fields.value(key).toDouble(-1); }
    QString title() const { return text(QStringLiteral("title")); }
    bool isPlaying() const { return state().fields.value(QStringLiteral("playing")).toBool(); }
    /// Seconds since 1970 of the timestamp.
    double timestamp() const;

    /// Waits until the lines come to that.
    bool waitFor(const std::function<bool()> &holds) const;
    bool waitForTitle(const QString &title) const;
    bool waitForFirstLine() const;

    void stopReading();
    void readOn();
    /// Goes away as a reader does that crashes.
    void closeReader();

    QProcess &process() { return m_process; }
    /// Waits for its end; absent when it does not come, or is none of its own.
    std::optional<int> exitCode();

private:
    void read();

    std::array<int, 2> m_pipe{-1, -1};
    std::optional<QSocketNotifier> m_readable;
    LineReader m_reader;
    MergedPayload m_merged;
    QProcess m_process;
};

/// Runs a command of the adapter to its end: what it ended with, absent when it did not.
std::optional<int> runAdapter(const PrivateBus &bus, const QStringList &command);

} // namespace brindle::test
