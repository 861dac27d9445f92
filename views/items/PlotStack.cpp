// SPDX-License-Identifier: MIT
#include "views/items/PlotStack.h"

#include "views/items/PlotFiles.h"
#include "views/items/PlotFrame.h"
#include "views/items/PlotPicture.h"
#include "views/items/PlotView.h"

#include <QMetaMethod>
#include <QScopedValueRollback>

#include <qqmlinfo.h>

#include <algorithm>
#include <cmath>

PlotStack::PlotStack(QQuickItem *parent) : QQuickItem(parent), m_files(std::make_unique<PlotFiles>())
{
    connect(m_files.get(), &PlotFiles::saved, this, &PlotStack::tellSaved);
}

PlotStack::~PlotStack()
{
    const QVector<PlotView *> views = allViews();
    for (PlotView *view : views)
        letGo(*view);
}

void PlotStack::saveImage(const QString &file, double scale, const QSizeF &size)
{
    m_files->saveImage(file, scale, [this, scale, &size](QString &error) {
        m_layoutSize = size;
        layOut();
        const QImage picture = pictureOf(*this, layoutSize(), shownViews(), scale, error);
        m_layoutSize = QSizeF();
        layOut();
        return picture;
    });
}

void PlotStack::saveValues(const QString &file)
{
    m_files->saveValues(file, shownViews());
}

void PlotStack::tellSaved(const QString &file, const QString &error)
{
    if (!error.isEmpty() && !isSignalConnected(QMetaMethod::fromSignal(&PlotStack::saved)))
        qmlWarning(this) << error; // or it would go unheard
    emit saved(file, error);
}

QSizeF PlotStack::layoutSize() const
{
    return isLayoutSize(m_layoutSize) ? m_layoutSize : size();
}

QVector<PlotView *> PlotStack::allViews() const
{
    QVector<PlotView *> views;
    const QList<QQuickItem *> items = childItems();
    for (QQuickItem *item : items) {
        if (auto *view = qobject_cast<PlotView *>(item))
            views.append(view);
    }
    return views;
}

QVector<PlotView *> PlotStack::shownViews() const
{
    QVector<PlotView *> views = allViews();
    const auto isHidden = [this](const PlotView *view) { return isVisible() && !view->isVisible(); };
    views.erase(std::remove_if(views.begin(), views.end(), isHidden), views.end());
    return views;
}

void PlotStack::geometryChanged(const QRectF &now, const QRectF &before)
{
    QQuickItem::geometryChanged(now, before);
    layOut();
}

void PlotStack::itemChange(ItemChange kind, const ItemChangeData &data)
{
    QQuickItem::itemChange(kind, data);
    auto *const view = kind == ItemChildAddedChange || kind == ItemChildRemovedChange
        ? qobject_cast<PlotView *>(data.item) // null of one that's being destroyed
        : nullptr;
    if (view && kind == ItemChildAddedChange)
        take(*view);
    else if (view)
        letGo(*view);
    if (kind == ItemChildAddedChange || kind == ItemChildRemovedChange) {
        link();
        layOut();
    }
}

void PlotStack::take(PlotView &view)
{
    connect(&view, &QQuickItem::visibleChanged, this, &PlotStack::layOut);
    connect(&view, &PlotView::plotAreaChanged, this, &PlotStack::layOut); // the room around it may be another
}

void PlotStack::letGo(PlotView &view)
{
    disconnect(&view, nullptr, this, nullptr);
    view.frame()->setTellsX(true);
    view.setLinkedTo(nullptr);
    const QVector<PlotView *> others = allViews();
    for (PlotView *other : others) {
        if (other->linkedTo() == &view)
            other->setLinkedTo(nullptr);
    }
}

void PlotStack::link()
{
    const QVector<PlotView *> views = allViews();
    if (!views.isEmpty() && views.contains(views.first()->linkedTo()))
        views.first()->setLinkedTo(nullptr); // it came before the one that led
    for (int i = 1; i < views.size(); ++i)
        views.at(i)->setLinkedTo(views.first());
}

void PlotStack::layOut()
{
    if (m_isLayingOut)
        return;
    const QScopedValueRollback<bool> layingOut(m_isLayingOut, true);
    const QVector<PlotView *> views = shownViews();
    double room = 0.0;
    for (PlotView *view : views) {
        view->frame()->setTellsX(view == views.last());
        room += view->plotMargins().top() + view->plotMargins().bottom();
    }
    const double plot = std::max(0.0, layoutSize().height() - room) / std::max(1, int(views.size()));
    double top = 0.0;
    double bottom = 0.0;
    for (PlotView *view : views) {
        const double ratio = view->pixelRatio();
        bottom += plot + view->plotMargins().top() + view->plotMargins().bottom();
        const double end = std::round(bottom * ratio) / ratio; // on whole device pixels
        view->setPosition({0.0, top});
        view->setSize({layoutSize().width(), end - top});
        top = end;
    }
}
