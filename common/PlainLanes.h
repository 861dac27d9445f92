// SPDX-License-Identifier: MIT
#pragma once

/// Numbers side by side where the compiler has no vectors: what Lanes.h needs of them, one lane after the other.
/// Truths are -1 for true and 0 for false, as those of vectors are.
template <class Number, int count>
struct PlainLanes
{
    Number lane[count];

    Number operator[](int i) const { return lane[i]; }
    Number &operator[](int i) { return lane[i]; }
};

/// The lanes that `make(i)` gives.
template <class Number, int count, class Make>
PlainLanes<Number, count> lanesOf(Make make)
{
    PlainLanes<Number, count> made{};
    for (int i = 0; i < count; ++i)
        made[i] = make(i);
    return made;
}

template <class Number, int count>
PlainLanes<Number, count> operator~(PlainLanes<Number, count> a)
{
    return lanesOf<Number, count>([&](int i) { return ~a[i]; });
}

template <class Number, int count>
PlainLanes<Number, count> operator&(PlainLanes<Number, count> a, PlainLanes<Number, count> b)
{
    return lanesOf<Number, count>([&](int i) { return a[i] & b[i]; });
}

template <class Number, int count>
PlainLanes<Number, count> operator|(PlainLanes<Number, count> a, PlainLanes<Number, count> b)
{
    return lanesOf<Number, count>([&](int i) { return a[i] | b[i]; });
}

template <class Number, int count>
PlainLanes<Number, count> operator+(PlainLanes<Number, count> a, PlainLanes<Number, count> b)
{
    return lanesOf<Number, count>([&](int i) { return a[i] + b[i]; });
}

template <class Number, int count>
PlainLanes<Number, count> &operator&=(PlainLanes<Number, count> &a, PlainLanes<Number, count> b)
{
    return a = a & b;
}

template <class Number, int count>
PlainLanes<Number, count> &operator|=(PlainLanes<Number, count> &a, PlainLanes<Number, count> b)
{
    return a = a | b;
}

template <int count>
PlainLanes<long long, count> operator==(PlainLanes<double, count> a, PlainLanes<double, count> b)
{
    return lanesOf<long long, count>([&](int i) { return a[i] == b[i] ? -1 : 0; });
}
