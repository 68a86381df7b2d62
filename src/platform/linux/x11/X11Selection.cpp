#include "platform/linux/x11/X11Selection.h"

#include "platform/linux/x11/XcbConnection.h"

#include <QGuiApplication>

#include <xcb/xfixes.h>

namespace brindle {

X11Selection::X11Selection(const char *name, QObject *parent) : QObject(parent), m_selection(Xcb::atom(name))
{
    follow();
    look();
}

X11Selection::~X11Selection() = default;

void X11Selection::follow()
{
    xcb_connection_t *connection = Xcb::connection();
    const auto *extension = xcb_get_extension_data(connection, &xcb_xfixes_id);
    if (!extension || !extension->present)
        return;
    // The server ignores the extension's requests until it was told a version.
    const XcbReply<xcb_xfixes_query_version_reply_t> version(xcb_xfixes_query_version_reply(connection,
        xcb_xfixes_query_version(connection, XCB_XFIXES_MAJOR_VERSION, XCB_XFIXES_MINOR_VERSION), nullptr));
    if (!version)
        return;
    xcb_xfixes_select_selection_input(connection, Xcb::root(), m_selection,
        XCB_XFIXES_SELECTION_EVENT_MASK_SET_SELECTION_OWNER
            | XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_WINDOW_DESTROY
            | XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_CLIENT_CLOSE);
    m_selectionNotify = uint8_t(extension->first_event + XCB_XFIXES_SELECTION_NOTIFY);
    qGuiApp->installNativeEventFilter(this);
}

bool X11Selection::nativeEventFilter(const QByteArray &, void *message, qintptr *)
{
    constexpr uint8_t typeMask = 0x7f;
    const auto *event = static_cast<xcb_generic_event_t *>(message);
    if ((event->response_type & typeMask) == m_selectionNotify
        && static_cast<xcb_xfixes_selection_notify_event_t *>(message)->selection == m_selection)
        look();
    return false;
}

void X11Selection::look()
{
    const XcbReply<xcb_get_selection_owner_reply_t> reply(xcb_get_selection_owner_reply(
        Xcb::connection(), xcb_get_selection_owner(Xcb::connection(), m_selection), nullptr));
    const bool isOwned = reply && reply->owner != XCB_WINDOW_NONE;
    if (isOwned == m_isOwned)
        return;
    m_isOwned = isOwned;
    Q_EMIT isOwnedChanged();
}

} // namespace brindle
