#include "island/IslandHost.h"

#include "island/NotchShapeItem.h"
#include "platform/PanelWindow.h"

#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickWindow>

namespace brindle {

IslandHost::IslandHost(IslandViewModel &viewModel, PanelWindow &panel)
    : m_panel(panel)
    , m_presenter(viewModel)
{
    if (m_panel.contentWindow()) {
        QAccessible::installActivationObserver(this);
        if (QAccessible::isActive())
            buildScene();
        else
            showShape();
    }
    connect(m_presenter.surface(), &IslandSurface::shapeChanged, this, &IslandHost::shapeChanged);
    shapeChanged();
}

IslandHost::~IslandHost()
{
    QAccessible::removeActivationObserver(this);
}

void IslandHost::accessibilityActiveChanged(bool active)
{
    if (active)
        buildScene();
}

void IslandHost::showShape()
{
    QQuickWindow *window = m_panel.contentWindow();
    m_firstShape = std::make_unique<NotchShapeItem>(window->contentItem());
    m_firstShape->setSize(IslandSurface::panelSize);
    m_firstShape->setSurface(m_presenter.surface());
    connect(m_firstShape.get(), &NotchShapeItem::tapped, &m_presenter, &IslandPresenter::tapped);
    connect(window, &QQuickWindow::afterRendering, this, &IslandHost::buildScene,
        Qt::ConnectionType(Qt::QueuedConnection | Qt::SingleShotConnection));
}

void IslandHost::buildScene()
{
    if (m_root)
        return;
    m_engine = std::make_unique<QQmlEngine>();
    m_engine->addImportPath(QStringLiteral("qrc:/qt/qml"));
    QQmlComponent component(
        m_engine.get(), QUrl(QStringLiteral("qrc:/qt/qml/Brindle/Island/IslandRootView.qml")));
    // The scene is part of the program: it is sound, or the build is not.
    Q_ASSERT_X(component.isReady(), "IslandHost", qPrintable(component.errorString()));
    m_root.reset(qobject_cast<QQuickItem *>(component.createWithInitialProperties(
        {{QStringLiteral("island"), QVariant::fromValue(&m_presenter)}})));
    m_root->setParentItem(m_panel.contentWindow()->contentItem());
    m_root->setSize(IslandSurface::panelSize);
    m_firstShape.reset();
}

void IslandHost::shapeChanged()
{
    m_panel.setInputShape(m_presenter.surface()->outline());
}

} // namespace brindle
