// SPDX-License-Identifier: MIT
#include "stress/Plays.h"

#include "stress/Stage.h"
#include "stress/Troupe.h"

void linkOften(Troupe &troupe, int times)
{
    for (int i = 0; i < times; ++i)
        troupe.link();
}

void destroyOneByOne(Stage &stage, Troupe &troupe)
{
    while (!troupe.isEmpty()) {
        troupe.destroyOne();
        troupe.act();
        troupe.unlink();
        if (stage.chance.oneIn(3))
            troupe.link();
        if (stage.chance.oneIn(2))
            stage.spin();
    }
}

void mistreatOften(Stage &stage, QQuickWindow &window, Troupe &troupe, int times)
{
    for (int i = 0; i < times; ++i) {
        troupe.mistreat();
        if (stage.chance.oneIn(4))
            troupe.act();
        if (stage.chance.oneIn(8))
            stage.frames(window, 1);
    }
}
