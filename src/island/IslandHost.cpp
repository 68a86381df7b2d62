#include "island/IslandHost.h"

#include "platform/PanelWindow.h"

#include <QQmlComponent>
#include <QQuickItem>
#include <QQuickWindow>

namespace brindle {

IslandHost::IslandHost(IslandViewModel &viewModel, PanelWindow &panel)
    : m_panel(panel)
    , m_presenter(viewModel)
{
    m_engine.addImportPath(QStringLiteral("qrc:/qt/qml"));
    if (m_panel.contentWindow())
        buildScene();
    connect(m_presenter.surface(), &IslandSurface::shapeChanged, this, &IslandHost::shapeChanged);
    shapeChanged();
}

IslandHost::~IslandHost() = default;

void IslandHost::buildScene()
{
    QQmlComponent component(&m_engine, QUrl(QStringLiteral("qrc:/qt/qml/Brindle/Island/IslandRootView.qml")));
    // The scene is part of the program: it is sound, or the build is not.
    Q_ASSERT_X(component.isReady(), "IslandHost", qPrintable(component.errorString()));
    m_root.reset(qobject_cast<QQuickItem *>(component.createWithInitialProperties(
        {{QStringLiteral("island"), QVariant::fromValue(&m_presenter)}})));
    m_root->setParentItem(m_panel.contentWindow()->contentItem());
    m_root->setSize(IslandSurface::panelSize);
    connect(m_panel.contentWindow(), &QQuickWindow::afterRendering, this, &IslandHost::firstFrameDrawn,
        Qt::QueuedConnection);
}

void IslandHost::firstFrameDrawn()
{
    disconnect(m_panel.contentWindow(), &QQuickWindow::afterRendering, this, &IslandHost::firstFrameDrawn);
    m_presenter.setOnScreen();
}

void IslandHost::shapeChanged()
{
    m_panel.setInputShape(m_presenter.surface()->outline());
}

} // namespace brindle
