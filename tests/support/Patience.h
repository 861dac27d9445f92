// SPDX-License-Identifier: MIT
#pragma once

#include <QtTest>

/// Milliseconds after which a test gives up what must happen. Only a test that fails waits so long, so it's enough for
/// a machine that draws without a GPU and does six other things.
constexpr int patience = 60'000;

// Qt's own give up after 5 s.

#undef QTRY_VERIFY
#undef QTRY_VERIFY2
#undef QTRY_COMPARE
#define QTRY_VERIFY(expression) QTRY_VERIFY_WITH_TIMEOUT((expression), patience)
#define QTRY_VERIFY2(expression, message) QTRY_VERIFY2_WITH_TIMEOUT((expression), (message), patience)
#define QTRY_COMPARE(expression, expected) QTRY_COMPARE_WITH_TIMEOUT((expression), expected, patience)
