#pragma once

#include <QSocketNotifier>

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <xcb/xcb.h>

namespace brindle {

/// A connection to the X server that hears of its media keys, and of nothing else but that keys were pressed.
///
/// A connection of its own, because one program's connection has one choice of raw events only. It asks the
/// server a few things when it is made. Main thread.
class X11KeyListener
{
public:
    /// `heard` gets the `data1` of each event. It may be the end of the listener.
    explicit X11KeyListener(std::function<void(long data1)> heard);

    /// Whether the server lets it listen.
    bool isGranted() const { return m_notifier != nullptr; }

private:
    struct Disconnect
    {
        void operator()(xcb_connection_t *connection) const { xcb_disconnect(connection); }
    };
    struct Later
    {
        void operator()(QSocketNotifier *notifier) const;
    };

    bool selectKeys();
    void findKeys();
    void read();
    std::optional<long> dataOf(const xcb_generic_event_t &event) const;

    const std::function<void(long data1)> m_heard;
    std::unique_ptr<xcb_connection_t, Disconnect> m_connection;
    int m_inputOpcode = 0;
    /// The codes of media keys, by the server's own.
    std::map<uint32_t, long> m_keys;
    std::unique_ptr<QSocketNotifier, Later> m_notifier;
};

} // namespace brindle
