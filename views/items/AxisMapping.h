// SPDX-License-Identifier: MIT
#pragma once

#include <cmath>

/// How the values of one axis stand on the screen: `from` lies at `pixelsFrom`, `to` at `pixelsTo`. Pixels are whatever
/// unit the caller counts in: item pixels for labels and hands, device pixels for columns. On a y axis pixelsFrom is
/// the larger one. A plain value: any thread. Everything is double, so that a single value of 1e9 keeps its place.
struct AxisMapping
{
    double from = 0.0;
    double to = 1.0;
    bool log = false; ///< equal ratios are equally long; both ends must be positive
    double pixelsFrom = 0.0;
    double pixelsTo = 1.0;

    /// Whether there is something to map: two different finite ends, positive ones on a log scale, and a length in
    /// pixels.
    bool isValid() const
    {
        return std::isfinite(from) && std::isfinite(to) && std::isfinite(pixelsFrom) && std::isfinite(pixelsTo)
            && pixelsFrom != pixelsTo && std::isfinite(span()) && span() != 0.0 && (!log || (from > 0.0 && to > 0.0));
    }

    /// A value on the scale on which equal steps are equally long: itself, or its decimal logarithm.
    /// On a log scale 0 becomes -infinity and a negative value NaN.
    double scaled(double value) const { return log ? std::log10(value) : value; }
    /// The value at a place on that scale.
    double unscaled(double place) const { return log ? std::pow(10.0, place) : place; }

    /// The length of the axis on its scale, negative when it runs backwards.
    double span() const { return scaled(to) - scaled(from); }
    double pixelSpan() const { return pixelsTo - pixelsFrom; }
    /// Pixels for one unit of the scale: of the value, or of its decimal logarithm.
    double pixelsPerUnit() const { return pixelSpan() / span(); }

    /// The left end is subtracted before anything is multiplied, so that far from 0 no digit is lost.
    /// Not finite where the value has no place (NaN, or 0 and below on a log scale) or the mapping isn't valid.
    double toPixels(double value) const { return pixelsFrom + (scaled(value) - scaled(from)) * pixelsPerUnit(); }
    /// The inverse of toPixels(), exact at the left end.
    double toValue(double pixels) const
    {
        const double length = (pixels - pixelsFrom) / pixelSpan() * span();
        return log ? from * std::pow(10.0, length) : from + length;
    }

    bool operator==(const AxisMapping &other) const
    {
        return from == other.from && to == other.to && log == other.log && pixelsFrom == other.pixelsFrom
            && pixelsTo == other.pixelsTo;
    }
    bool operator!=(const AxisMapping &other) const { return !(*this == other); }
};
