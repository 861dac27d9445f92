// SPDX-License-Identifier: MIT
#include "stress/Cast.h"

#include "stress/HostileValues.h"

#include <QMetaMethod>
#include <QMetaProperty>
#include <QQuickItem>
#include <QRectF>

#include <algorithm>
#include <cstring>

const QVector<QByteArray> &Cast::areaTypes()
{
    static const QVector<QByteArray> types{"ChartArea", "IChartArea"};
    return types;
}

const QVector<QByteArray> &Cast::plotterTypes()
{
    static const QVector<QByteArray> types{"BarPlotter", "BarPlotterDx", "AreaPlotter", "BarDecorator"};
    return types;
}

const QVector<QByteArray> &Cast::nodeTypes()
{
    static const QVector<QByteArray> types{"Filter1D", "IFIlterU64", "DecimatorU64", "RandomU64Data", "MovingAvarangeU64",
                                           "FixedDecimatorU64", "FixedDecimator2D", "MinimalWidth2D", "SCSVReader"};
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
    QObject *node = any("Filter1D");
    QObject *decorator = any("BarDecorator");
    switch (m_chance.below(8)) {
    case 0: if (area) callWith(*area, "addPlotter", "IPlotter*", plotter); break;
    case 1: if (plotter) writeObject(*plotter, "chartArea", area); break;
    case 2: if (area && plotter) writeObjects(*area, "plotter", {plotter, any("IPlotter")}); break;
    case 3: if (node) callWith(*node, "addFilter", "Filter1D*", any("Filter1D")); break;
    case 4: if (node) callWith(*node, "addPlotter", "IPlotter1D*", any("IPlotter1D")); break;
    case 5: if (decorator) callWith(*decorator, "addPlotter", "IPlotter*", plotter); break;
    case 6: if (QObject *decimator = any("DecimatorU64")) writeObject(*decimator, "chartArea", area); break;
    default: if (decorator && plotter) writeObjects(*decorator, "plotters", {any("IPlotter"), plotter}); break;
    }
}

void Cast::unlink()
{
    QObject *area = any("IChartArea");
    QObject *plotter = any("IPlotter");
    QObject *node = any("Filter1D");
    QObject *decorator = any("BarDecorator");
    switch (m_chance.below(7)) {
    case 0: if (area) callWith(*area, "removePlotter", "IPlotter*", plotter); break;
    case 1: if (plotter) writeObject(*plotter, "chartArea", nullptr); break;
    case 2: if (area) writeObjects(*area, "plotter", {}); break;
    case 3: if (node) callWith(*node, "removeFilter", "Filter1D*", any("Filter1D")); break;
    case 4: if (node) callWith(*node, "removePlotter", "IPlotter1D*", any("IPlotter1D")); break;
    case 5: if (decorator) callWith(*decorator, "removePlotter", "IPlotter*", plotter); break;
    default: if (decorator) QMetaObject::invokeMethod(decorator, "removeAllPlotter"); break;
    }
}

void Cast::act()
{
    QObject *area = any("IChartArea");
    QObject *plotter = any("IPlotter");
    QObject *node = any("Filter1D");
    QObject *decorator = any("BarDecorator");
    const QRectF rect(m_chance.between(-10, 10), 0.0, m_chance.between(1, 50), m_chance.between(1, 100));
    const QVariant series = QVariant::fromValue(m_chance.series(m_chance.below(200)));
    switch (m_chance.below(12)) {
    case 0: if (plotter) plotter->setProperty("data", series); break;
    case 1: if (node) node->setProperty("data", series); break;
    case 2: if (node) node->setProperty("area", rect); break;
    case 3: if (plotter) plotter->setProperty("plotterArea", rect); break;
    case 4: if (area) area->setProperty("zoomRect", rect); break;
    case 5: if (QObject *zoomable = any("ChartArea")) QMetaObject::invokeMethod(zoomable, "resetZoomView"); break;
    case 6: if (plotter) plotter->setProperty("visible", !plotter->property("visible").toBool()); break;
    case 7: if (plotter) plotter->setProperty("xOffset", m_chance.between(-5, 5)); break;
    case 8: if (plotter) plotter->setProperty("drawLayer", m_chance.below(8)); break;
    case 9: if (plotter) plotter->setProperty("color", QColor(m_chance.below(256), m_chance.below(256), 0)); break;
    case 10: if (area) area->setProperty("adaptChartHeight", m_chance.oneIn(2)); break;
    default:
        if (decorator) {
            const QPointer<QObject> alive(decorator);
            decorator->setProperty("active", !m_chance.oneIn(4));
            if (alive)
                decorator->setProperty("mouseX", m_chance.between(0, 100));
            if (alive)
                decorator->setProperty("mouseY", m_chance.between(0, 100));
        }
    }
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
    const int first = object.inherits("QQuickItem") ? QQuickItem::staticMetaObject.propertyCount() : QObject::staticMetaObject.propertyCount();
    const QMetaProperty property = meta.property(first + m_chance.below(meta.propertyCount() - first));
    if (!property.isWritable())
        return;
    if (m_chance.oneIn(3)) {
        property.write(&object, hostileVariant(m_chance));
        return;
    }
    switch (property.userType()) {
    case QMetaType::Double: property.write(&object, hostileDouble(m_chance)); break;
    case QMetaType::Int: property.write(&object, hostileInt(m_chance)); break;
    case QMetaType::UInt: property.write(&object, uint(hostileInt(m_chance))); break;
    case QMetaType::UChar: property.write(&object, uchar(hostileInt(m_chance))); break;
    case QMetaType::Bool: property.write(&object, m_chance.oneIn(2)); break;
    case QMetaType::QRectF: property.write(&object, hostileRect(m_chance)); break;
    default:
        if (property.userType() == qMetaTypeId<QVector<double>>())
            property.write(&object, QVariant::fromValue(hostileSeries(m_chance)));
    }
}

void Cast::mistreatInvokable(QObject &object)
{
    const QPointF point(hostileDouble(m_chance), hostileDouble(m_chance));
    QPointF mapped;
    switch (m_chance.below(8)) {
    case 0: callWith(object, "addPlotter", "IPlotter*", nullptr); break;
    case 1: callWith(object, "addPlotter", "IPlotter1D*", nullptr); break;
    case 2: callWith(object, "removePlotter", "IPlotter*", nullptr); break;
    case 3: callWith(object, "removePlotter", "IPlotter1D*", nullptr); break;
    case 4: callWith(object, "addFilter", "Filter1D*", nullptr); break;
    case 5: callWith(object, "removeFilter", "Filter1D*", nullptr); break;
    case 6: if (object.inherits("IChartArea")) QMetaObject::invokeMethod(&object, "mapPointToChart", Q_RETURN_ARG(QPointF, mapped), Q_ARG(QPointF, point)); break;
    default: if (object.inherits("IChartArea")) QMetaObject::invokeMethod(&object, m_chance.oneIn(8) ? "lock_update" : "unlock_update"); break;
    }
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

bool callWith(QObject &object, const char *method, const char *argumentType, QObject *argument)
{
    const QByteArray signature = QByteArray(method) + '(' + argumentType + ')';
    const int index = object.metaObject()->indexOfMethod(signature);
    // A pointer to an object has the same address as one to its first base.
    return index >= 0 && object.metaObject()->method(index).invoke(&object, Qt::DirectConnection, QGenericArgument(argumentType, &argument));
}

bool writeObject(QObject &object, const char *property, QObject *value)
{
    const int index = object.metaObject()->indexOfProperty(property);
    if (index < 0)
        return false;
    const QMetaProperty written = object.metaObject()->property(index);
    return written.write(&object, QVariant(written.userType(), static_cast<const void *>(&value)));
}

bool writeObjects(QObject &object, const char *property, const QList<QObject *> &values)
{
    const int index = object.metaObject()->indexOfProperty(property);
    if (index < 0)
        return false;
    const QMetaProperty written = object.metaObject()->property(index);
    return written.write(&object, QVariant(written.userType(), static_cast<const void *>(&values)));
}
