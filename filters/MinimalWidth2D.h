// SPDX-License-Identifier: MIT
#pragma once

#include "filters/Filter1D.h"

/// Merges neighbouring bins of a series of (width, value) pairs until each is at least `mergeWidth` wide; a merged bin
/// has the largest value of those that it took up, the first one of a run at least 0.0.
///
/// Widths are in the units of the area. Where a wide bin completes a merged one, what it leaves over becomes a bin of
/// its own if it is wide enough; what is left at the end becomes the last bin. Every series is published, an unchanged
/// one too. A width without a value is ignored. GUI thread.
class MinimalWidth2D : public Filter1D
{
    Q_OBJECT
    /// A negative one is ignored, and so is one within the margin of the present one. A change filters the parent's
    /// series again.
    Q_PROPERTY(double mergeWidth READ mergeWidth WRITE setMergeWidth NOTIFY mergeWidthChanged)
    /// How far mergeWidth must move, as a part of itself, to be taken: it need not follow every step of a zoom.
    Q_PROPERTY(double percMargin READ percMargin WRITE setPercMargin NOTIFY percMarginChanged)

public:
    explicit MinimalWidth2D(QObject *parent = nullptr);
    ~MinimalWidth2D() override;

    double mergeWidth() const { return m_mergeWidth; }
    void setMergeWidth(double mergeWidth);
    double percMargin() const { return m_percMargin; }
    void setPercMargin(double percMargin);

signals:
    void mergeWidthChanged();
    void percMarginChanged();

protected:
    bool _filter_func(const QVector<double> &data) override;

private:
    double m_mergeWidth = 1.0;
    double m_percMargin = 0.2;
};
