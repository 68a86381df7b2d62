#include "support/x11/OtherProgram.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <cstring>
#include <span>
#include <xcb/xtest.h>

namespace brindle::test {

namespace {

xcb_window_t rootOf(xcb_connection_t *connection)
{
    return xcb_setup_roots_iterator(xcb_get_setup(connection)).data->root;
}

} // namespace

void settle(xcb_connection_t *connection)
{
    std::free(xcb_get_input_focus_reply(connection, xcb_get_input_focus(connection), nullptr));
}

xcb_atom_t atom(xcb_connection_t *connection, const char *name)
{
    auto *reply = xcb_intern_atom_reply(
        connection, xcb_intern_atom(connection, 0, uint16_t(std::strlen(name)), name), nullptr);
    const xcb_atom_t result = reply ? reply->atom : xcb_atom_t(XCB_ATOM_NONE);
    std::free(reply);
    return result;
}

OtherProgram::OtherProgram(const QRect &geometry, Kind kind)
    : m_connection(xcb_connect(nullptr, nullptr))
    , m_root(rootOf(m_connection))
    , m_window(xcb_generate_id(m_connection))
    , m_size(geometry.size())
{
    const std::array<uint32_t, 3> values{0x00d8c27a, kind == Kind::unmanaged ? 1U : 0U,
        XCB_EVENT_MASK_BUTTON_PRESS | XCB_EVENT_MASK_KEY_PRESS | XCB_EVENT_MASK_STRUCTURE_NOTIFY};
    xcb_create_window(m_connection, XCB_COPY_FROM_PARENT, m_window, m_root, int16_t(geometry.x()),
        int16_t(geometry.y()), uint16_t(geometry.width()), uint16_t(geometry.height()), 0,
        XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT,
        XCB_CW_BACK_PIXEL | XCB_CW_OVERRIDE_REDIRECT | XCB_CW_EVENT_MASK, values.data());
    if (kind == Kind::fullScreen)
        askForFullScreen();
    xcb_map_window(m_connection, m_window);
    xcb_flush(m_connection);
    m_notifier =
        std::make_unique<QSocketNotifier>(xcb_get_file_descriptor(m_connection), QSocketNotifier::Read);
    QObject::connect(
        m_notifier.get(), &QSocketNotifier::activated, m_notifier.get(), [this] { readEvents(); });
}

OtherProgram::~OtherProgram()
{
    xcb_disconnect(m_connection);
}

void OtherProgram::askForFullScreen()
{
    const xcb_atom_t state = atom(m_connection, "_NET_WM_STATE");
    const xcb_atom_t fullScreen = atom(m_connection, "_NET_WM_STATE_FULLSCREEN");
    xcb_change_property(
        m_connection, XCB_PROP_MODE_REPLACE, m_window, state, XCB_ATOM_ATOM, 32, 1, &fullScreen);
}

void OtherProgram::takeFocus()
{
    xcb_set_input_focus(m_connection, XCB_INPUT_FOCUS_POINTER_ROOT, m_window, XCB_CURRENT_TIME);
    settle(m_connection);
}

void OtherProgram::dropFocus()
{
    xcb_set_input_focus(
        m_connection, XCB_INPUT_FOCUS_NONE, xcb_window_t(XCB_INPUT_FOCUS_NONE), XCB_CURRENT_TIME);
    settle(m_connection);
}

void OtherProgram::move(QPoint corner)
{
    const std::array<int32_t, 2> position{corner.x(), corner.y()};
    xcb_configure_window(m_connection, m_window, XCB_CONFIG_WINDOW_X | XCB_CONFIG_WINDOW_Y, position.data());
    settle(m_connection);
}

void OtherProgram::grabPointer()
{
    std::free(xcb_grab_pointer_reply(m_connection,
        xcb_grab_pointer(m_connection, 0, m_window, XCB_EVENT_MASK_BUTTON_PRESS, XCB_GRAB_MODE_ASYNC,
            XCB_GRAB_MODE_ASYNC, XCB_WINDOW_NONE, XCB_CURSOR_NONE, XCB_CURRENT_TIME),
        nullptr));
}

void OtherProgram::raise()
{
    const uint32_t above = XCB_STACK_MODE_ABOVE;
    xcb_configure_window(m_connection, m_window, XCB_CONFIG_WINDOW_STACK_MODE, &above);
    settle(m_connection);
}

void OtherProgram::destroyWindow()
{
    xcb_destroy_window(m_connection, m_window);
    settle(m_connection);
}

void OtherProgram::ownSelection(const char *name)
{
    xcb_set_selection_owner(m_connection, m_window, atom(m_connection, name), XCB_CURRENT_TIME);
    settle(m_connection);
}

bool OtherProgram::hasFocus() const
{
    auto *reply = xcb_get_input_focus_reply(m_connection, xcb_get_input_focus(m_connection), nullptr);
    const bool has = reply && reply->focus == m_window;
    std::free(reply);
    return has;
}

bool OtherProgram::isAbove(xcb_window_t other) const
{
    auto *tree = xcb_query_tree_reply(m_connection, xcb_query_tree(m_connection, m_root), nullptr);
    if (!tree)
        return false;
    const std::span stack(xcb_query_tree_children(tree), size_t(xcb_query_tree_children_length(tree)));
    const bool above = std::ranges::find(stack, m_window) > std::ranges::find(stack, other);
    std::free(tree);
    return above;
}

void OtherProgram::readEvents()
{
    while (auto *event = xcb_poll_for_event(m_connection)) {
        constexpr uint8_t typeMask = 0x7f;
        switch (event->response_type & typeMask) {
        case XCB_BUTTON_PRESS: {
            const auto *press = reinterpret_cast<xcb_button_press_event_t *>(event);
            presses.append({press->root_x, press->root_y});
            break;
        }
        case XCB_KEY_PRESS:
            keys.append(reinterpret_cast<xcb_key_press_event_t *>(event)->detail);
            break;
        case XCB_CONFIGURE_NOTIFY: {
            const auto *configure = reinterpret_cast<xcb_configure_notify_event_t *>(event);
            m_size = {configure->width, configure->height};
            break;
        }
        case XCB_MAP_NOTIFY:
            isMapped = true;
            break;
        default:
            break;
        }
        std::free(event);
    }
}

Hand::Hand() : m_connection(xcb_connect(nullptr, nullptr)), m_root(rootOf(m_connection)) { }

Hand::~Hand()
{
    xcb_disconnect(m_connection);
}

void Hand::moveTo(QPoint point)
{
    send(XCB_MOTION_NOTIFY, 0, point);
}

void Hand::press(int button)
{
    send(XCB_BUTTON_PRESS, uint8_t(button));
}

void Hand::release(int button)
{
    send(XCB_BUTTON_RELEASE, uint8_t(button));
}

void Hand::click(QPoint point, int button)
{
    moveTo(point);
    press(button);
    release(button);
}

void Hand::type(int keycode)
{
    holdKey(keycode);
    releaseKey(keycode);
}

void Hand::holdKey(int keycode)
{
    send(XCB_KEY_PRESS, uint8_t(keycode));
}

void Hand::releaseKey(int keycode)
{
    send(XCB_KEY_RELEASE, uint8_t(keycode));
}

void Hand::send(uint8_t type, uint8_t detail, QPoint point)
{
    xcb_test_fake_input(
        m_connection, type, detail, XCB_CURRENT_TIME, m_root, int16_t(point.x()), int16_t(point.y()), 0);
    settle(m_connection);
}

} // namespace brindle::test
