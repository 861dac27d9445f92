// SPDX-License-Identifier: MIT
#pragma once

#include "common/Export.h"
#include "common/Link.h"
#include "plotters/IPlotter1D.h"

#include <QObject>
#include <QPointer>
#include <QRectF>
#include <QString>
#include <QVector>

/// A data node: holds a series and the rectangle over which it is spread, and passes both to its child nodes and
/// plotters. This class passes on what it gets; subclasses transform it in _filter_func().
///
/// Sample i of n lies at x = area.left + i * w and occupies [x, x + w), w = area.width / n. All on the GUI thread and
/// synchronous: setData() returns when the whole subtree has been fed. A node owns neither children nor plotters, and
/// forgets those that are destroyed. A tree with a cycle is cut off with a warning.
class VORLIX_EXPORT Filter1D : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QVector<double> data READ data WRITE setData NOTIFY dataChanged)
    /// In data coordinates.
    Q_PROPERTY(QRectF area READ area WRITE setArea NOTIFY areaChanged)
    /// Handed down to children when they are added.
    Q_PROPERTY(QString dataID READ dataID WRITE setDataID NOTIFY dataIDChanged)

public:
    explicit Filter1D(QObject *parent = nullptr);
    ~Filter1D() override;

    // the virtual interface; its order is fixed

    virtual const QVector<double> &data() const;
    /// Transforms `data` and publishes the result if it changed: the only way in for a new series.
    virtual void setData(const QVector<double> &data);
    virtual const QRectF &area() const;
    /// Passed on to children and plotters. Does not transform the series again.
    virtual void setArea(const QRectF &area);
    virtual const QString &dataID() const;
    /// Not passed on to children that are already there.
    virtual void setDataID(const QString &dataID);
    /// The largest sample whose bin `rect` touches, at least 0.0.
    virtual double max_in(const QRectF &rect);
    /// The sample that index_at() names for x; 0.0 where it names none.
    virtual double value_at(double x) const;
    /// The sample nearest to x, or -1. Deliberate: rounds, so the right half of a bin belongs to the next sample; and
    /// an area that does not contain (x, 0), such as one of height 0, has no samples.
    virtual int index_at(double x) const;
    /// The bar of sample index_at(point.x), from 0 up to its value; a null rectangle without such a sample.
    virtual const QRectF area_at(const QPointF &point) const;

    // linking

    /// Appends a child and hands it dataID, area and series, in that order. Null and a listed child are ignored.
    Q_INVOKABLE void addFilter(Filter1D *filter);
    /// The child keeps what it was given.
    Q_INVOKABLE void removeFilter(Filter1D *filter);
    /// Appends a plotter and hands it area and series. Null and a listed plotter are ignored.
    Q_INVOKABLE void addPlotter(IPlotter1D *plotter);
    /// The plotter keeps what it was given.
    Q_INVOKABLE void removePlotter(IPlotter1D *plotter);
    Q_INVOKABLE const QVector<IPlotter1D *> &plotters() const;

    /// Where links to this node are tied. GUI thread.
    Anchor &anchor() { return m_anchor; }

signals:
    void dataChanged();
    void areaChanged();
    void chartAreaChanged();
    void dataIDChanged();

protected:
    /// Takes a series; true means that data() has changed and must be published. Here: stores a series that differs.
    /// From setData() it is never m_data itself.
    virtual bool _filter_func(const QVector<double> &data);
    virtual int __start_index(const QRectF &rect);
    virtual int __end_index(const QRectF &rect);

    /// Transforms the present input again, which setters of parameters call: what the parent publishes or, without a
    /// parent, the series that was set last.
    void filterAgain();
    /// Publishes data(): to the children, then to the plotters, then as dataChanged().
    void _request_data_update();
    /// What the parent publishes, or the node's own series without a parent.
    const QVector<double> &originalData() const;
    /// The number of (width, value) pairs of the node's own series.
    int size2D() const;
    /// From now on no other object reaches the node. First statement of every derived destructor.
    void withdraw();

    QRectF m_area;
    QString m_dataID;
    QVector<double> m_data;

private:
    void setParentFilter(const Filter1D *parentFilter);
    bool mayPublish();
    void publish(const QVector<double> &series);
    void spreadArea(const QRectF &spread);

    LinkList<Filter1D, QVector<Filter1D *>> m_filters;
    LinkList<IPlotter1D, QVector<IPlotter1D *>> m_plotters;

protected:
    QPointer<const Filter1D> m_parentFilter; ///< the node that last adopted this one, null when it is gone

private:
    QVector<double> m_input; ///< what was set last, without a parent
    uint m_publication = 0;  ///< counts; a publication that finds a newer one stops delivering
    uint m_spreading = 0;    ///< the same for areas
    int m_publicationDepth = 0;
    bool m_cycleReported = false; ///< once per node: a source would report it at every tick
    Anchor m_anchor;
};
