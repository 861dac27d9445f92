// SPDX-License-Identifier: MIT
#include "views/items/StrokeRaster.h"

#include <algorithm>
#include <cmath>

namespace {

/// A side of a triangle, from its upper to its lower end.
struct SSide
{
    SSide(const SStrokePoint &upper, const SStrokePoint &lower)
        : x(double(upper.x)),
          y(double(upper.y)),
          slope((double(lower.x) - x) / (double(lower.y) - y))
    {
    }
    double at(double row) const { return x + (row - y) * slope; }

    double x;
    double y;
    double slope;
};

/// The first pixel whose middle lies at `place` or behind it, within the picture.
int pixelFrom(double place, int end)
{
    return int(std::clamp(std::ceil(place - 0.5), 0.0, double(end)));
}

class Filler
{
public:
    Filler(QImage &picture, const QColor &color)
        : m_pixels(picture.bits()),
          m_rowLength(picture.bytesPerLine()),
          m_width(picture.width()),
          m_height(picture.height()),
          m_full(qPremultiply(color.rgba())),
          m_red(color.redF()),
          m_green(color.greenF()),
          m_blue(color.blueF()),
          m_alpha(color.alphaF())
    {
    }

    void fill(const SStrokePoint &a, const SStrokePoint &b, const SStrokePoint &c)
    {
        const SStrokePoint *corners[] = {&a, &b, &c};
        std::sort(std::begin(corners), std::end(corners),
                  [](const SStrokePoint *one, const SStrokePoint *other) { return one->y < other->y; });
        const SStrokePoint &top = *corners[0];
        const SStrokePoint &middle = *corners[1];
        const SStrokePoint &bottom = *corners[2];
        if (!(top.y < bottom.y) || !slant(top, middle, bottom))
            return;
        const SSide whole(top, bottom);
        if (top.y < middle.y)
            fillRows(whole, {top, middle}, double(top.y), double(middle.y));
        if (middle.y < bottom.y)
            fillRows(whole, {middle, bottom}, double(middle.y), double(bottom.y));
    }

private:
    /// How the coverage changes to the right and down; false if the triangle has no area.
    bool slant(const SStrokePoint &a, const SStrokePoint &b, const SStrokePoint &c)
    {
        const double bx = double(b.x) - double(a.x), by = double(b.y) - double(a.y);
        const double cx = double(c.x) - double(a.x), cy = double(c.y) - double(a.y);
        const double area = bx * cy - cx * by;
        if (area == 0.0)
            return false;
        const double toB = double(b.coverage) - double(a.coverage);
        const double toC = double(c.coverage) - double(a.coverage);
        m_right = (toB * cy - toC * by) / area;
        m_down = (toC * bx - toB * cx) / area;
        m_from = double(a.coverage) - double(a.x) * m_right - double(a.y) * m_down;
        return true;
    }

    void fillRows(const SSide &one, const SSide &other, double from, double to)
    {
        const int end = pixelFrom(to, m_height);
        for (int row = pixelFrom(from, m_height); row < end; ++row) {
            const double middle = row + 0.5;
            const auto [left, right] = std::minmax({one.at(middle), other.at(middle)});
            fillRow(row, pixelFrom(left, m_width), pixelFrom(right, m_width));
        }
    }

    void fillRow(int row, int from, int to)
    {
        if (from >= to)
            return;
        QRgb *pixel = reinterpret_cast<QRgb *>(m_pixels + row * m_rowLength) + from;
        const double first = m_from + m_down * (row + 0.5);
        for (int column = from; column < to; ++column, ++pixel)
            *pixel = over(first + m_right * (column + 0.5), *pixel);
    }

    QRgb over(double coverage, QRgb below) const
    {
        const bool isFull = coverage >= 1.0;
        if (isFull && m_alpha == 1.0)
            return m_full;
        const double alpha = 255.0 * m_alpha * std::clamp(coverage, 0.0, 1.0);
        const double rest = 1.0 - alpha / 255.0;
        const auto channel = [&](double share, int before) { return int(share * alpha + rest * before + 0.5); };
        return qRgba(channel(m_red, qRed(below)), channel(m_green, qGreen(below)), channel(m_blue, qBlue(below)),
                     channel(1.0, qAlpha(below)));
    }

    uchar *const m_pixels;
    const qsizetype m_rowLength;
    const int m_width;
    const int m_height;
    const QRgb m_full;
    const double m_red;
    const double m_green;
    const double m_blue;
    const double m_alpha;
    double m_right = 0.0;
    double m_down = 0.0;
    double m_from = 0.0;
};

} // namespace

void fillStroke(QImage &picture, const std::vector<SStrokePart> &parts, const QColor &color)
{
    Filler filler(picture, color);
    for (const SStrokePart &part : parts) {
        const auto point = [&part](size_t corner) -> const SStrokePoint & { return part.points[part.corners[corner]]; };
        for (size_t corner = 0; corner + 2 < part.corners.size(); corner += 3)
            filler.fill(point(corner), point(corner + 1), point(corner + 2));
    }
}
