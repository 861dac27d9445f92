// SPDX-License-Identifier: MIT
#include "stress/Cast.h"

#include "plugin/TypeList.h"
#include "stress/HostileValues.h"

#include <QMetaMethod>
#include <QMetaProperty>
#include <QQuickItem>
#include <QRectF>

#include <algorithm>
#include <functional>

namespace {

void write(QObject *object, const char *property, const QVariant &value)
{
    if (object)
        object->setProperty(property, value);
}

void call(QObject *object, const char *method)
{
    if (object)
        QMetaObject::invokeMethod(object, method);
}

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

Cast::Cast(Chance &chance, Creator creator) : m_chance(chance), m_creator(std::move(creator)) {}

Cast::~Cast()
{
    QVector<QObject *> left = living();
    m_chance.shuffle(left);
    for (QObject *object : qAsConst(left))
        delete object;
}

QObject *Cast::add(const QByteArray &type)
{
    QObject *object = m_creator(type);
    if (object)
        m_objects.append(object);
    return object;
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

QVector<QObject *> Cast::living()
{
    m_objects.erase(std::remove(m_objects.begin(), m_objects.end(), nullptr), m_objects.end());
    QVector<QObject *> objects;
    for (const QPointer<QObject> &object : qAsConst(m_objects))
        objects.append(object);
    return objects;
}

bool Cast::isEmpty()
{
    return living().isEmpty();
}

QObject *Cast::any(const char *className)
{
    QVector<QObject *> fitting;
    for (QObject *object : living()) {
        if (object->inherits(className))
            fitting.append(object);
    }
    return fitting.isEmpty() ? nullptr : m_chance.pick(fitting);
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

void Cast::mistreatProperty(QObject &object)
{
    const QMetaObject &meta = *object.metaObject();
    // Those of the item itself are Qt's business.
    const QMetaObject &base = object.inherits("QQuickItem") ? QQuickItem::staticMetaObject : QObject::staticMetaObject;
    const int first = base.propertyCount();
    const QMetaProperty property = meta.property(first + m_chance.below(meta.propertyCount() - first));
    if (!property.isWritable())
        return;
    const QVariant ofItsType = hostileValue(m_chance, property.userType());
    property.write(&object, ofItsType.isValid() && !m_chance.oneIn(3) ? ofItsType : hostileVariant(m_chance));
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

void Cast::destroyOne()
{
    QObject *object = any("QObject");
    if (!object)
        return;
    if (auto *item = qobject_cast<QQuickItem *>(object); item && m_chance.oneIn(3))
        item->setParentItem(nullptr);
    if (m_chance.oneIn(2))
        delete object;
    else
        object->deleteLater();
}

bool callWith(QObject *object, const char *method, const char *argumentType, QObject *argument)
{
    if (!object)
        return false;
    const QByteArray signature = QByteArray(method) + '(' + argumentType + ')';
    const int index = object->metaObject()->indexOfMethod(signature);
    if (index < 0)
        return false;
    // A pointer to an object has the same address as one to its first base.
    const QGenericArgument typed(argumentType, &argument);
    return object->metaObject()->method(index).invoke(object, Qt::DirectConnection, typed);
}

bool writeObject(QObject *object, const char *property, QObject *value)
{
    const int index = object ? object->metaObject()->indexOfProperty(property) : -1;
    if (index < 0)
        return false;
    const QMetaProperty written = object->metaObject()->property(index);
    return written.write(object, QVariant(written.userType(), static_cast<const void *>(&value)));
}

bool writeObjects(QObject *object, const char *property, const QList<QObject *> &values)
{
    const int index = object ? object->metaObject()->indexOfProperty(property) : -1;
    if (index < 0)
        return false;
    const QMetaProperty written = object->metaObject()->property(index);
    return written.write(object, QVariant(written.userType(), static_cast<const void *>(&values)));
}
