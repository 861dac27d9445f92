// SPDX-License-Identifier: MIT
#include "benchmarks/compare/QuickStage.h"

#include <QQuickItem>
#include <QVariantMap>

QuickStage::QuickStage()
{
    m_view.setColor(Qt::black);
    m_view.resize(windowWidth, windowHeight);
    m_view.setResizeMode(QQuickView::SizeRootObjectToView);
    QObject::connect(
        &m_view, &QQuickWindow::frameSwapped, &m_view, [] { frameFinished(); }, Qt::DirectConnection);
}

QQuickItem *QuickStage::open(const QUrl &file, const QVariantMap &properties)
{
    m_view.setInitialProperties(properties);
    m_view.setSource(file);
    if (!m_view.rootObject())
        qFatal("%s cannot be loaded", qPrintable(file.toString()));
    m_view.show();
    return m_view.rootObject();
}

void QuickStage::open(QQuickItem *item)
{
    item->setParent(&m_view);
    item->setParentItem(m_view.contentItem());
    item->setSize(QSizeF(windowWidth, windowHeight));
    m_view.show();
}
