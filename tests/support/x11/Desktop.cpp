#include "support/x11/Desktop.h"

#include "foundation/SystemScheduler.h"
#include "support/EventLoop.h"
#include "support/x11/OtherProgram.h"

#include <QFile>
#include <QProcessEnvironment>

#include <csignal>
#include <memory>
#include <span>
#include <sys/prctl.h>

namespace brindle::test {

namespace {

struct FreeReply
{
    void operator()(void *reply) const { std::free(reply); }
};
template <typename Reply> using ReplyOf = std::unique_ptr<Reply, FreeReply>;

} // namespace

bool soon(const std::function<bool()> &holds, double seconds)
{
    SystemScheduler time;
    const Delay look = time.every(0.01, 0, [] { });
    return eventually(holds, seconds);
}

Desktop::Desktop()
    : m_connection(xcb_connect(nullptr, nullptr))
    , m_root(xcb_setup_roots_iterator(xcb_get_setup(m_connection)).data->root)
{
    // While it starts it overlooks windows that come up; what it runs then says that it has started.
    const QString started = m_home.filePath(QStringLiteral("started"));
    run(m_windowManager, QStringLiteral("openbox"),
        {QStringLiteral("--startup"), QStringLiteral("touch ") + started});
    m_isThere = soon([&started] { return QFile::exists(started); });
}

Desktop::~Desktop()
{
    killCompositor();
    m_windowManager.kill();
    m_windowManager.waitForFinished();
    xcb_disconnect(m_connection);
}

void Desktop::run(QProcess &process, const QString &program, const QStringList &arguments)
{
    auto environment = QProcessEnvironment::systemEnvironment();
    // Neither the person's settings nor files left behind.
    for (const QString &folder :
        {QStringLiteral("HOME"), QStringLiteral("XDG_CONFIG_HOME"), QStringLiteral("XDG_CACHE_HOME")})
        environment.insert(folder, m_home.path());
    process.setProcessEnvironment(environment);
    process.setStandardOutputFile(QProcess::nullDevice());
    process.setStandardErrorFile(QProcess::nullDevice());
    process.setChildProcessModifier([] { ::prctl(PR_SET_PDEATHSIG, SIGKILL); });
    process.start(program, arguments);
}

bool Desktop::startCompositor(const QString &configuration)
{
    run(m_compositor, QStringLiteral("picom"),
        {QStringLiteral("--config"), configuration, QStringLiteral("--backend"), QStringLiteral("xrender")});
    return soon([this] { return isSelectionOwned("_NET_WM_CM_S0"); });
}

void Desktop::killCompositor()
{
    m_compositor.kill();
    m_compositor.waitForFinished();
}

bool Desktop::goToWorkspace(int number)
{
    xcb_client_message_event_t message{};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = m_root;
    message.type = atom(m_connection, "_NET_CURRENT_DESKTOP");
    message.data.data32[0] = uint32_t(number);
    xcb_send_event(m_connection, 0, m_root,
        XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY,
        reinterpret_cast<const char *>(&message));
    xcb_flush(m_connection);
    return soon([&] { return rootProperty("_NET_CURRENT_DESKTOP") == QList{uint32_t(number)}; });
}

QColor Desktop::pixelAt(QPoint point) const
{
    const ReplyOf<xcb_get_image_reply_t> image(xcb_get_image_reply(m_connection,
        xcb_get_image(m_connection, XCB_IMAGE_FORMAT_Z_PIXMAP, m_root, int16_t(point.x()), int16_t(point.y()),
            1, 1, ~0U),
        nullptr));
    if (!image)
        return {};
    const uint8_t *bytes = xcb_get_image_data(image.get());
    return {bytes[2], bytes[1], bytes[0]};
}

QList<uint32_t> Desktop::rootProperty(const char *name) const
{
    constexpr uint32_t most = 1024;
    const ReplyOf<xcb_get_property_reply_t> reply(xcb_get_property_reply(m_connection,
        xcb_get_property(
            m_connection, 0, m_root, atom(m_connection, name), XCB_GET_PROPERTY_TYPE_ANY, 0, most),
        nullptr));
    if (!reply || reply->format != 32)
        return {};
    const auto *values = static_cast<const uint32_t *>(xcb_get_property_value(reply.get()));
    return {values, values + xcb_get_property_value_length(reply.get()) / int(sizeof(uint32_t))};
}

QList<xcb_window_t> Desktop::stack() const
{
    const ReplyOf<xcb_query_tree_reply_t> tree(
        xcb_query_tree_reply(m_connection, xcb_query_tree(m_connection, m_root), nullptr));
    if (!tree)
        return {};
    const std::span windows(
        xcb_query_tree_children(tree.get()), size_t(xcb_query_tree_children_length(tree.get())));
    return {windows.begin(), windows.end()};
}

QRect Desktop::geometryOf(xcb_window_t window) const
{
    const ReplyOf<xcb_get_geometry_reply_t> reply(
        xcb_get_geometry_reply(m_connection, xcb_get_geometry(m_connection, window), nullptr));
    return reply ? QRect(reply->x, reply->y, reply->width, reply->height) : QRect();
}

bool Desktop::isSelectionOwned(const char *name) const
{
    const ReplyOf<xcb_get_selection_owner_reply_t> reply(xcb_get_selection_owner_reply(
        m_connection, xcb_get_selection_owner(m_connection, atom(m_connection, name)), nullptr));
    return reply && reply->owner != XCB_WINDOW_NONE;
}

bool resizeDisplay(QSize size)
{
    const auto xrandr = [](const QStringList &arguments) {
        return QProcess::execute(QStringLiteral("xrandr"), arguments) == 0;
    };
    const QString mode = QStringLiteral("%1x%2").arg(size.width()).arg(size.height());
    const QString output = QStringLiteral("screen");
    QStringList timings{QStringLiteral("60")};
    for (const int length : {size.width(), size.height()}) {
        for (const int blank : {0, 8, 16, 32})
            timings << QString::number(length + blank);
    }
    xrandr(QStringList{QStringLiteral("--newmode"), mode} + timings);
    xrandr({QStringLiteral("--addmode"), output, mode});
    return xrandr({QStringLiteral("--output"), output, QStringLiteral("--mode"), mode});
}

} // namespace brindle::test
