#pragma once

#include <pulse/pulseaudio.h>

namespace brindle {

/// The functions of the sound server's client library that are called, by their names without the prefix.
#define BRINDLE_PULSE_FUNCTIONS(FUNCTION)                                                                    \
    FUNCTION(mainloop_new)                                                                                   \
    FUNCTION(mainloop_free)                                                                                  \
    FUNCTION(mainloop_get_api)                                                                               \
    FUNCTION(mainloop_iterate)                                                                               \
    FUNCTION(mainloop_wakeup)                                                                                \
    FUNCTION(context_new)                                                                                    \
    FUNCTION(context_unref)                                                                                  \
    FUNCTION(context_connect)                                                                                \
    FUNCTION(context_disconnect)                                                                             \
    FUNCTION(context_get_state)                                                                              \
    FUNCTION(context_set_state_callback)                                                                     \
    FUNCTION(context_set_subscribe_callback)                                                                 \
    FUNCTION(context_subscribe)                                                                              \
    FUNCTION(context_get_sink_info_by_name)                                                                  \
    FUNCTION(operation_unref)

/// The sound server's client library, once it was opened.
///
/// It brings two dozen others with it, among them every codec of sound files, which would cost each start of
/// the program some milliseconds.
struct PulseLibrary
{
// NOLINTNEXTLINE(bugprone-macro-parentheses): a name that is declared stands in none
#define BRINDLE_PULSE_FIELD(name) decltype(&::pa_##name) name = nullptr;
    BRINDLE_PULSE_FUNCTIONS(BRINDLE_PULSE_FIELD)
#undef BRINDLE_PULSE_FIELD

    /// Opens it when it is first asked for. Null where it is not installed, or lacks a function. From any
    /// thread.
    static const PulseLibrary *get();
};

} // namespace brindle
