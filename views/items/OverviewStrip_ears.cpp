// SPDX-License-Identifier: MIT
#include "views/items/OverviewStrip.h"

#include "views/items/PlotAxis.h"
#include "views/items/PlotView.h"
#include "views/items/PlotZoom.h"

#include <QAccessible>
#include <QDynamicPropertyChangeEvent>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QScopedValueRollback>

#include <algorithm>
#include <cmath>

namespace {

// Where Qt looks for the value of an item whose role is that of a scroll bar.
constexpr char valueName[] = "value";
constexpr char lowestName[] = "minimumValue";
constexpr char highestName[] = "maximumValue";
constexpr char stepName[] = "stepSize";
constexpr double stepPart = 0.1; // of what is shown, as an arrow key

} // namespace

void OverviewStrip::makeEars()
{
    QQmlEngine *const engine = m_ears || !m_view ? nullptr : qmlEngine(m_view);
    if (!engine)
        return;
    QQmlComponent component(engine, QUrl(QStringLiteral("qrc:/VorlixPlugin/Views/OverviewEars.qml")));
    m_ears = component.createWithInitialProperties({{QStringLiteral("strip"), QVariant::fromValue<QObject *>(this)}},
                                                   qmlContext(m_view));
    if (m_ears)
        m_ears->setParent(this);
}

/// The value is where the shown part begins; it ends at the end of the series at most.
void OverviewStrip::tellValue()
{
    if (!m_view)
        return;
    const QScopedValueRollback<bool> telling(m_isTelling, true);
    const bool log = m_view->axisX()->isLog();
    const SAxisRange all = m_small->axisX()->range();
    const SAxisRange shown = m_view->axisX()->range();
    const double last = log ? all.max * (shown.min / shown.max) : all.max - (shown.max - shown.min);
    setProperty(lowestName, std::min(all.min, shown.min));
    setProperty(highestName, std::max({all.min, last, shown.min}));
    setProperty(stepName, (shown.max - shown.min) * stepPart);
    setProperty(valueName, shown.min);
    if (QAccessible::isActive()) {
        QAccessibleValueChangeEvent event(this, shown.min);
        QAccessible::updateAccessibility(&event);
    }
}

/// A screen reader set the value.
void OverviewStrip::takeValue()
{
    bool isNumber = false;
    const double from = property(valueName).toDouble(&isNumber);
    const SAxisRange shown = m_view ? m_view->axisX()->range() : SAxisRange();
    if (m_view && m_view->isInteractive() && isNumber && std::isfinite(from)) {
        const bool log = m_view->axisX()->isLog();
        const double to = log ? from * (shown.max / shown.min) : from + (shown.max - shown.min);
        if (!log || from > 0.0)
            m_view->zoom()->showX({from, to}, m_view->zoom()->newGesture());
    }
    tellValue(); // what became of it
}

bool OverviewStrip::event(QEvent *event)
{
    if (event->type() == QEvent::DynamicPropertyChange && !m_isTelling
        && static_cast<QDynamicPropertyChangeEvent *>(event)->propertyName() == valueName)
        takeValue();
    return QQuickItem::event(event);
}
