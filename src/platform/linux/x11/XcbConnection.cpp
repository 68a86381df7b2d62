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
    const xcb_setup_t *setup = xcb_get_setup(connection());
    return setup ? xcb_setup_roots_iterator(setup).data->root : xcb_window_t(XCB_WINDOW_NONE);
}

xcb_atom_t atom(const char *name)
{
    const auto cookie = xcb_intern_atom(connection(), 0, uint16_t(std::strlen(name)), name);
    const XcbReply<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(connection(), cookie, nullptr));
    return reply ? reply->atom : xcb_atom_t(XCB_ATOM_NONE);
}

bool serverAnswers()
{
    xcb_connection_t *attempt = xcb_connect(nullptr, nullptr);
    const bool answers = xcb_connection_has_error(attempt) == 0;
    xcb_disconnect(attempt);
    return answers;
}

bool hasExtension(const char *name)
{
    if (!connection())
        return false;
    const auto cookie = xcb_query_extension(connection(), uint16_t(std::strlen(name)), name);
    const XcbReply<xcb_query_extension_reply_t> reply(
        xcb_query_extension_reply(connection(), cookie, nullptr));
    return reply && reply->present;
}

xcb_window_t focusedWindow()
{
    const XcbReply<xcb_get_input_focus_reply_t> reply(
        xcb_get_input_focus_reply(connection(), xcb_get_input_focus(connection()), nullptr));
    return reply ? reply->focus : xcb_window_t(XCB_INPUT_FOCUS_NONE);
}

// Without a time stamp: the last one that this connection saw may be older than the present focus, and then
// the server ignores the wish.
void focus(xcb_window_t window)
{
    const auto cookie =
        xcb_set_input_focus_checked(connection(), XCB_INPUT_FOCUS_POINTER_ROOT, window, XCB_CURRENT_TIME);
    // That the window has vanished is no error worth a line.
    xcb_discard_reply(connection(), cookie.sequence);
    xcb_flush(connection());
}

xcb_window_t activeWindow()
{
    const XcbReply<xcb_get_property_reply_t> reply(xcb_get_property_reply(connection(),
        xcb_get_property(connection(), 0, root(), atom("_NET_ACTIVE_WINDOW"), XCB_ATOM_WINDOW, 0, 1),
        nullptr));
    if (!reply || xcb_get_property_value_length(reply.get()) != int(sizeof(xcb_window_t)))
        return XCB_WINDOW_NONE;
    return *static_cast<const xcb_window_t *>(xcb_get_property_value(reply.get()));
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
