// SPDX-License-Identifier: MIT
#include "stress/PlotCast.h"

#include "stress/HostileValues.h"
#include "stress/MetaCalls.h"

#include <QCoreApplication>
#include <QKeyEvent>
#include <QQmlListReference>
#include <QQuickItem>

#include <functional>

namespace {

void press(QObject *view, int key, Qt::KeyboardModifiers modifiers)
{
    if (!view)
        return;
    QKeyEvent event(QEvent::KeyPress, key, modifiers);
    QCoreApplication::sendEvent(view, &event);
}

/// As if it were declared in the view.
void declareIn(QObject *view, QObject *element)
{
    if (!view || !element || element == view)
        return;
    QQmlListReference list(view, "seriesList");
    list.append(element);
}

void putInto(QObject *stack, QObject *view)
{
    if (stack && view)
        qobject_cast<QQuickItem *>(view)->setParentItem(qobject_cast<QQuickItem *>(stack));
}

/// To where the stack is.
void takeOut(QObject *stack, QObject *view)
{
    if (stack && view)
        qobject_cast<QQuickItem *>(view)->setParentItem(qobject_cast<QQuickItem *>(stack)->parentItem());
}

} // namespace

const QVector<QByteArray> &PlotCast::types()
{
    static const QVector<QByteArray> types{
        "PlotView",  "BarSeries",  "LineSeries", "AreaSeries",    "SeriesStore", "ValueAxis",     "LogValueAxis",
        "PlotTheme", "PlotCursor", "PlotRegion", "OverviewStrip", "PlotStack",   "MovingAverage", "SeriesDifference"};
    return types;
}

void PlotCast::addEverybody()
{
    for (const QByteArray &type : types())
        add(type);
    for (const char *type :
         {"PlotView", "LineSeries", "BarSeries", "SeriesStore", "SeriesStore", "MovingAverage", "SeriesDifference"})
        add(type);
}

void PlotCast::link()
{
    QObject *view = any("PlotView");
    QObject *series = any("PlotSeries");
    QObject *store = anyStore();
    const std::function<void()> ways[] = {
        [&] { callWith(view, "addSeries", "PlotSeries*", series); },
        [&] { declareIn(view, series); },
        [&] { declareIn(view, any(m_chance.oneIn(2) ? "PlotCursor" : "PlotRegion")); },
        [&] { writeObject(series, "store", store); },
        [&] { writeObject(series, "store", store); },
        [&] { writeObject(series, "xStore", store); },
        [&] { writeObject(view, "axisX", any("PlotAxis")); },
        [&] { writeObject(view, "axisY", any("PlotAxis")); },
        [&] { writeObject(view, "theme", any("PlotTheme")); },
        [&] { writeObject(view, "linkedTo", any("PlotView")); },
        [&] { writeObject(any("OverviewStrip"), "view", view); },
        [&] { writeObject(any("PlotRegion"), "series", series); },
        [&] { writeObject(any("MovingAverage"), "source", store); },
        [&] { writeObject(any("SeriesDifference"), m_chance.oneIn(2) ? "minuend" : "subtrahend", store); },
        [&] { putInto(any("PlotStack"), view); },
    };
    m_chance.pick(ways)();
}

void PlotCast::unlink()
{
    QObject *view = any("PlotView");
    QObject *series = any("PlotSeries");
    const std::function<void()> ways[] = {
        [&] { callWith(view, "removeSeries", "PlotSeries*", series); },
        [&] {
            if (view)
                QQmlListReference(view, "seriesList").clear();
        },
        [&] { writeObject(series, "store", nullptr); },
        [&] { writeObject(series, "xStore", nullptr); },
        [&] { writeObject(view, "axisX", nullptr); },
        [&] { writeObject(view, "axisY", nullptr); },
        [&] { writeObject(view, "theme", nullptr); },
        [&] { writeObject(view, "linkedTo", nullptr); },
        [&] { writeObject(any("OverviewStrip"), "view", nullptr); },
        [&] { writeObject(any("PlotRegion"), "series", nullptr); },
        [&] { writeObject(any("MovingAverage"), "source", nullptr); },
        [&] { writeObject(any("SeriesDifference"), m_chance.oneIn(2) ? "minuend" : "subtrahend", nullptr); },
        [&] { takeOut(any("PlotStack"), view); },
    };
    m_chance.pick(ways)();
}

/// One of its own, or one that another object fills.
QObject *PlotCast::anyStore()
{
    static const char *const types[] = {"SeriesStore", "SeriesStore", "MovingAverage", "SeriesDifference"};
    QObject *object = any(m_chance.pick(types));
    return object && !object->inherits("SeriesStore") ? object->property("store").value<QObject *>() : object;
}

void PlotCast::appendTo(QObject *store)
{
    const QVector<double> values = m_chance.series(m_chance.below(200));
    if (store)
        QMetaObject::invokeMethod(store, "append", Q_ARG(QVariant, QVariant::fromValue(values)));
}

void PlotCast::act()
{
    QObject *view = any("PlotView");
    QObject *series = any("PlotSeries");
    QObject *axis = any("PlotAxis");
    static const int keys[] = {Qt::Key_Left,      Qt::Key_Right, Qt::Key_Up,  Qt::Key_Down,  Qt::Key_Plus,
                               Qt::Key_Minus,     Qt::Key_Home,  Qt::Key_End, Qt::Key_0,     Qt::Key_F,
                               Qt::Key_Backspace, Qt::Key_L,     Qt::Key_C,   Qt::Key_Escape};
    static const Qt::KeyboardModifiers modifiers[] = {Qt::NoModifier, Qt::NoModifier, Qt::ShiftModifier,
                                                      Qt::ControlModifier};
    const std::function<void()> deeds[] = {
        [&] { appendTo(any("SeriesStore")); },
        [&] { appendTo(any("SeriesStore")); },
        [&] { call(any("SeriesStore"), "clear"); },
        [&] { write(series, "values", QVariant::fromValue(m_chance.series(m_chance.below(200)))); },
        [&] { write(series, "visible", m_chance.oneIn(2)); },
        [&] { write(series, "name", QStringLiteral("series %1").arg(m_chance.below(9))); },
        [&] { write(series, "start", m_chance.between(-10, 10)); },
        [&] { write(series, "width", m_chance.below(5)); },
        [&] { write(axis, "min", m_chance.between(-10, 100)); },
        [&] { write(axis, "max", m_chance.between(-10, 100)); },
        [&] { write(axis, "logScale", m_chance.oneIn(2)); },
        [&] { write(view, "followMode", m_chance.below(3)); },
        [&] { write(view, "overviewVisible", m_chance.oneIn(2)); },
        [&] { write(view, "width", 20 + m_chance.below(200)); },
        [&] { call(view, m_chance.oneIn(2) ? "zoomIn" : "zoomOut"); },
        [&] { call(view, m_chance.oneIn(2) ? "zoomReset" : "back"); },
        [&] { press(view, m_chance.pick(keys), m_chance.pick(modifiers)); },
        [&] { press(view, m_chance.pick(keys), m_chance.pick(modifiers)); },
        [&] { write(any("PlotCursor"), "x", m_chance.between(-10, 200)); },
        [&] { write(any("PlotRegion"), "to", m_chance.between(-10, 200)); },
        [&] { write(any("PlotTheme"), "colorScheme", m_chance.below(3)); },
        [&] { write(any("MovingAverage"), "depth", 1 + m_chance.below(9)); },
        [&] { write(any("SeriesDifference"), "factor", m_chance.between(-2, 2)); },
        [&] { write(any("PlotStack"), "height", m_chance.below(200)); },
    };
    m_chance.pick(deeds)();
}

void PlotCast::mistreat()
{
    QObject *object = any("QObject");
    if (!object)
        return;
    if (m_chance.oneIn(4))
        mistreatView(any("PlotView"));
    else if (m_chance.oneIn(6))
        mistreatSeries(any("PlotSeries"));
    else
        mistreatProperty(*object);
}

void PlotCast::mistreatView(QObject *view)
{
    const double a = hostileDouble(m_chance);
    const double b = hostileDouble(m_chance);
    QPointF mapped;
    const std::function<void()> ways[] = {
        [&] { QMetaObject::invokeMethod(view, "zoomTo", Q_ARG(double, a), Q_ARG(double, b)); },
        [&] { QMetaObject::invokeMethod(view, "panBy", Q_ARG(double, a)); },
        [&] {
            QMetaObject::invokeMethod(view, "mapToValue", Q_RETURN_ARG(QPointF, mapped), Q_ARG(QPointF, QPointF(a, b)));
        },
        [&] {
            QMetaObject::invokeMethod(view, "mapToPosition", Q_RETURN_ARG(QPointF, mapped),
                                      Q_ARG(QPointF, QPointF(a, b)));
        },
        [&] { callWith(view, "addSeries", "PlotSeries*", nullptr); },
        [&] { callWith(view, "removeSeries", "PlotSeries*", nullptr); },
        [&] { write(view, "height", m_chance.oneIn(2) ? 0.0 : 100.0 * m_chance.below(2)); },
        [&] { QMetaObject::invokeMethod(view, "saveValues", Q_ARG(QString, QStringLiteral("/nowhere/values"))); },
    };
    if (view)
        m_chance.pick(ways)();
}

void PlotCast::mistreatSeries(QObject *series)
{
    if (!series)
        return;
    double value = 0.0;
    QVariantMap found;
    QMetaObject::invokeMethod(series, "valueAt", Q_RETURN_ARG(double, value), Q_ARG(double, hostileDouble(m_chance)));
    QMetaObject::invokeMethod(series, "extremeIn", Q_RETURN_ARG(QVariantMap, found),
                              Q_ARG(double, hostileDouble(m_chance)), Q_ARG(double, hostileDouble(m_chance)));
    write(series, m_chance.oneIn(2) ? "values" : "xValues", QVariant::fromValue(hostileSeries(m_chance)));
}
