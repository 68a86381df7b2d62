#pragma once

#include "platform/linux/hardware/InputNodes.h"

#include <QString>
#include <QTemporaryDir>

namespace brindle::test {

/// A node of an input device in a folder of the test's own: a pipe, into which the test types what the kernel
/// would write. Gone with the object.
class KeyNode
{
public:
    explicit KeyNode(QString path);
    ~KeyNode();
    KeyNode(const KeyNode &) = delete;
    KeyNode &operator=(const KeyNode &) = delete;

    /// `value`: 0 up, 1 down, 2 held.
    void send(int code, int value) const;
    void press(int code) const;
    void write(const QByteArray &bytes) const;
    /// The device is pulled out: whoever reads the node finds its end.
    void unplug();

private:
    const QString m_path;
    int m_writer = -1;
};

/// A folder of such nodes, all of which belong to keyboards but those that are told otherwise.
struct KeyFolder
{
    QTemporaryDir folder;

    QString path(const QString &name) const { return folder.filePath(name); }
    InputNodes nodes() const
    {
        return InputNodes(folder.path(), [](int) { return true; });
    }
};

} // namespace brindle::test
