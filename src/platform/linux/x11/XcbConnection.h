#pragma once

#include <cstdlib>
#include <memory>
#include <xcb/xcb.h>

namespace brindle {

struct FreeReply
{
    void operator()(void *reply) const { std::free(reply); }
};

/// A reply of the X server, freed by itself; null when the request failed or the connection is gone.
template <typename Reply> using XcbReply = std::unique_ptr<Reply, FreeReply>;

/// The application's connection to the X server, as the X11 parts share it. Main thread.
namespace Xcb {
/// Whether there is an X server to connect to, which is known before there is an application.
bool serverAnswers();
/// Null when the program does not run on X11.
xcb_connection_t *connection();
/// None when the connection is gone.
xcb_window_t root();
xcb_atom_t atom(const char *name);
/// Whether the server has an extension, by its own name ("DRI3"). False without a connection.
bool hasExtension(const char *name);
/// The window that has the keyboard, or one of the server's constants for none.
xcb_window_t focusedWindow();
/// Gives the keyboard to a window, whatever happens to it meanwhile.
void focus(xcb_window_t window);
/// The window that the window manager calls active, or none.
xcb_window_t activeWindow();
/// Whether the window exists and is visible, so that it can take the keyboard.
bool isViewable(xcb_window_t window);
} // namespace Xcb

} // namespace brindle
