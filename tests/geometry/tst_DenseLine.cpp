// SPDX-License-Identifier: MIT
#include "geometry/DenseLine.h"
#include "tests/support/RandomSeries.h"

#include <QtTest>

#include <cmath>
#include <vector>

// The rows of each column against an oracle that draws segment by segment into a picture.

namespace {

/// A picture whose pixels are marked or not; outside of it nothing is.
class Picture
{
public:
    explicit Picture(const SLinePixels &pixels) : m_pixels(pixels), m_marked(size_t(pixels.width * pixels.height)) {}

    void mark(int column, int row)
    {
        if (column >= 0 && column < m_pixels.width && row >= 0 && row < m_pixels.height)
            m_marked[size_t(row * m_pixels.width + column)] = true;
    }
    bool isMarked(int column, int row) const { return m_marked[size_t(row * m_pixels.width + column)]; }

private:
    SLinePixels m_pixels;
    std::vector<bool> m_marked;
};

/// `count` pixels around a place: the one that it lies in, for one.
template <class Mark>
void markAround(double place, int count, Mark mark)
{
    const int first = int(std::floor(place - 0.5 * (count - 1)));
    for (int i = 0; i < count; ++i)
        mark(first + i);
}

/// In pixels, from the left and from the bottom.
struct SPoint
{
    double x;
    double y;
};

double heightAt(const SPoint &a, const SPoint &b, double x)
{
    return a.y + (x - a.x) / (b.x - a.x) * (b.y - a.y);
}

/// With a brush as wide as the line, the rows that it crosses.
void drawSegment(Picture &picture, const SPoint &a, const SPoint &b, const SLinePixels &pixels)
{
    const double low = std::max(std::min(a.y, b.y), -1.0);
    const double high = std::min(std::max(a.y, b.y), pixels.height + 1.0);
    for (int row = int(std::ceil(low - 0.5)); row + 0.5 <= high; ++row) {
        const double x = a.y == b.y ? a.x : a.x + (row + 0.5 - a.y) / (b.y - a.y) * (b.x - a.x);
        markAround(x, pixels.lineWidth, [&](int column) { picture.mark(column, row); });
    }
}

/// The least height of a wide line, around the place where it crosses the middle of a column.
void drawLeastHeights(Picture &picture, const std::vector<SPoint> &points, const SLinePixels &pixels)
{
    const double half = 0.5 * pixels.lineWidth;
    for (int column = 0; column < pixels.width; ++column) {
        const double centre = column + 0.5;
        double atCentre = std::nan("");
        bool isFlat = false;
        double low = HUGE_VAL;
        double high = -HUGE_VAL;
        for (size_t i = 0; i + 1 < points.size(); ++i) {
            const SPoint &a = points[i];
            const SPoint &b = points[i + 1];
            const double from = std::max(a.x, centre - half);
            const double to = std::min(b.x, centre + half);
            if (from > to)
                continue;
            if (a.x < centre && b.x >= centre) {
                atCentre = heightAt(a, b, centre);
                isFlat = std::abs(b.y - a.y) <= b.x - a.x;
            }
            low = std::min({low, heightAt(a, b, from), heightAt(a, b, to)});
            high = std::max({high, heightAt(a, b, from), heightAt(a, b, to)});
        }
        const int height = isFlat || high - low <= pixels.lineWidth ? pixels.lineWidth : 1;
        if (!std::isnan(atCentre))
            markAround(atCentre, height, [&](int row) { picture.mark(column, row); });
    }
}

} // namespace

class tst_DenseLine : public QObject
{
    Q_OBJECT

private slots:
    void marksWhatEverySegmentMarks_data();
    void marksWhatEverySegmentMarks();
    void aWideLineIsAsHighWhereItIsFlatAndAsWideWhereItIsSteep();
    void isDenseFromFourPointsToAPixelOn();
    void writesCornersOnTheEdgesOfPixels();
};

void tst_DenseLine::marksWhatEverySegmentMarks_data()
{
    QTest::addColumn<double>("amplitude"); // of the noise, in pictures
    QTest::addColumn<double>("slope");     // in pictures from the first point to the last
    QTest::addColumn<double>("step");      // of a random walk
    QTest::newRow("noise") << 0.4 << 0.0 << 0.0;
    QTest::newRow("noise beyond the picture") << 2.0 << 0.0 << 0.0;
    QTest::newRow("faint noise") << 0.004 << 0.0 << 0.0;
    QTest::newRow("a slope") << 0.0 << 0.9 << 0.0;
    QTest::newRow("a noisy slope") << 0.003 << -0.9 << 0.0;
    QTest::newRow("a walk") << 0.0 << 0.0 << 0.01;
    QTest::newRow("a walk in small steps") << 0.0 << 0.0 << 0.001;
}

void tst_DenseLine::marksWhatEverySegmentMarks()
{
    QFETCH(double, amplitude);
    QFETCH(double, slope);
    QFETCH(double, step);
    RandomSeries random(quint64(qHash(QByteArray(QTest::currentDataTag()))));
    for (int turn = 0; turn < 60; ++turn) {
        const SLinePixels pixels{random.whole(1, 60), random.whole(1, 60), turn < 20 ? 1 : random.whole(1, 9)};
        const int count = pixels.width * random.whole(5, 40) + 2;
        std::vector<double> values;
        double walk = 0.0;
        for (int i = 0; i < count; ++i) {
            walk += step * random.real(-1.0, 1.0);
            values.push_back(walk + slope * (double(i) / count - 0.5) + amplitude * random.real(-1.0, 1.0));
        }
        // Some of the points lie beside the picture, or the line ends within it.
        const double xStep = 2.0 / count * random.real(0.6, 1.4);
        const SLinePlace place{{-1.0 + random.real(-0.3, 0.3), xStep}, random.real(-0.1, 0.1), 2.0};
        const SIndexRange points{random.whole(0, 3), count - random.whole(0, 3)};
        Picture expected(pixels);
        std::vector<SPoint> drawn;
        for (int i = points.first; i < points.end; ++i) {
            drawn.push_back({(place.x.start + i * place.x.step + 1.0) * 0.5 * pixels.width,
                             (place.yStart + values[size_t(i)] * place.yStep + 1.0) * 0.5 * pixels.height});
        }
        for (size_t i = 0; i + 1 < drawn.size(); ++i)
            drawSegment(expected, drawn[i], drawn[i + 1], pixels);
        drawLeastHeights(expected, drawn, pixels);
        const QVector<SRows> rows = denseLineRows(values.data(), points, place, pixels);
        QCOMPARE(int(rows.size()), pixels.width);
        for (int column = 0; column < pixels.width; ++column) {
            for (int row = 0; row < pixels.height; ++row) {
                const bool marked = row >= rows[column].bottom && row < rows[column].top;
                QVERIFY2(marked == expected.isMarked(column, row),
                         qPrintable(QStringLiteral("turn %1, width %2, pixel %3, %4")
                                        .arg(turn)
                                        .arg(pixels.lineWidth)
                                        .arg(column)
                                        .arg(row)));
            }
        }
    }
}

void tst_DenseLine::aWideLineIsAsHighWhereItIsFlatAndAsWideWhereItIsSteep()
{
    std::vector<double> values;
    for (int i = 0; i < 201; ++i)
        values.push_back(std::clamp(0.02 * (i - 100), -0.5, 0.5)); // from row 10 to row 30, within 5 columns of 20
    const QVector<SRows> rows = denseLineRows(values.data(), {0, 201}, {{-1.0, 0.01}, 0.0, 1.0}, {20, 40, 5});
    for (const int flat : {0, 4}) {
        QCOMPARE(rows[flat].bottom, 8);
        QCOMPARE(rows[flat].top, 13);
    }
    QCOMPARE(rows[9].top - rows[9].bottom, 18); // as high as it rises within 5 columns, at 4 rows a column
    QCOMPARE(rows[15].bottom, 28);
}

void tst_DenseLine::isDenseFromFourPointsToAPixelOn()
{
    const SLinePlace place{{-1.0, 0.001}, -1.0, 2.0};
    QVERIFY(isDenseLine({0, 401}, place, {100, 50, 1}));
    QVERIFY(!isDenseLine({0, 400}, place, {100, 50, 1}));
    QVERIFY(!isDenseLine({0, 401}, place, {})); // of a picture with several samples to a pixel
    QVERIFY(!isDenseLine({0, 401}, {{-1.0, -0.001}, -1.0, 2.0}, {100, 50, 1}));
    QVERIFY(!isDenseLine({0, 401}, {{std::nan(""), 0.001}, -1.0, 2.0}, {100, 50, 1}));
    QVERIFY(!isDenseLine({0, 401}, {{-1.0, 0.001}, -1.0, HUGE_VAL}, {100, 50, 1}));
}

void tst_DenseLine::writesCornersOnTheEdgesOfPixels()
{
    float corners[8] = {};
    writeColumns({{0, 1}, {1, 4}}, {1, 2}, {4, 8, 1}, corners);
    const float expected[8] = {-0.5f, -0.75f, -0.5f, 0.0f, 0.0f, -0.75f, 0.0f, 0.0f};
    QVERIFY(std::equal(std::begin(corners), std::end(corners), std::begin(expected)));
}

QTEST_APPLESS_MAIN(tst_DenseLine)
#include "tst_DenseLine.moc"
