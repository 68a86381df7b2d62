#pragma once

#include <QString>

#include <functional>
#include <memory>
#include <optional>

namespace brindle {

struct BluetoothDevice
{
    std::optional<QString> name;
    std::optional<QString> addressString;

    bool operator==(const BluetoothDevice &) const = default;
};

/// A registration for a device's coming or going. It lasts until `unregister()`; dropping the handle alone
/// ends nothing.
class BluetoothNotification
{
public:
    virtual ~BluetoothNotification() = default;
    virtual void unregister() = 0;
};

/// The Bluetooth devices around the machine. Main thread; nothing blocks.
class BluetoothDevices
{
public:
    using Handler = std::function<void(const BluetoothDevice &)>;

    virtual ~BluetoothDevices() = default;

    /// Calls `connected` for each device that connects from now on. Never null; without a Bluetooth service
    /// it waits for one.
    virtual std::shared_ptr<BluetoothNotification> registerForConnectNotifications(Handler connected) = 0;
    /// Calls `disconnected` when this device disconnects. Null when the device cannot be watched.
    virtual std::shared_ptr<BluetoothNotification> registerForDisconnectNotification(
        const BluetoothDevice &device, Handler disconnected) = 0;
};

} // namespace brindle
