// SPDX-License-Identifier: MIT
#include "MetaTable.h"

#include <QColor>
#include <QFont>
#include <QGuiApplication>
#include <QHash>
#include <QMetaEnum>
#include <QMetaMethod>
#include <QMetaProperty>
#include <QPointF>
#include <QQmlListReference>
#include <QQmlProperty>
#include <QRectF>
#include <QVariant>

#include <cmath>

namespace {

/// What QML calls a C++ type.
QString qmlType(QString type)
{
    static const QHash<QString, QString> names{
        {"double", "real"},
        {"QString", "string"},
        {"QStringList", "list of string"},
        {"QColor", "color"},
        {"QFont", "font"},
        {"QUrl", "url"},
        {"QRectF", "rect"},
        {"QPointF", "point"},
        {"QVariantList", "list"},
        {"QVariantMap", "object"},
        {"QQmlListProperty<QObject>", "list of QtObject"},
        {"QVariant", "var"},
        {"QJSValue", "var"},
        {"QVector<double>", "list of real"},
        {"uchar", "int 0 to 255"},
        {"uint", "int, at least 0"},
        {"QList<IPlotter*>", "list of IPlotter"},
        {"QList<QObject*>", "list of QtObject"},
        {"QVector<IPlotter1D*>", "list of IPlotter1D"},
    };
    if (names.contains(type))
        return names.value(type);
    return type.remove('*').remove(QLatin1String("const "));
}

QString number(double value)
{
    if (std::isnan(value))
        return QStringLiteral("NaN");
    if (std::isinf(value))
        return value < 0.0 ? QStringLiteral("-Infinity") : QStringLiteral("Infinity");
    return QString::number(value, 'g', 10);
}

/// As one writes it in QML.
QString literal(const QVariant &value)
{
    if (value.canConvert<QObject *>())
        return value.value<QObject *>() ? QStringLiteral("an object") : QStringLiteral("null");
    switch (value.userType()) {
    case QMetaType::QString:
        return '"' + value.toString() + '"';
    case QMetaType::Double:
        return number(value.toDouble());
    case QMetaType::QColor: {
        const QColor color = value.value<QColor>();
        return '"' + color.name(color.alpha() == 255 ? QColor::HexRgb : QColor::HexArgb) + '"';
    }
    case QMetaType::QRectF: {
        const QRectF r = value.toRectF();
        return QStringLiteral("Qt.rect(%1, %2, %3, %4)")
            .arg(number(r.x()), number(r.y()), number(r.width()), number(r.height()));
    }
    case QMetaType::QFont:
        return value.value<QFont>() == QGuiApplication::font() ? QStringLiteral("Qt.application.font")
                                                               : value.toString();
    case QMetaType::QVariantMap:
        return value.toMap().isEmpty() ? QStringLiteral("{}") : QStringLiteral("an object");
    case QMetaType::UChar:
        return QString::number(value.value<uchar>());
    case QMetaType::Nullptr:
        return QStringLiteral("null");
    default:
        break;
    }
    if (value.userType() == qMetaTypeId<QQmlListReference>())
        return value.value<QQmlListReference>().count() == 0 ? QStringLiteral("[]") : QStringLiteral("a list");
    if (value.canConvert<QVariantList>() || QString(value.typeName()).contains(QLatin1String("List<"))
        || QString(value.typeName()).contains(QLatin1String("Vector<")))
        return value.toList().isEmpty() ? QStringLiteral("[]") : QStringLiteral("a list");
    return value.isValid() ? value.toString() : QStringLiteral("undefined");
}

/// A value of an enumeration, with its type's name if that is another than the property's.
QString enumerator(const QMetaProperty &property, const QVariant &value)
{
    const QMetaEnum type = property.enumerator();
    const QString key = type.valueToKey(value.toInt());
    const bool isOwn = property.enclosingMetaObject()->className() == QByteArray(type.scope());
    return isOwn ? key : QString(type.scope()) + '.' + key;
}

/// The C++ class behind an object, as QML calls it.
QString baseType(const QObject &object)
{
    const QMetaObject *meta = object.metaObject();
    while (!meta->d.static_metacall) // made by QML
        meta = meta->superClass();
    return QString(meta->className()).remove(QLatin1String("QQuick"));
}

QString propertyRow(const QMetaProperty &property, QObject &object)
{
    // An alias may have a type without a name: QML knows what it is, the meta-object does not.
    const QVariant value = QQmlProperty(&object, property.name()).read();
    const auto *target = value.value<QObject *>();
    const bool isAlias = !property.isWritable() && target;
    const QString type = isAlias ? baseType(*target)
        : property.isEnumType()  ? QStringLiteral("enumeration")
                                 : qmlType(property.typeName());
    const QString access = property.isWritable() ? QString() : QStringLiteral(", read-only");
    const QString now = property.isEnumType() ? enumerator(property, value) : literal(value);
    return QStringLiteral("| `%1` | %2%3 | `%4`").arg(property.name(), type, access, now);
}

QString signature(const QMetaMethod &method)
{
    QStringList arguments;
    const QList<QByteArray> types = method.parameterTypes();
    const QList<QByteArray> names = method.parameterNames();
    for (int i = 0; i < types.size(); ++i) {
        const QString type = qmlType(types[i]);
        arguments << (type == QLatin1String("var") ? QString(names[i]) : type + ' ' + names[i]);
    }
    return method.name() + '(' + arguments.join(QStringLiteral(", ")) + ')';
}

bool isNotifySignal(const QMetaObject &meta, int method)
{
    for (int i = meta.propertyOffset(); i < meta.propertyCount(); ++i) {
        if (meta.property(i).notifySignalIndex() == method)
            return true;
    }
    return false;
}

} // namespace

QStringList MetaTable::properties(const QMetaObject &meta, QObject &object)
{
    QStringList rows;
    for (int i = meta.propertyOffset(); i < meta.propertyCount(); ++i) {
        const QMetaProperty property = meta.property(i);
        const QString notify = property.hasNotifySignal() ? '`' + property.notifySignal().name() + '`' : "none";
        rows << propertyRow(property, object) + " | " + notify;
    }
    return rows;
}

QStringList MetaTable::componentProperties(const QMetaObject &meta, QObject &object)
{
    QStringList rows;
    for (int i = meta.propertyOffset(); i < meta.propertyCount(); ++i)
        rows << propertyRow(meta.property(i), object);
    return rows;
}

QStringList MetaTable::signalRows(const QMetaObject &meta)
{
    QStringList rows;
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i) {
        const QMetaMethod method = meta.method(i);
        if (method.methodType() == QMetaMethod::Signal && !isNotifySignal(meta, i))
            rows << QStringLiteral("| `%1`").arg(signature(method));
    }
    return rows;
}

QStringList MetaTable::functions(const QMetaObject &meta)
{
    QStringList rows;
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i) {
        const QMetaMethod method = meta.method(i);
        const bool isShorthand = method.attributes() & QMetaMethod::Cloned; // with arguments left out
        if (method.methodType() == QMetaMethod::Signal || method.access() != QMetaMethod::Public || isShorthand)
            continue;
        const QString result = qmlType(method.typeName());
        const bool says = result != QLatin1String("void") && result != QLatin1String("var");
        rows << QStringLiteral("| `%1%2`").arg(signature(method), says ? " : " + result : QString());
    }
    return rows;
}
