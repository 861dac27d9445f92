// SPDX-License-Identifier: MIT
#include "stress/Troupe.h"

#include "stress/HostileValues.h"

#include <QMetaProperty>
#include <QQuickItem>

#include <algorithm>

Troupe::Troupe(Chance &chance, Creator creator) : m_chance(chance), m_creator(std::move(creator)) {}

Troupe::~Troupe()
{
    m_chance.shuffle(m_objects);
    while (!m_objects.isEmpty())
        delete m_objects.takeLast().data(); // null if another one took it along
}

QObject *Troupe::add(const QByteArray &type)
{
    QObject *object = m_creator(type);
    if (object)
        m_objects.append(object);
    return object;
}

QVector<QObject *> Troupe::living()
{
    m_objects.erase(std::remove(m_objects.begin(), m_objects.end(), nullptr), m_objects.end());
    QVector<QObject *> objects;
    for (const QPointer<QObject> &object : qAsConst(m_objects))
        objects.append(object);
    return objects;
}

bool Troupe::isEmpty()
{
    return living().isEmpty();
}

QObject *Troupe::any(const char *className)
{
    QVector<QObject *> fitting;
    for (QObject *object : living()) {
        if (object->inherits(className))
            fitting.append(object);
    }
    return fitting.isEmpty() ? nullptr : m_chance.pick(fitting);
}

void Troupe::mistreatProperty(QObject &object)
{
    const QMetaObject &meta = *object.metaObject();
    // Those of the item itself are Qt's business.
    const QMetaObject &base = object.inherits("QQuickItem") ? QQuickItem::staticMetaObject : QObject::staticMetaObject;
    const int first = base.propertyCount();
    if (meta.propertyCount() == first)
        return;
    const QMetaProperty property = meta.property(first + m_chance.below(meta.propertyCount() - first));
    if (!property.isWritable())
        return;
    const QVariant ofItsType =
        property.isEnumType() ? hostileInt(m_chance) : hostileValue(m_chance, property.userType());
    property.write(&object, ofItsType.isValid() && !m_chance.oneIn(3) ? ofItsType : hostileVariant(m_chance));
}

void Troupe::destroyOne()
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
