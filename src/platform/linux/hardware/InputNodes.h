#pragma once

#include <QString>
#include <QStringList>

#include <functional>
#include <optional>

struct input_event;

namespace brindle {

/// The kernel's input devices, as nodes of a folder.
class InputNodes
{
public:
    /// Whether the opened node belongs to a device with a key for volume or brightness.
    using Question = std::function<bool(int descriptor)>;

    static bool hasMediaKeys(int descriptor);

    /// The folder is the system's, and the question the kernel's, but in tests.
    explicit InputNodes(
        QString folder = QStringLiteral("/dev/input"), Question hasMediaKeys = &InputNodes::hasMediaKeys);

    const QString &folder() const { return m_folder; }
    QStringList paths() const;
    /// Opens a node for reading, without waiting and without taking its events from others; what is no media
    /// key is not even delivered, where the kernel can do that. The descriptor is the caller's; negative when
    /// this user may not read the node, or when it has no media keys.
    int open(const QString &path) const;
    /// Whether any node can be opened so.
    bool canOpenAny() const;

private:
    QString m_folder;
    Question m_hasMediaKeys;
};

/// The event as the `data1` of a media key; absent for any other event.
std::optional<long> mediaKeyDataOf(const input_event &event);

} // namespace brindle
