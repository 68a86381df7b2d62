#include "platform/linux/x11/X11KeyListener.h"

#include "platform/MediaKeys.h"
#include "platform/linux/x11/XcbConnection.h"

#include <QVarLengthArray>

#include <span>
#include <utility>
#include <xcb/xinput.h>

namespace brindle {

namespace {

/// What stands on the keys, in the X Window System's numbers.
const std::map<xcb_keysym_t, long> mediaKeys{
    {0x1008ff13, MediaKeyCode::soundUp},
    {0x1008ff11, MediaKeyCode::soundDown},
    {0x1008ff02, MediaKeyCode::brightnessUp},
    {0x1008ff03, MediaKeyCode::brightnessDown},
    {0x1008ff12, MediaKeyCode::mute},
};

constexpr uint8_t typeMask = 0x7f;

} // namespace

void X11KeyListener::Later::operator()(QSocketNotifier *notifier) const
{
    notifier->setEnabled(false);
    notifier->disconnect();
    notifier->deleteLater();
}

X11KeyListener::X11KeyListener(std::function<void(long data1)> heard)
    : m_heard(std::move(heard))
    , m_connection(xcb_connect(nullptr, nullptr))
{
    if (xcb_connection_has_error(m_connection.get()) || !selectKeys())
        return;
    findKeys();
    m_notifier.reset(new QSocketNotifier(xcb_get_file_descriptor(m_connection.get()), QSocketNotifier::Read));
    QObject::connect(m_notifier.get(), &QSocketNotifier::activated, m_notifier.get(), [this] { read(); });
}

bool X11KeyListener::selectKeys()
{
    xcb_connection_t *connection = m_connection.get();
    const auto *extension = xcb_get_extension_data(connection, &xcb_input_id);
    if (!extension || !extension->present)
        return false;
    m_inputOpcode = extension->major_opcode;
    const XcbReply<xcb_input_xi_query_version_reply_t> version(
        xcb_input_xi_query_version_reply(connection, xcb_input_xi_query_version(connection, 2, 2), nullptr));
    if (!version || version->major_version < 2)
        return false;
    struct
    {
        xcb_input_event_mask_t header{XCB_INPUT_DEVICE_ALL_MASTER, 1};
        uint32_t mask = XCB_INPUT_XI_EVENT_MASK_RAW_KEY_PRESS | XCB_INPUT_XI_EVENT_MASK_RAW_KEY_RELEASE;
    } selection;
    const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(connection)).data->root;
    xcb_input_xi_select_events(connection, root, 1, &selection.header);
    return true;
}

void X11KeyListener::findKeys()
{
    const xcb_setup_t *setup = xcb_get_setup(m_connection.get());
    const auto count = uint8_t(setup->max_keycode - setup->min_keycode + 1);
    const XcbReply<xcb_get_keyboard_mapping_reply_t> reply(xcb_get_keyboard_mapping_reply(m_connection.get(),
        xcb_get_keyboard_mapping(m_connection.get(), setup->min_keycode, count), nullptr));
    m_keys.clear();
    if (!reply || reply->keysyms_per_keycode == 0)
        return;
    const std::span symbols(xcb_get_keyboard_mapping_keysyms(reply.get()),
        size_t(xcb_get_keyboard_mapping_keysyms_length(reply.get())));
    for (size_t i = 0; i < symbols.size(); ++i) {
        if (const auto key = mediaKeys.find(symbols[i]); key != mediaKeys.end())
            m_keys.emplace(uint32_t(setup->min_keycode + i / reply->keysyms_per_keycode), key->second);
    }
}

// What is heard may be the end of this, so it is passed on last.
void X11KeyListener::read()
{
    QVarLengthArray<long> heard;
    while (auto *event = xcb_poll_for_event(m_connection.get())) {
        const XcbReply<xcb_generic_event_t> owned(event);
        if ((event->response_type & typeMask) == XCB_MAPPING_NOTIFY)
            findKeys();
        else if (const auto data1 = dataOf(*event))
            heard.append(*data1);
    }
    if (xcb_connection_has_error(m_connection.get()))
        m_notifier->setEnabled(false);
    for (const auto tell = m_heard; const long data1 : heard)
        tell(data1);
}

std::optional<long> X11KeyListener::dataOf(const xcb_generic_event_t &event) const
{
    const auto &generic = reinterpret_cast<const xcb_ge_generic_event_t &>(event);
    if ((event.response_type & typeMask) != XCB_GE_GENERIC || generic.extension != m_inputOpcode)
        return std::nullopt;
    const bool isPress = generic.event_type == XCB_INPUT_RAW_KEY_PRESS;
    if (!isPress && generic.event_type != XCB_INPUT_RAW_KEY_RELEASE)
        return std::nullopt;
    const auto key = m_keys.find(reinterpret_cast<const xcb_input_raw_key_press_event_t &>(event).detail);
    if (key == m_keys.end())
        return std::nullopt;
    return mediaKeyData(key->second, isPress ? MediaKeyState::down : MediaKeyState::up);
}

} // namespace brindle
