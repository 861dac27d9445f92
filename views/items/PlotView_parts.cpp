// SPDX-License-Identifier: MIT
#include "views/items/PlotView.h"

#include "common/Change.h"
#include "views/items/LeftOut.h"
#include "views/items/OverviewStrip.h"
#include "views/items/PlotEars.h"
#include "views/items/PlotFrame.h"
#include "views/items/PlotHands.h"
#include "views/items/PlotMarks.h"
#include "views/items/PlotReadout.h"

#include <QQmlComponent>
#include <QQmlEngine>

#include <qqmlinfo.h>

namespace {

constexpr double overviewHeight = 48.0;
constexpr double overviewGap = 6.0;

} // namespace

/// The legend, the read-out and the panels are QML; a view that C++ makes without an engine goes without them.
void PlotView::componentComplete()
{
    QQuickItem::componentComplete();
    makeOverlay();
}

void PlotView::makeOverlay()
{
    QQmlEngine *const engine = qmlEngine(this);
    if (!engine)
        return;
    QQmlComponent component(engine, QUrl(QStringLiteral("qrc:/VorlixPlugin/Views/PlotOverlay.qml")));
    const QVariantMap properties{{QStringLiteral("view"), QVariant::fromValue(this)},
                                 {QStringLiteral("parent"), QVariant::fromValue<QQuickItem *>(this)},
                                 {QStringLiteral("readout"), QVariant::fromValue<QObject *>(m_readout.get())},
                                 {QStringLiteral("marks"), QVariant::fromValue<QObject *>(m_marks)},
                                 {QStringLiteral("leftOut"), QVariant::fromValue<QObject *>(m_leftOut.get())},
                                 {QStringLiteral("ears"), QVariant::fromValue<QObject *>(m_ears.get())}};
    m_overlay = qobject_cast<QQuickItem *>(component.createWithInitialProperties(properties, qmlContext(this)));
    if (!m_overlay) {
        qmlWarning(this, component.errors()) << "the legend and the read-out can't be made";
        return;
    }
    m_overlay->setParent(this);
    m_overlay->setParentItem(this);
}

void PlotView::setLegendVisible(bool legendVisible)
{
    if (!change(m_legendVisible, legendVisible))
        return;
    emit legendVisibleChanged();
}

void PlotView::setReadoutVisible(bool readoutVisible)
{
    if (!change(m_readoutVisible, readoutVisible))
        return;
    emit readoutVisibleChanged();
}

qreal PlotView::leftOutCount() const
{
    return m_leftOut->count();
}

void PlotView::setOverviewVisible(bool overviewVisible)
{
    if (!change(m_overviewVisible, overviewVisible))
        return;
    if (overviewVisible) {
        m_overview = new OverviewStrip(this);
        m_overview->setView(this);
        connect(this, &PlotView::plotAreaChanged, m_overview, [this] { layOutOverview(); });
        connect(this, &QQuickItem::heightChanged, m_overview, [this] { layOutOverview(); });
    } else {
        delete m_overview;
        m_overview = nullptr;
    }
    m_frame->setRoomBelow(overviewVisible ? overviewHeight + overviewGap : 0.0);
    layOutOverview();
    emit overviewVisibleChanged();
}

void PlotView::layOutOverview()
{
    if (!m_overview)
        return;
    m_overview->setPosition({m_plotArea.left(), layoutSize().height() - overviewHeight - overviewGap});
    m_overview->setSize({m_plotArea.width(), overviewHeight});
}
