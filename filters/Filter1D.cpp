// SPDX-License-Identifier: MIT
#include "filters/Filter1D.h"

#include "common/Change.h"
#include "common/Index.h"
#include "common/Maxima.h"
#include "common/Series.h"

#include <QDebug>
#include <QUuid>

#include <algorithm>
#include <cmath>

namespace {

thread_local int deliveries = 0; ///< publications in progress, of all nodes
thread_local int reentries = 0;  ///< publications of nodes that were publishing, since the first of `deliveries` began

class DeliveryScope
{
public:
    DeliveryScope() { ++deliveries; }
    ~DeliveryScope()
    {
        if (--deliveries == 0)
            reentries = 0;
    }
    DeliveryScope(const DeliveryScope &) = delete;
    DeliveryScope &operator=(const DeliveryScope &) = delete;
};

} // namespace

Filter1D::Filter1D(QObject *parent) : QObject(parent), m_dataID(QUuid::createUuid().toString()) {}

Filter1D::~Filter1D()
{
    withdraw();
}

void Filter1D::withdraw()
{
    m_anchor.cut();
}

// the series

const QVector<double> &Filter1D::data() const
{
    return m_data;
}

void Filter1D::setData(const QVector<double> &data)
{
    const QVector<double> input = data; // `data` may be m_data, or what a handler destroys
    // A child does not hold on to what its parent publishes: the parent could not write into that storage again.
    m_input = m_parentFilter ? QVector<double>() : input;
    if (_filter_func(input))
        _request_data_update();
}

void Filter1D::filterAgain()
{
    setData(QVector<double>(m_parentFilter ? m_parentFilter->data() : m_input));
}

bool Filter1D::_filter_func(const QVector<double> &data)
{
    if (sameSeries(data, m_data))
        return false;
    m_data = data;
    return true;
}

bool Filter1D::mayPublish()
{
    if (m_publicationDepth == 0)
        return true;
    // A node publishes while it is publishing: a handler changed its data, or it feeds itself. The depth bounds the
    // stack; the number of times bounds the work, which doubles with every round of a cycle that delivers twice.
    constexpr int deepestPublication = 64;
    constexpr int mostReentries = 1024; // of all nodes, until the delivery that came first is done
    if (m_publicationDepth < deepestPublication && ++reentries <= mostReentries)
        return true;
    if (change(m_cycleReported, true))
        qWarning() << "Filter1D: the tree of nodes has a cycle, or a handler changes the data again and again";
    return false;
}

void Filter1D::_request_data_update()
{
    if (!mayPublish())
        return;
    const DeliveryScope scope;
    const QPointer<Filter1D> alive(this);
    ++m_publicationDepth;
    publish(QVector<double>(data()));
    if (alive)
        emit dataChanged();
    if (alive)
        --m_publicationDepth;
}

void Filter1D::publish(const QVector<double> &series)
{
    // Handlers of the receivers may change the lists, publish a newer series, or destroy anything, this node too.
    const QPointer<Filter1D> alive(this);
    const uint publication = ++m_publication;
    const auto isCurrent = [&] { return alive && m_publication == publication; };

    const QVector<Filter1D *> filters = m_filters.items();
    for (Filter1D *filter : filters) {
        if (m_filters.contains(filter))
            filter->setData(series);
        if (!isCurrent())
            return;
    }
    const QVector<IPlotter1D *> plotters = m_plotters.items();
    for (IPlotter1D *plotter : plotters) {
        if (m_plotters.contains(plotter))
            plotter->setData(series);
        if (!isCurrent())
            return;
    }
}

const QVector<double> &Filter1D::originalData() const
{
    return m_parentFilter ? m_parentFilter->data() : m_data;
}

int Filter1D::size2D() const
{
    return m_data.size() / 2;
}

// area and identifier

const QRectF &Filter1D::area() const
{
    return m_area;
}

void Filter1D::setArea(const QRectF &area)
{
    const QRectF spread = area; // `area` may be a member of something that a handler destroys
    if (!change(m_area, spread))
        return;
    const QPointer<Filter1D> alive(this);
    spreadArea(spread);
    if (alive)
        emit areaChanged();
}

void Filter1D::spreadArea(const QRectF &spread)
{
    // As in publish(): whatever handlers do, a receiver never gets an area that is older than its own.
    const QPointer<Filter1D> alive(this);
    const uint spreading = ++m_spreading;
    const auto isCurrent = [&] { return alive && m_spreading == spreading; };

    const QVector<Filter1D *> filters = m_filters.items();
    for (Filter1D *filter : filters) {
        if (m_filters.contains(filter))
            filter->setArea(spread);
        if (!isCurrent())
            return;
    }
    const QVector<IPlotter1D *> plotters = m_plotters.items();
    for (IPlotter1D *plotter : plotters) {
        if (m_plotters.contains(plotter))
            plotter->setPlotterArea(spread);
        if (!isCurrent())
            return;
    }
}

const QString &Filter1D::dataID() const
{
    return m_dataID;
}

void Filter1D::setDataID(const QString &dataID)
{
    if (change(m_dataID, dataID))
        emit dataIDChanged();
}

// linking

void Filter1D::setParentFilter(const Filter1D *parentFilter)
{
    m_parentFilter = parentFilter;
}

void Filter1D::addFilter(Filter1D *filter)
{
    if (!m_filters.append(filter))
        return;
    const QPointer<Filter1D> alive(this);
    const QPointer<Filter1D> child(filter);
    filter->setParentFilter(this);
    filter->setDataID(QString(dataID()));
    if (alive && child)
        child->setArea(QRectF(area()));
    if (alive && child)
        child->setData(QVector<double>(data()));
}

void Filter1D::removeFilter(Filter1D *filter)
{
    m_filters.remove(filter);
}

void Filter1D::addPlotter(IPlotter1D *plotter)
{
    if (!m_plotters.append(plotter))
        return;
    const QPointer<Filter1D> alive(this);
    const QPointer<IPlotter1D> added(plotter);
    plotter->setPlotterArea(QRectF(area()));
    if (alive && added)
        added->setData(QVector<double>(data()));
}

void Filter1D::removePlotter(IPlotter1D *plotter)
{
    m_plotters.remove(plotter);
}

const QVector<IPlotter1D *> &Filter1D::plotters() const
{
    return m_plotters.items();
}

// queries, in data coordinates

int Filter1D::index_at(double x) const
{
    const int count = data().size();
    if (count == 0 || area().width() == 0.0 || !containsOnAxis(area(), x))
        return -1;
    const double width = area().width() / count;
    return std::max(toIndex(std::min(std::round((x - area().left()) / width), count - 1.0)), 0);
}

double Filter1D::value_at(double x) const
{
    const int index = index_at(x);
    return index < 0 ? 0.0 : data().at(index);
}

const QRectF Filter1D::area_at(const QPointF &point) const
{
    const int index = index_at(point.x());
    if (index < 0)
        return {};
    const double width = area().width() / data().size();
    return {area().left() + index * width, 0.0, width, data().at(index)};
}

int Filter1D::__start_index(const QRectF &rect)
{
    const double width = area().width() / data().size();
    return toIndex(std::floor((area().intersected(rect).left() - area().left()) / width));
}

int Filter1D::__end_index(const QRectF &rect)
{
    const double width = area().width() / data().size();
    return toIndex(std::ceil((area().intersected(rect).right() - area().left()) / width));
}

double Filter1D::max_in(const QRectF &rect)
{
    if (rect.intersected(m_area).isEmpty() || data().isEmpty())
        return 0.0;
    const int start = std::max(__start_index(rect), 0);
    const int end = std::min(__end_index(rect), int(data().size()));
    return start < end ? maximumFromZero(data().constData() + start, end - start) : 0.0;
}
