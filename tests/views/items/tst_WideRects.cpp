// SPDX-License-Identifier: MIT
#include "views/items/WideRects.h"

#include <QtTest>

#include <random>

namespace {

constexpr int columns = 200;
constexpr int rows = 300;
using Rects = std::vector<SPixelRect>;

/// How often each pixel is marked.
std::vector<int> marks(const Rects &rects)
{
    std::vector<int> found(size_t(columns * rows));
    for (const SPixelRect &rect : rects) {
        for (int y = rect.top; y < rect.bottom; ++y) {
            for (int x = rect.left; x < rect.right; ++x)
                ++found[size_t(y * columns + x)];
        }
    }
    return found;
}

/// Columns with as much noise at both ends, some apart from each other, some with two pieces.
Rects noisyColumns(int noise, std::mt19937 &random)
{
    PixelRects rects;
    rects.begin(rows);
    const auto some = [&](int most) { return int(random() % unsigned(most + 1)); };
    for (int column = 0; column < columns; ++column) {
        const int top = 60 + some(noise);
        const int bottom = 240 - some(noise);
        if (some(60) == 0)
            continue;
        if (some(40) == 0)
            rects.add(column, 0, 10 + some(20));
        rects.add(column, top, bottom);
    }
    return rects.rects();
}

Rects wide(const Rects &rects)
{
    Rects made{{1, 2, 3, 4}}; // what is there goes
    makeWide(rects, made);
    return made;
}

} // namespace

class tst_WideRects : public QObject
{
    Q_OBJECT

private slots:
    void theSamePixelsAreMarkedOnce_data();
    void theSamePixelsAreMarkedOnce();
    void whatNeighboursHaveInCommonIsOneRectangle();
    void littleInCommonStaysApart();
    void nothingStaysNothing();
};

void tst_WideRects::theSamePixelsAreMarkedOnce_data()
{
    QTest::addColumn<int>("noise");
    for (const int noise : {0, 1, 3, 20, 100, 240})
        QTest::addRow("%d rows of noise", noise) << noise;
}

void tst_WideRects::theSamePixelsAreMarkedOnce()
{
    QFETCH(int, noise);
    std::mt19937 random(5);
    for (int round = 0; round < 100; ++round) {
        const Rects rects = noisyColumns(noise, random);
        const Rects made = wide(rects);
        QVERIFY(marks(made) == marks(rects));
        QVERIFY(made.size() <= 3 * rects.size());
        for (const SPixelRect &rect : made)
            QVERIFY(rect.left < rect.right && rect.top < rect.bottom);
    }
}

void tst_WideRects::whatNeighboursHaveInCommonIsOneRectangle()
{
    const Rects rects{{0, 10, 1, 90}, {1, 12, 2, 90}, {2, 12, 3, 88}, {3, 10, 5, 90}};
    const Rects expected{{0, 12, 5, 88}, {0, 10, 1, 12}, {3, 10, 5, 12}, {0, 88, 2, 90}, {3, 88, 5, 90}};
    QVERIFY(wide(rects) == expected);
}

void tst_WideRects::littleInCommonStaysApart()
{
    const Rects few{{0, 10, 1, 90}, {1, 12, 2, 90}, {2, 12, 3, 88}};
    QVERIFY(wide(few) == few);
    const Rects low{{0, 10, 1, 17}, {1, 11, 2, 17}, {2, 10, 3, 17}, {3, 11, 4, 17}, {4, 10, 5, 17}};
    QVERIFY(wide(low) == low);
    const Rects apart{{0, 10, 1, 90}, {2, 10, 3, 90}, {4, 10, 5, 90}, {6, 10, 7, 90}};
    QVERIFY(wide(apart) == apart);
}

void tst_WideRects::nothingStaysNothing()
{
    QVERIFY(wide({}).empty());
}

QTEST_APPLESS_MAIN(tst_WideRects)
#include "tst_WideRects.moc"
