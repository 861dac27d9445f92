// SPDX-License-Identifier: MIT
#pragma once

#include "tests/support/Patience.h"

#include <QDeadlineTimer>

/// Runs the event loop until `count()` has stayed the same for a while, which is told by turns of the loop: on a busy
/// machine a pause alone says nothing. A timer that is due, what it asks for and what comes of that each get a turn.
template <class Count>
void waitUntilStill(const Count &count)
{
    constexpr int turns = 6;
    constexpr int turnMilliseconds = 20;
    const QDeadlineTimer end(patience);
    auto seen = count();
    for (int still = 0; still < turns && !end.hasExpired();) {
        QTest::qWait(turnMilliseconds);
        const auto now = count();
        still = now == seen ? still + 1 : 0;
        seen = now;
    }
}
