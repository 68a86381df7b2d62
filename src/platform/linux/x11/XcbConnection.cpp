#include "platform/linux/x11/XcbConnection.h"

#include <QGuiApplication>

#include <cstring>

namespace brindle::Xcb {

xcb_connection_t *connection()
{
    const auto *native = qGuiApp ? qGuiApp->nativeInterface<QNativeInterface::QX11Application>() : nullptr;
    return native ? native->connection() : nullptr;
}

xcb_window_t root()
{
    return xcb_setup_roots_iterator(xcb_get_setup(connection())).data->root;
}

xcb_atom_t atom(const char *name)
{
    const auto cookie = xcb_intern_atom(connection(), 0, uint16_t(std::strlen(name)), name);
    const XcbReply<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(connection(), cookie, nullptr));
    return reply ? reply->atom : xcb_atom_t(XCB_ATOM_NONE);
}

xcb_window_t focusedWindow()
{
    const XcbReply<xcb_get_input_focus_reply_t> reply(
        xcb_get_input_focus_reply(connection(), xcb_get_input_focus(connection()), nullptr));
    return reply ? reply->focus : xcb_window_t(XCB_INPUT_FOCUS_NONE);
}

bool isViewable(xcb_window_t window)
{
    if (window == XCB_INPUT_FOCUS_NONE || window == XCB_INPUT_FOCUS_POINTER_ROOT)
        return false;
    const XcbReply<xcb_get_window_attributes_reply_t> reply(xcb_get_window_attributes_reply(
        connection(), xcb_get_window_attributes(connection(), window), nullptr));
    return reply && reply->map_state == XCB_MAP_STATE_VIEWABLE;
}

} // namespace brindle::Xcb
