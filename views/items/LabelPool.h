// SPDX-License-Identifier: MIT
#pragma once

#include <QColor>
#include <QFont>
#include <QPointF>
#include <QString>
#include <QVector>

class QQmlComponent;
class QQuickItem;

/// Where a text stands: `place` is the middle of its left edge, its right edge, its upper edge or the text itself.
struct SLabel
{
    enum Anchor { Left, Right, Top, Centre, CentreUpwards };

    QString text;
    QPointF place;
    Anchor anchor = Centre;
};

/// Shows texts as Text items, which are kept and moved: a label that's panned is laid out once. Shows nothing in a
/// scene without a QML engine. GUI thread.
class LabelPool
{
public:
    explicit LabelPool(QQuickItem *parent);
    ~LabelPool();
    LabelPool(const LabelPool &) = delete;
    LabelPool &operator=(const LabelPool &) = delete;

    /// Texts stand on whole device pixels.
    void show(const QVector<SLabel> &labels, const QFont &font, const QColor &color, double pixelRatio);
    const QVector<QQuickItem *> &items() const { return m_items; }

private:
    QQuickItem *takeWithText(QVector<QQuickItem *> &unused, const QString &text) const;
    QQuickItem *made();
    void bringLetters();
    void place(QQuickItem *item, const SLabel &label, double pixelRatio) const;

    QQuickItem *const m_parent;
    QQmlComponent *m_component = nullptr; ///< a child of the parent
    QVector<QQuickItem *> m_items;        ///< children of the parent
    QQuickItem *m_letters = nullptr;      ///< one of them, never seen: all letters
    QFont m_font;
    QColor m_color;
};
