#include "platform/linux/audio/PulseSession.h"

#include "platform/linux/audio/PulseLibrary.h"

#include <algorithm>
#include <cmath>
#include <csignal>
#include <pthread.h>
#include <span>
#include <utility>

namespace brindle {

namespace {

/// A volume as mixers show it, with four places: the server counts in steps of which 34 % is no whole number,
/// and would otherwise be a little less than that.
double shown(pa_volume_t volume)
{
    constexpr double places = 10000;
    return std::round(std::min(volume / double(PA_VOLUME_NORM), 1.0) * places) / places;
}

std::optional<OutputLevel> levelOf(const pa_sink_info &sink)
{
    const std::span channels(
        std::data(sink.volume.values), std::min<size_t>(sink.volume.channels, PA_CHANNELS_MAX));
    if (channels.empty())
        return std::nullopt;
    double sum = 0;
    for (const pa_volume_t channel : channels)
        sum += shown(channel);
    return OutputLevel{sum / double(channels.size()), sink.mute != 0};
}

/// All that is said to one server, on the session's thread.
class Conversation
{
public:
    Conversation(const PulseLibrary &pulse, pa_mainloop *loop, const PulseSession::Listener &listener)
        : m_pulse(pulse)
        , m_listener(listener)
        , m_context(pulse.context_new(pulse.mainloop_get_api(loop), "Velmora"))
    {
        if (!m_context)
            return;
        pulse.context_set_state_callback(
            m_context, [](pa_context *, void *self) { of(self).stateChanged(); }, this);
        pulse.context_set_subscribe_callback(
            m_context,
            [](pa_context *, pa_subscription_event_type_t event, uint32_t sink, void *self) {
                of(self).happened(event, sink);
            },
            this);
        if (pulse.context_connect(m_context, nullptr, PA_CONTEXT_NOAUTOSPAWN, nullptr) < 0)
            m_isOver = true;
    }
    ~Conversation()
    {
        if (!m_context)
            return;
        m_pulse.context_set_state_callback(m_context, nullptr, nullptr);
        m_pulse.context_set_subscribe_callback(m_context, nullptr, nullptr);
        m_pulse.context_disconnect(m_context);
        m_pulse.context_unref(m_context);
    }
    Conversation(const Conversation &) = delete;
    Conversation &operator=(const Conversation &) = delete;

    bool isOver() const { return m_isOver || !m_context; }

private:
    static Conversation &of(void *self) { return *static_cast<Conversation *>(self); }

    void stateChanged()
    {
        const pa_context_state_t state = m_pulse.context_get_state(m_context);
        if (state == PA_CONTEXT_READY) {
            // Listening begins before reading, so that no change falls between the two.
            const auto wanted =
                pa_subscription_mask_t(PA_SUBSCRIPTION_MASK_SINK | PA_SUBSCRIPTION_MASK_SERVER);
            begun(m_pulse.context_subscribe(m_context, wanted, nullptr, nullptr));
            ask();
        } else if (!PA_CONTEXT_IS_GOOD(state)) {
            m_isOver = true;
        }
    }

    // Which output is the default may change with any that comes or goes; of what merely changes, only the
    // default one matters.
    void happened(pa_subscription_event_type_t event, uint32_t sink)
    {
        const bool isOfSink = (event & PA_SUBSCRIPTION_EVENT_FACILITY_MASK) == PA_SUBSCRIPTION_EVENT_SINK;
        const bool isChange = (event & PA_SUBSCRIPTION_EVENT_TYPE_MASK) == PA_SUBSCRIPTION_EVENT_CHANGE;
        if (!isOfSink || !isChange || sink == m_sink)
            ask();
    }

    // One question at a time, however much happens meanwhile.
    void ask()
    {
        m_mustAskAgain = m_isAsking;
        if (std::exchange(m_isAsking, true))
            return;
        m_answer.reset();
        begun(m_pulse.context_get_sink_info_by_name(
            m_context, "@DEFAULT_SINK@",
            [](pa_context *, const pa_sink_info *sink, int end, void *self) { of(self).answered(sink, end); },
            this));
    }

    // The answer comes in pieces, of which the last is empty.
    void answered(const pa_sink_info *sink, int end)
    {
        if (end == 0 && sink) {
            m_sink = sink->index;
            m_answer = levelOf(*sink);
            return;
        }
        m_isAsking = false;
        if (m_told != m_answer) {
            m_told = m_answer;
            m_listener.said(m_answer);
        }
        if (m_mustAskAgain)
            ask();
    }

    void begun(pa_operation *operation)
    {
        if (operation)
            m_pulse.operation_unref(operation);
        else
            m_isOver = true;
    }

    const PulseLibrary &m_pulse;
    const PulseSession::Listener &m_listener;
    pa_context *const m_context;
    bool m_isOver = false;
    bool m_isAsking = false;
    bool m_mustAskAgain = false;
    uint32_t m_sink = PA_INVALID_INDEX;
    std::optional<OutputLevel> m_answer;
    /// The outer one is absent until something was told.
    std::optional<std::optional<OutputLevel>> m_told;
};

/// Signals are the main thread's.
void blockSignals()
{
    sigset_t all;
    sigfillset(&all);
    pthread_sigmask(SIG_BLOCK, &all, nullptr);
}

} // namespace

void PulseSession::FreeLoop::operator()(pa_mainloop *loop) const
{
    PulseLibrary::get()->mainloop_free(loop);
}

PulseSession::PulseSession(Listener listener) : m_listener(std::move(listener))
{
    m_thread = std::thread([this] { run(); });
}

PulseSession::~PulseSession()
{
    m_isEnding = true;
    if (pa_mainloop *loop = m_wakeable)
        PulseLibrary::get()->mainloop_wakeup(loop);
    m_thread.join();
}

void PulseSession::run()
{
    blockSignals();
    pthread_setname_np(pthread_self(), "sound server");
    if (const PulseLibrary *pulse = PulseLibrary::get()) {
        m_loop.reset(pulse->mainloop_new());
        m_wakeable = m_loop.get();
        const Conversation conversation(*pulse, m_loop.get(), m_listener);
        while (!m_isEnding && !conversation.isOver()
            && pulse->mainloop_iterate(m_loop.get(), 1, nullptr) >= 0) { }
    }
    if (!m_isEnding)
        m_listener.ended();
}

} // namespace brindle
