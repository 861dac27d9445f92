// SPDX-License-Identifier: MIT
#include "views/items/PlotFiles.h"
#include "views/items/PlotPicture.h"
#include "views/items/PlotView.h"

#include <QMetaMethod>

#include <qqmlinfo.h>

void PlotView::saveImage(const QString &file, double scale, const QSizeF &size)
{
    m_files->saveImage(file, scale, [this, scale, &size](QString &error) {
        layOutFor(size);
        const QImage picture = pictureOf(*this, scale, error);
        layOutFor({});
        return picture;
    });
}

void PlotView::layOutFor(const QSizeF &size)
{
    m_layoutSize = size;
    layOut();
    layOutOverview();
}

QSizeF PlotView::layoutSize() const
{
    return isLayoutSize(m_layoutSize) ? m_layoutSize : this->size();
}

void PlotView::saveValues(const QString &file)
{
    m_files->saveValues(file, {this});
}

void PlotView::tellSaved(const QString &file, const QString &error)
{
    if (!error.isEmpty() && !isSignalConnected(QMetaMethod::fromSignal(&PlotView::saved)))
        qmlWarning(this) << error; // or it would go unheard
    emit saved(file, error);
}
