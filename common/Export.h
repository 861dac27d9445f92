// SPDX-License-Identifier: MIT
#pragma once

#include <QtGlobal>

/// Marks the few classes that C++ programs may link against; everything else in the library is hidden.
#if defined(VORLIX_BUILD)
#  define VORLIX_EXPORT Q_DECL_EXPORT
#else
#  define VORLIX_EXPORT Q_DECL_IMPORT
#endif
