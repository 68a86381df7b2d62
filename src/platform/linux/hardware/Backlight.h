#pragma once

#include <QString>

#include <optional>

namespace brindle {

/// One device of the kernel's backlight class.
struct Backlight
{
    QString folder;
    /// The raw value of full brightness; above 0.
    double maximum = 1;

    /// The file that changes when the brightness does.
    QString levelFile() const;
    /// 0 to 1; absent when the device does not say. Reads a file of a few bytes.
    std::optional<double> level() const;

    bool operator==(const Backlight &) const = default;
};

/// The device of the class to go by: the first that says how bright it is. What the firmware drives goes
/// before what the platform drives, and that before the bare registers, as the kernel advises; then by name.
std::optional<Backlight> usableBacklight(const QString &classFolder);

} // namespace brindle
