#pragma once

#include "core/IslandTab.h"
#include "ui/Motion.h"
#include "ui/Stage.h"

#include <QObject>
#include <QUrl>
#include <QtQml/qqmlregistration.h>

namespace brindle {

class IslandViewModel;

/// The frame of the open island: how high its content is, and which tab is on stage. Main thread; the view
/// model outlives it.
class ExpandedContent : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("part of the island")
    /// The selected tab.
    Q_PROPERTY(brindle::StageSubject tab READ tab NOTIFY tabChanged)
    /// Of the sidebar and the tab beside it, in points.
    Q_PROPERTY(double height READ height NOTIFY heightChanged)
    Q_PROPERTY(brindle::Motion tabMotion READ tabMotion NOTIFY motionChanged)

public:
    explicit ExpandedContent(IslandViewModel &viewModel, QObject *parent = nullptr);

    StageSubject tab() const;
    double height() const;
    static double heightFor(double bottomInset);
    Motion tabMotion() const;
    /// The view of a tab, beside the open island's; empty for a tab that has none yet.
    Q_INVOKABLE static QUrl viewOf(brindle::IslandTab tab);

Q_SIGNALS:
    void tabChanged();
    void heightChanged();
    void motionChanged();

private:
    IslandViewModel &m_viewModel;
};

} // namespace brindle
