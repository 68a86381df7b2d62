#pragma once

namespace brindle {

/// Whether the program starts with the user's session. Main thread; each call may touch a small file.
class LoginItem
{
public:
    enum class Status {
        notRegistered = 0,
        enabled = 1,
        requiresApproval = 2,
        notFound = 3,
    };

    virtual ~LoginItem() = default;

    virtual Status status() const = 0;
    /// False when the system refused; nothing has changed then.
    [[nodiscard]] virtual bool registerItem() = 0;
    [[nodiscard]] virtual bool unregisterItem() = 0;
};

} // namespace brindle
