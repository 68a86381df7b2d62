#pragma once

#include "foundation/SystemScheduler.h"
#include "platform/fake/FakeLevels.h"
#include "platform/linux/hardware/SysfsBrightness.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

namespace brindle::test {

/// A display, seen through the port, and the hand on its dial.
class BrightnessWorld
{
public:
    virtual ~BrightnessWorld() = default;

    virtual DisplayBrightness &port() = 0;
    /// The display appears, or its brightness changes; per cent.
    virtual void setBrightness(int percent) = 0;
    virtual void takeDisplayAway() = 0;
};

class FakeBrightnessWorld : public BrightnessWorld
{
public:
    DisplayBrightness &port() override { return m_port; }
    void setBrightness(int percent) override { m_port.set(percent / 100.0); }
    void takeDisplayAway() override { m_port.set({}); }

private:
    FakeDisplayBrightness m_port;
};

/// A folder with the files that the kernel shows.
class BacklightFolder : public BrightnessWorld
{
public:
    DisplayBrightness &port() override { return m_port; }
    const SysfsBrightness &output() const { return m_port; }
    void setBrightness(int percent) override
    {
        if (!QFile::exists(fileOf(QStringLiteral("display"))))
            addDevice(QStringLiteral("display"), "raw", "400", QByteArray::number(4 * percent));
        write(QStringLiteral("display"), "brightness", QByteArray::number(4 * percent));
    }
    void takeDisplayAway() override { removeDevice(QStringLiteral("display")); }

    void addDevice(
        const QString &name, const QByteArray &type, const QByteArray &maximum, const QByteArray &brightness)
    {
        // Elsewhere first, so that it appears whole, as in the kernel.
        const QString made = m_made.filePath(name);
        QDir().mkpath(made);
        writeTo(made + QStringLiteral("/type"), type);
        writeTo(made + QStringLiteral("/max_brightness"), maximum);
        writeTo(made + QStringLiteral("/brightness"), brightness);
        QDir().rename(made, fileOf(name));
    }
    void removeDevice(const QString &name) { QDir(fileOf(name)).removeRecursively(); }
    void write(const QString &device, const char *attribute, const QByteArray &value)
    {
        writeTo(fileOf(device) + u'/' + QString::fromLatin1(attribute), value);
    }
    QString fileOf(const QString &name) const { return m_folder.filePath(name); }

private:
    // In place and at once, as the kernel has it.
    static void writeTo(const QString &path, const QByteArray &value)
    {
        QFile file(path);
        constexpr int longest = 8;
        if (file.open(QIODevice::ReadWrite | QIODevice::Unbuffered))
            file.write(value.leftJustified(longest));
    }

    QTemporaryDir m_made;
    QTemporaryDir m_folder;
    SystemScheduler m_time;
    SysfsBrightness m_port{m_time, m_folder.path()};
};

} // namespace brindle::test
