#include "app/Renderer.h"

#include "platform/linux/x11/XcbConnection.h"

#include <QDir>
#include <QFileInfo>
#include <QQuickWindow>

#include <algorithm>

namespace brindle {

namespace {

bool isChosenByEnvironment()
{
    return qEnvironmentVariableIsSet("QT_QUICK_BACKEND") || qEnvironmentVariableIsSet("QSG_RHI_BACKEND");
}

/// A device that draws, and that this user may use.
bool machineHasGpu()
{
    const QFileInfoList nodes =
        QDir(QStringLiteral("/dev/dri")).entryInfoList({QStringLiteral("renderD*")}, QDir::System);
    return std::ranges::any_of(
        nodes, [](const QFileInfo &node) { return node.isReadable() && node.isWritable(); });
}

/// A display takes pictures straight from a GPU only when it is drawn by one itself; a virtual or remote one
/// is not, whatever the machine has.
bool displayHasGpu()
{
    return Xcb::hasExtension("DRI3");
}

} // namespace

// A GPU that the processor plays takes twice the time to start and twice the memory of the plain software
// renderer.
void chooseRenderer()
{
    if (!isChosenByEnvironment() && !(machineHasGpu() && displayHasGpu()))
        QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
}

} // namespace brindle
