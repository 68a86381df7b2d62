#include "platform/linux/hardware/InputNodes.h"

#include "platform/MediaKeys.h"

#include <QDir>
#include <QFile>

#include <algorithm>
#include <array>
#include <fcntl.h>
#include <linux/input.h>
#include <sys/ioctl.h>
#include <unistd.h>
#include <utility>

namespace brindle {

namespace {

constexpr std::array<std::pair<int, long>, 5> mediaKeys{{
    {KEY_VOLUMEUP, MediaKeyCode::soundUp},
    {KEY_VOLUMEDOWN, MediaKeyCode::soundDown},
    {KEY_BRIGHTNESSUP, MediaKeyCode::brightnessUp},
    {KEY_BRIGHTNESSDOWN, MediaKeyCode::brightnessDown},
    {KEY_MUTE, MediaKeyCode::mute},
}};

/// One bit for each code, in the kernel's order.
template <size_t count> class Bits
{
public:
    void set(size_t bit) { m_bytes[bit / 8] |= uint8_t(1U << (bit % 8)); }
    bool test(size_t bit) const { return m_bytes[bit / 8] & (1U << (bit % 8)); }
    uint8_t *data() { return m_bytes.data(); }
    static constexpr size_t size = (count + 7) / 8;

private:
    std::array<uint8_t, size> m_bytes{};
};

template <size_t count> void deliverOnly(int descriptor, uint32_t type, Bits<count> &codes)
{
    input_mask mask{};
    mask.type = type;
    mask.codes_size = codes.size;
    mask.codes_ptr = reinterpret_cast<uintptr_t>(codes.data());
    ioctl(descriptor, EVIOCSMASK, &mask);
}

/// What a person types never reaches the program, and does not wake it. A kernel that cannot do that
/// delivers everything.
void deliverOnlyMediaKeys(int descriptor)
{
    Bits<KEY_CNT> keys;
    for (const auto &[key, code] : mediaKeys)
        keys.set(size_t(key));
    deliverOnly(descriptor, EV_KEY, keys);
    Bits<EV_CNT> types;
    types.set(EV_KEY);
    deliverOnly(descriptor, EV_SYN, types); // by this type the kernel means all of them
}

} // namespace

InputNodes::InputNodes(QString folder, Question hasMediaKeys)
    : m_folder(std::move(folder))
    , m_hasMediaKeys(std::move(hasMediaKeys))
{ }

bool InputNodes::hasMediaKeys(int descriptor)
{
    Bits<KEY_CNT> keys;
    if (ioctl(descriptor, EVIOCGBIT(EV_KEY, keys.size), keys.data()) < 0)
        return false;
    return std::ranges::any_of(mediaKeys, [&keys](const auto &key) { return keys.test(size_t(key.first)); });
}

QStringList InputNodes::paths() const
{
    QStringList paths;
    const QDir folder(m_folder);
    for (const QString &name : folder.entryList({QStringLiteral("event*")}, QDir::System | QDir::Files))
        paths.append(folder.filePath(name));
    return paths;
}

int InputNodes::open(const QString &path) const
{
    const int descriptor = ::open(QFile::encodeName(path).constData(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    if (descriptor < 0)
        return -1;
    if (!m_hasMediaKeys(descriptor)) {
        ::close(descriptor);
        return -1;
    }
    deliverOnlyMediaKeys(descriptor);
    return descriptor;
}

bool InputNodes::canOpenAny() const
{
    return std::ranges::any_of(paths(), [this](const QString &path) {
        const int descriptor = open(path);
        if (descriptor >= 0)
            ::close(descriptor);
        return descriptor >= 0;
    });
}

std::optional<long> mediaKeyDataOf(const input_event &event)
{
    const auto *key = std::ranges::find(mediaKeys, int(event.code), &std::pair<int, long>::first);
    if (event.type != EV_KEY || key == mediaKeys.end())
        return std::nullopt;
    // 0 is up, 1 is down, 2 is held.
    return mediaKeyData(key->second, event.value ? MediaKeyState::down : MediaKeyState::up);
}

} // namespace brindle
