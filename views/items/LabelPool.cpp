// SPDX-License-Identifier: MIT
#include "views/items/LabelPool.h"

#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickItem>
#include <QVariant>

#include <algorithm>
#include <cmath>
#include <utility>

LabelPool::LabelPool(QQuickItem *parent) : m_parent(parent) {}

LabelPool::~LabelPool() = default;

void LabelPool::show(const QVector<SLabel> &labels, const QFont &font, const QColor &color, double pixelRatio)
{
    if (m_font != font || m_color != color) {
        m_font = font;
        m_color = color;
        for (QQuickItem *item : qAsConst(m_items)) {
            item->setProperty("font", m_font);
            item->setProperty("color", m_color);
        }
        delete std::exchange(m_letters, nullptr);
    }
    QVector<QQuickItem *> unused = m_items;
    QVector<QQuickItem *> shown(labels.size(), nullptr);
    for (int i = 0; i < labels.size(); ++i)
        shown[i] = takeWithText(unused, labels[i].text);
    for (int i = 0; i < labels.size(); ++i) {
        if (!shown[i])
            shown[i] = unused.isEmpty() ? made() : unused.takeLast();
        if (!shown[i])
            return; // no engine, no text
        shown[i]->setProperty("text", labels[i].text);
        place(shown[i], labels[i], pixelRatio);
    }
    for (QQuickItem *item : qAsConst(unused))
        item->setVisible(false);
    if (!m_letters && !labels.isEmpty())
        bringLetters();
}

/// The scene graph looks first at what came last, seen or not. With all letters at once the texture of glyphs has its
/// size from the start: one that grows is copied by a shader, and making that takes a third of the first frame.
void LabelPool::bringLetters()
{
    QString letters;
    for (char letter = '!'; letter <= '~'; ++letter)
        letters += QLatin1Char(letter);
    m_letters = made();
    if (!m_letters)
        return;
    m_items.removeLast();
    // A letter has up to four pictures, by the part of a pixel that it begins at.
    m_letters->setProperty("text", (letters + QLatin1Char('.')).repeated(5));
    m_letters->setVisible(false);
}

QQuickItem *LabelPool::takeWithText(QVector<QQuickItem *> &unused, const QString &text) const
{
    const auto found = std::find_if(unused.begin(), unused.end(),
                                    [&](QQuickItem *item) { return item->property("text").toString() == text; });
    if (found == unused.end())
        return nullptr;
    QQuickItem *const item = *found;
    unused.erase(found);
    return item;
}

QQuickItem *LabelPool::made()
{
    if (!m_component) {
        QQmlEngine *const engine = qmlEngine(m_parent->parentItem());
        if (!engine)
            return nullptr;
        m_component = new QQmlComponent(engine, m_parent);
        // Native text is the sharper one for small letters that stand still. Screen readers get the view's sentence
        // instead.
        m_component->setData(
            "import QtQuick 2.14\nText { renderType: Text.NativeRendering; textFormat: Text.PlainText }", QUrl());
    }
    auto *const item = qobject_cast<QQuickItem *>(m_component->create());
    if (!item)
        return nullptr;
    item->setParent(m_parent);
    item->setParentItem(m_parent);
    item->setProperty("font", m_font);
    item->setProperty("color", m_color);
    m_items.append(item);
    return item;
}

void LabelPool::place(QQuickItem *item, const SLabel &label, double pixelRatio) const
{
    const double width = item->implicitWidth();
    const double height = item->implicitHeight();
    QPointF corner = label.place - QPointF(width * 0.5, height * 0.5);
    if (label.anchor == SLabel::Left)
        corner.setX(label.place.x());
    else if (label.anchor == SLabel::Right)
        corner.setX(label.place.x() - width);
    else if (label.anchor == SLabel::Top)
        corner.setY(label.place.y());
    const auto whole = [pixelRatio](double place) { return std::round(place * pixelRatio) / pixelRatio; };
    item->setRotation(label.anchor == SLabel::CentreUpwards ? -90.0 : 0.0);
    item->setPosition({whole(corner.x()), whole(corner.y())});
    item->setVisible(true);
}
