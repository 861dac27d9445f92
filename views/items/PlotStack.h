// SPDX-License-Identifier: MIT
#pragma once

#include <QQuickItem>
#include <QVector>

#include <memory>

class PlotFiles;
class PlotView;

/// Views beneath each other that share x: their plots are equally high, stand exactly over each other and show the same
/// part of x, which the first one leads. Only the lowest one has labels and the title of x. A view that is hidden takes
/// no room and is not saved; while the stack is hidden itself, all count. Views are its children, in their order from
/// above; it sets their places, sizes and links. C++ makes a view first and then gives it its parent. GUI thread.
class PlotStack : public QQuickItem
{
    Q_OBJECT

public:
    explicit PlotStack(QQuickItem *parent = nullptr);
    ~PlotStack() override;

    // As the functions of a PlotView: for all views that are shown, in one file.

    Q_INVOKABLE void saveImage(const QString &file, double scale = 1.0, const QSizeF &size = QSizeF());
    Q_INVOKABLE void saveValues(const QString &file);

signals:
    /// As that of a PlotView: a warning instead of an error that nothing is connected for.
    void saved(const QString &file, const QString &error);

protected:
    void geometryChanged(const QRectF &now, const QRectF &before) override;
    void itemChange(ItemChange kind, const ItemChangeData &data) override;

private:
    QVector<PlotView *> allViews() const;
    QVector<PlotView *> shownViews() const;
    void take(PlotView &view);
    void letGo(PlotView &view);
    void link();
    void layOut();
    QSizeF layoutSize() const;
    void tellSaved(const QString &file, const QString &error);

    std::unique_ptr<PlotFiles> m_files;
    QSizeF m_layoutSize; ///< of the picture that is being painted; else empty
    bool m_isLayingOut = false;
};
