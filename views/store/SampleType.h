// SPDX-License-Identifier: MIT
#pragma once

#include <QtGlobal>

#include <type_traits>

/// What the values of a series are stored as: the type that their source has. The first one is the default.
enum class SampleType { Float64, Float32, Int32, UInt32, Int16, UInt16, Int8, UInt8 };

constexpr int sampleTypeCount = 8;

/// Whether this is one of the types above; a number from elsewhere may not be.
constexpr bool isSampleType(int type)
{
    return type >= 0 && type < sampleTypeCount;
}

/// Calls `work` with a zero of the C++ type that stands for `type` and returns what it returns.
template <class Work>
decltype(auto) withSampleType(SampleType type, Work &&work)
{
    switch (type) {
    case SampleType::Float32:
        return work(float{});
    case SampleType::Int32:
        return work(qint32{});
    case SampleType::UInt32:
        return work(quint32{});
    case SampleType::Int16:
        return work(qint16{});
    case SampleType::UInt16:
        return work(quint16{});
    case SampleType::Int8:
        return work(qint8{});
    case SampleType::UInt8:
        return work(quint8{});
    case SampleType::Float64:
        break;
    }
    return work(double{});
}

/// The sample type of a C++ type; doesn't compile for others than the eight.
template <class T>
constexpr SampleType sampleTypeOf()
{
    if constexpr (std::is_same_v<T, double>) {
        return SampleType::Float64;
    } else if constexpr (std::is_same_v<T, float>) {
        return SampleType::Float32;
    } else {
        static_assert(std::is_integral_v<T> && sizeof(T) <= 4 && !std::is_same_v<T, bool>, "not a sample type");
        constexpr bool isSigned = std::is_signed_v<T>;
        if constexpr (sizeof(T) == 4)
            return isSigned ? SampleType::Int32 : SampleType::UInt32;
        else if constexpr (sizeof(T) == 2)
            return isSigned ? SampleType::Int16 : SampleType::UInt16;
        else
            return isSigned ? SampleType::Int8 : SampleType::UInt8;
    }
}

/// Bytes of one value.
inline int sizeOf(SampleType type)
{
    return withSampleType(type, [](auto zero) { return int(sizeof zero); });
}

/// "Float64", "Int16", as QML writes it.
inline const char *nameOf(SampleType type)
{
    constexpr const char *names[] = {"Float64", "Float32", "Int32", "UInt32", "Int16", "UInt16", "Int8", "UInt8"};
    return names[int(type)];
}

/// Whether values of this type can be a gap: NaN or infinite.
constexpr bool mayHoldGaps(SampleType type)
{
    return type == SampleType::Float64 || type == SampleType::Float32;
}
