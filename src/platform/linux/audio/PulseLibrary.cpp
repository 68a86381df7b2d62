#include "platform/linux/audio/PulseLibrary.h"

#include <dlfcn.h>
#include <optional>

namespace brindle {

namespace {

template <typename Function> bool find(void *library, const char *name, Function *&function)
{
    function = reinterpret_cast<Function *>(dlsym(library, name));
    return function != nullptr;
}

std::optional<PulseLibrary> open()
{
    // By the version whose headers were compiled: a later one may mean something else by the same names.
    void *library = dlopen("libpulse.so.0", RTLD_LAZY | RTLD_LOCAL);
    if (!library)
        return std::nullopt;
    PulseLibrary functions;
    bool isComplete = true;
#define BRINDLE_PULSE_FIND(name) isComplete = find(library, "pa_" #name, functions.name) && isComplete;
    BRINDLE_PULSE_FUNCTIONS(BRINDLE_PULSE_FIND)
#undef BRINDLE_PULSE_FIND
    return isComplete ? std::optional(functions) : std::nullopt;
}

} // namespace

const PulseLibrary *PulseLibrary::get()
{
    static const std::optional<PulseLibrary> library = open();
    return library ? &*library : nullptr;
}

} // namespace brindle
