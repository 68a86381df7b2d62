#include "platform/linux/hardware/Backlight.h"

#include <QDir>
#include <QFile>

#include <algorithm>
#include <array>

namespace brindle {

namespace {

/// The first line of an attribute; empty when there is none. No attribute is longer.
QByteArray attribute(const QString &path)
{
    constexpr qint64 longest = 64;
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.read(longest).trimmed() : QByteArray();
}

std::optional<double> number(const QString &path)
{
    bool isNumber = false;
    const qlonglong value = attribute(path).toLongLong(&isNumber);
    return isNumber && value >= 0 ? std::optional(double(value)) : std::nullopt;
}

std::ptrdiff_t rank(const QString &folder)
{
    static const std::array<QByteArray, 3> types{"firmware", "platform", "raw"};
    return std::ranges::find(types, attribute(folder + QStringLiteral("/type"))) - types.begin();
}

} // namespace

QString Backlight::levelFile() const
{
    return folder + QStringLiteral("/brightness");
}

std::optional<double> Backlight::level() const
{
    const auto raw = number(levelFile());
    return raw ? std::optional(std::min(*raw / maximum, 1.0)) : std::nullopt;
}

std::optional<Backlight> usableBacklight(const QString &classFolder)
{
    QStringList folders;
    for (const QString &name : QDir(classFolder).entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name))
        folders.append(classFolder + u'/' + name);
    std::ranges::stable_sort(folders, {}, rank);
    for (const QString &folder : folders) {
        Backlight device{folder, number(folder + QStringLiteral("/max_brightness")).value_or(0)};
        if (device.maximum > 0 && device.level())
            return device;
    }
    return std::nullopt;
}

} // namespace brindle
