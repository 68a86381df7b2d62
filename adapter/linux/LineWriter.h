#pragma once

#include "adapter/linux/LineOutput.h"

#include <QObject>
#include <QSocketNotifier>

namespace brindle::adapter {

/// Writes lines to a descriptor as fast as its reader takes them, without ever waiting for it.
///
/// A pipe or socket is made non-blocking. A line that has begun to go out goes out whole; one at a time.
class LineWriter : public QObject, public LineOutput
{
    Q_OBJECT

public:
    /// The descriptor stays the caller's.
    explicit LineWriter(int descriptor);

    bool write(const QByteArrayList &line) override;

Q_SIGNALS:
    /// After a line was refused: one would be taken now.
    void free();
    /// Nobody reads any more, and nobody will. Comes also while nothing is written.
    void readerGone();

private:
    enum class Progress { all, some, none };

    void becomeWritable();
    Progress push();
    void advance(qsizetype count);

    const int m_descriptor;
    /// What is left of the line that is going out.
    QByteArrayList m_parts;
    /// Bytes of the first part that are out already.
    qsizetype m_offset = 0;
    bool m_hasRefused = false;
    QSocketNotifier m_writable;
    QSocketNotifier m_broken;
};

} // namespace brindle::adapter
