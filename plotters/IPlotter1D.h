// SPDX-License-Identifier: MIT
#pragma once

#include "plotters/IPlotter.h"

#include <memory>

class BlockMaxima;

/// A plotter with one number per position: value k of n belongs to the k-th of n equal slots that divide modArea from
/// left to right. Data nodes feed it. Queries are in data coordinates and belong to the GUI thread.
class IPlotter1D : public IPlotter
{
    Q_OBJECT

public:
    /// Of a longer series a plotter uploads only what is seen, when it is drawn.
    static constexpr int wholeSeries = 8192;

    using IPlotter::IPlotter;

    /// The largest value of the slots that `area` touches, at least 0.0, in single precision.
    double max_in(const QRectF &area) const override;
    /// A hit at or below the value of the slot under `point`, and wherever that is a NaN; above it a miss that still
    /// names the slot.
    SInfoPoint mouse_hovering(const QPointF &point) const override;

    /// The slot under x, -1 outside modArea (whose vertical range must include 0); n on the right edge.
    virtual int _index_at(double x) const;
    /// The first slot to draw for `area`.
    virtual int __start_index(const QRectF &area) const;
    /// One past the last slot to draw for `area`.
    virtual int __end_index(const QRectF &area) const;

protected:
    /// The rectangle between 0 and the value of slot `index`, which there is.
    QRectF slotRect(int index) const;
    /// Gives max_in() what was found out about the series on the way to something else.
    void keepMaxima(const BlockMaxima &maxima);

private:
    const BlockMaxima &maxima() const;

    mutable std::shared_ptr<const BlockMaxima> m_maxima; ///< of the series, or of an earlier one
};
