// SPDX-License-Identifier: MIT
#include "views/items/RowSpans.h"

#include <algorithm>

void RowSpans::insert(SRowSpan span)
{
    if (span.isEmpty())
        return;
    const auto place = std::partition_point(m_spans.begin(), m_spans.end(),
                                            [&](const SRowSpan &other) { return other.bottom < span.top; });
    auto behind = place;
    for (; behind != m_spans.end() && behind->top <= span.bottom; ++behind) {
        span.top = std::min(span.top, behind->top);
        span.bottom = std::max(span.bottom, behind->bottom);
    }
    if (place == behind) {
        m_spans.insert(place, span);
    } else {
        *place = span;
        m_spans.erase(place + 1, behind);
    }
}

void RowSpans::join()
{
    if (m_spans.size() > 1)
        m_spans = {{m_spans.front().top, m_spans.back().bottom}};
}

bool RowSpans::covers(SRowSpan span) const
{
    const auto place = std::partition_point(m_spans.begin(), m_spans.end(),
                                            [&](const SRowSpan &other) { return other.bottom < span.bottom; });
    return place != m_spans.end() && place->top <= span.top;
}
