// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>

/// The position of a virtual function in its class's table, as the Itanium ABI writes it into a pointer to member.
template <class Function>
std::ptrdiff_t virtualSlot(Function function)
{
    std::uintptr_t encoded = 0;
    static_assert(sizeof function >= sizeof encoded);
    std::memcpy(&encoded, &function, sizeof encoded);
    return encoded & 1 ? std::ptrdiff_t((encoded - 1) / sizeof(void *)) : -1;
}
