// SPDX-License-Identifier: MIT
#include "views/items/WideRects.h"

#include <QtGlobal>

#include <algorithm>

namespace {

using Rects = std::vector<SPixelRect>;

// What is worth a rectangle.
constexpr int leastRows = 8; // that neighbours have in common
constexpr size_t leastRects = 4;

/// Neighbouring rectangles, and the rows that all of them have.
struct SGroup
{
    size_t end = 0;
    int top = 0;
    int bottom = 0;
};

/// Those from `first` on of which all have most of the rows of each.
SGroup groupFrom(const Rects &rects, size_t first)
{
    SGroup group{first + 1, rects[first].top, rects[first].bottom};
    int tallest = group.bottom - group.top;
    for (; group.end < rects.size() && rects[group.end].left == rects[group.end - 1].right; ++group.end) {
        const SPixelRect &next = rects[group.end];
        const int top = std::max(group.top, next.top);
        const int bottom = std::min(group.bottom, next.bottom);
        tallest = std::max(tallest, next.bottom - next.top);
        if (bottom - top < leastRows || 4 * (bottom - top) < 3 * tallest)
            break;
        group.top = top;
        group.bottom = bottom;
    }
    return group;
}

/// Adds a rectangle, joined with the last one added if that ends where it begins and has the same rows.
void addNext(Rects &wide, size_t firstToJoin, const SPixelRect &rect)
{
    if (rect.bottom <= rect.top)
        return;
    if (wide.size() > firstToJoin && wide.back().right == rect.left && wide.back().top == rect.top
        && wide.back().bottom == rect.bottom)
        wide.back().right = rect.right;
    else
        wide.push_back(rect);
}

} // namespace

void makeWide(const Rects &rects, Rects &wide)
{
    wide.clear();
    for (size_t first = 0; first < rects.size();) {
        const SGroup group = groupFrom(rects, first);
        if (group.end - first < leastRects) {
            wide.insert(wide.end(), rects.begin() + qint64(first), rects.begin() + qint64(group.end));
            first = group.end;
            continue;
        }
        wide.push_back({rects[first].left, group.top, rects[group.end - 1].right, group.bottom});
        size_t own = wide.size();
        for (size_t i = first; i < group.end; ++i)
            addNext(wide, own, {rects[i].left, rects[i].top, rects[i].right, group.top});
        own = wide.size();
        for (size_t i = first; i < group.end; ++i)
            addNext(wide, own, {rects[i].left, group.bottom, rects[i].right, rects[i].bottom});
        first = group.end;
    }
}
