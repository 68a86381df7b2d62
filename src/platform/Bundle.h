#pragma once

#include <QString>
#include <QVariant>

#include <optional>

namespace brindle {

/// What is shipped with the program: its resources and its information dictionary. Answers from memory or
/// from a read-only file; main thread.
class Bundle
{
public:
    virtual ~Bundle() = default;

    /// The path of a shipped resource ("symbols/bolt.fill.svg"), absent when there is none of that name.
    /// Names that lead out of the resources count as absent.
    virtual std::optional<QString> resourcePath(const QString &name) const = 0;
    /// The folder of the program's private frameworks, absent when it has none.
    virtual std::optional<QString> privateFrameworksPath() const = 0;
    /// A value of the information dictionary, invalid when the key is missing.
    virtual QVariant infoValue(const QString &key) const = 0;
};

} // namespace brindle
