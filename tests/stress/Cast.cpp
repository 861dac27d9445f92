// SPDX-License-Identifier: MIT
#include "stress/Cast.h"

#include "plugin/TypeList.h"
#include "stress/HostileValues.h"
#include "stress/MetaCalls.h"

#include <QColor>
#include <QRectF>

#include <functional>

namespace {

QVector<QByteArray> typesOf(TypeKind kind)
{
    QVector<QByteArray> names;
    for (const STypeName &type : typeNames) {
        if (type.kind == kind)
            names.append(type.name);
    }
    return names;
}

} // namespace

const QVector<QByteArray> &Cast::areaTypes()
{
    static const QVector<QByteArray> types = typesOf(TypeKind::Area);
    return types;
}

const QVector<QByteArray> &Cast::plotterTypes()
{
    static const QVector<QByteArray> types = typesOf(TypeKind::Plotter);
    return types;
}

const QVector<QByteArray> &Cast::nodeTypes()
{
    static const QVector<QByteArray> types = typesOf(TypeKind::Node);
    return types;
}

void Cast::addEverybody()
{
    for (const auto &types : {areaTypes(), plotterTypes(), nodeTypes()}) {
        for (const QByteArray &type : types)
            add(type);
    }
    add("ChartArea");
    add("BarPlotter");
    add("Filter1D");
}

void Cast::link()
{
    QObject *area = any("IChartArea");
    QObject *plotter = any("IPlotter");
    QObject *other = any("IPlotter");
    QObject *node = any("Filter1D");
    QObject *decorator = any("BarDecorator");
    const std::function<void()> ways[] = {
        [&] { callWith(area, "addPlotter", "IPlotter*", plotter); },
        [&] { writeObject(plotter, "chartArea", area); },
        [&] {
            writeObjects(area, "plotter", {plotter, other});
        },
        [&] { callWith(node, "addFilter", "Filter1D*", any("Filter1D")); },
        [&] { callWith(node, "addPlotter", "IPlotter1D*", any("IPlotter1D")); },
        [&] { callWith(decorator, "addPlotter", "IPlotter*", plotter); },
        [&] {
            writeObjects(decorator, "plotters", {other, plotter});
        },
        [&] { writeObject(any("DecimatorU64"), "chartArea", area); },
    };
    m_chance.pick(ways)();
}

void Cast::unlink()
{
    QObject *area = any("IChartArea");
    QObject *plotter = any("IPlotter");
    QObject *node = any("Filter1D");
    QObject *decorator = any("BarDecorator");
    const std::function<void()> ways[] = {
        [&] { callWith(area, "removePlotter", "IPlotter*", plotter); },
        [&] { writeObject(plotter, "chartArea", nullptr); },
        [&] { writeObjects(area, "plotter", {}); },
        [&] { callWith(node, "removeFilter", "Filter1D*", any("Filter1D")); },
        [&] { callWith(node, "removePlotter", "IPlotter1D*", any("IPlotter1D")); },
        [&] { callWith(decorator, "removePlotter", "IPlotter*", plotter); },
        [&] { call(decorator, "removeAllPlotter"); },
    };
    m_chance.pick(ways)();
}

void Cast::act()
{
    QObject *area = any("IChartArea");
    QObject *plotter = any("IPlotter");
    QObject *node = any("Filter1D");
    QObject *decorator = any("BarDecorator");
    const QRectF rect(m_chance.between(-10, 10), 0.0, m_chance.between(1, 50), m_chance.between(1, 100));
    const QVariant series = QVariant::fromValue(m_chance.series(m_chance.below(200)));
    const std::function<void()> deeds[] = {
        [&] { write(plotter, "data", series); },
        [&] { write(node, "data", series); },
        [&] { write(node, "area", rect); },
        [&] { write(plotter, "plotterArea", rect); },
        [&] { write(any("ChartArea"), "zoomRect", rect); },
        [&] { call(any("ChartArea"), "resetZoomView"); },
        [&] { write(plotter, "visible", m_chance.oneIn(2)); },
        [&] { write(plotter, "xOffset", m_chance.between(-5, 5)); },
        [&] { write(plotter, "drawLayer", m_chance.below(8)); },
        [&] { write(plotter, "color", QColor(m_chance.below(256), m_chance.below(256), 0)); },
        [&] { write(area, "adaptAreaToPlotters", m_chance.oneIn(2)); },
        [&] { write(any("ChartArea"), "adaptChartHeight", m_chance.oneIn(2)); },
        [&] { write(decorator, "active", !m_chance.oneIn(4)); },
        [&] { write(decorator, "mouseX", m_chance.between(0, 100)); },
        [&] { write(decorator, "mouseY", m_chance.between(0, 100)); },
    };
    m_chance.pick(deeds)();
}

void Cast::mistreat()
{
    QObject *object = any("QObject");
    if (!object)
        return;
    if (m_chance.oneIn(3))
        mistreatInvokable(*object);
    else
        mistreatProperty(*object);
}

void Cast::mistreatInvokable(QObject &object)
{
    QObject *area = object.inherits("IChartArea") ? &object : nullptr;
    QPointF mapped;
    const QPointF point(hostileDouble(m_chance), hostileDouble(m_chance));
    const std::function<void()> ways[] = {
        [&] { callWith(&object, "addPlotter", "IPlotter*", nullptr); },
        [&] { callWith(&object, "addPlotter", "IPlotter1D*", nullptr); },
        [&] { callWith(&object, "removePlotter", "IPlotter*", nullptr); },
        [&] { callWith(&object, "removePlotter", "IPlotter1D*", nullptr); },
        [&] { callWith(&object, "addFilter", "Filter1D*", nullptr); },
        [&] { callWith(&object, "removeFilter", "Filter1D*", nullptr); },
        [&] { call(area, m_chance.oneIn(8) ? "lock_update" : "unlock_update"); },
        [&] {
            if (area)
                QMetaObject::invokeMethod(area, "mapPointToChart", Q_RETURN_ARG(QPointF, mapped),
                                          Q_ARG(QPointF, point));
        },
    };
    m_chance.pick(ways)();
}
