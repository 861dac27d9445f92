// SPDX-License-Identifier: MIT
#include "PlainMarks.h"

#include "tests/support/RandomSeries.h"
#include "views/items/BarShape.h"
#include "views/items/LineColumns.h"
#include "views/items/LinePath.h"
#include "views/items/LineShape.h"
#include "views/store/NumberList.h"

#include <QtTest>

#include <cmath>

namespace {

constexpr int columns = 120;
constexpr int rows = 90;

PlainMarks marksOf(const PixelRects &rects)
{
    PlainMarks marks(columns, rows);
    for (const SPixelRect &rect : rects.rects()) {
        for (int column = rect.left; column < rect.right; ++column)
            marks.markColumn(column, rect.top, rect.bottom);
    }
    return marks;
}

int areaOf(const PixelRects &rects)
{
    int area = 0;
    for (const SPixelRect &rect : rects.rects())
        area += (rect.right - rect.left) * (rect.bottom - rect.top);
    return area;
}

/// A series, the view of it, and what it's drawn as by both ways.
struct Scene
{
    QVector<double> values;
    QVector<double> places; ///< empty if they are evenly spaced
    AxisMapping y{-1.0, 1.0, false, rows, 0.0};
    double from = 0.0;
    double to = 100.0;
    double baseline = 0.0;
    IndexRanges misplaced;

    SeriesSnapshot snapshot(const QVector<double> &numbers) const
    {
        const std::shared_ptr<SeriesData> data = seriesOver(numbers);
        data->buildNow();
        return data->snapshot();
    }
    ColumnGrid grid() const { return ColumnGrid::over(from, to, columns, 0.0); }

    QVector<double> xs() const
    {
        const ColumnGrid columnsOfView = grid();
        QVector<double> xs;
        for (int i = 0; i <= values.size(); ++i) {
            const double place = places.isEmpty() ? i
                : i < places.size()               ? places[i]
                                                  : 2.0 * places[i - 1] - places[i - 2];
            xs.append(place / columnsOfView.step - double(columnsOfView.first));
        }
        return xs;
    }
    QVector<double> ys() const
    {
        QVector<double> ys;
        for (int i = 0; i < values.size(); ++i) {
            const bool isGap = !std::isfinite(values[i]) || (y.log && !(values[i] > 0.0));
            ys.append(isGap ? std::nan("") : y.toPixels(values[i]));
        }
        for (const auto &range : misplaced)
            std::fill(ys.begin() + range.first, ys.begin() + range.second, std::nan(""));
        return ys;
    }

    template <class Draw>
    PixelRects drawn(Draw &&draw) const
    {
        PixelRects rects;
        rects.begin(rows);
        const SeriesSnapshot now = snapshot(values);
        const SeriesPlaces where = places.isEmpty()
            ? SeriesPlaces(0.0, 1.0, 0, now.end(), false)
            : SeriesPlaces(snapshot(places), 0.0, 0, now.end(), false, &misplaced);
        draw(rects, now, where, grid(), RowScale(y, rows));
        return rects;
    }
    PixelRects line() const
    {
        return drawn([](auto &&...all) { addThinLine(all...); });
    }
    LinePath path() const
    {
        LinePath path;
        drawn([&](PixelRects &, auto &&...all) { addPath(path, all..., 1); });
        return path;
    }
    PixelRects area() const
    {
        return drawn([this](auto &&...all) { addArea(all..., baseline); });
    }
    PixelRects bars() const
    {
        return drawn([this](auto &&...all) { addBars(all..., baseline); });
    }
};

/// Each column has hundreds of runs of few values, which mark the same rows again and again, and now and then a new
/// one.
Scene sceneOfShortRuns(int seed)
{
    RandomSeries random{quint64(seed)};
    Scene scene;
    const double reach = std::pow(10.0, random.real(-2.0, 0.1)); // from a row to more than there are
    const int gapOneIn = random.whole(2, 6);
    double level = 0.0;
    for (int i = columns * random.whole(170, 1000); i > 0; --i) { // as many in each, none as good as on its edge
        level = random.oneIn(5'000) ? random.real(-1.0, 1.0) : 0.999 * level;
        const double value = level + random.real(-reach, reach) * (random.oneIn(300) ? 3.0 : 1.0);
        scene.values.append(random.oneIn(gapOneIn) ? std::nan("") : value);
    }
    scene.to = scene.values.size();
    return scene;
}

/// From one y to another, in rows.
using RowInterval = std::pair<double, double>;
using ColumnIntervals = std::vector<std::vector<RowInterval>>;

/// What a line between points reaches in each column, without what joins the columns. NaN parts the line.
ColumnIntervals intervalsOf(const QVector<double> &xs, const QVector<double> &ys)
{
    ColumnIntervals intervals(columns);
    int before = -1;
    for (int i = 0; i < ys.size(); ++i) {
        const bool isShown = !std::isnan(ys[i]) && xs[i] >= 0.0 && xs[i] < columns;
        const int column = isShown ? int(xs[i]) : -1;
        if (isShown && column != before)
            intervals[size_t(column)].emplace_back(ys[i], ys[i]);
        if (isShown) {
            RowInterval &last = intervals[size_t(column)].back();
            last = {std::min(last.first, ys[i]), std::max(last.second, ys[i])};
        }
        before = column;
    }
    return intervals;
}

/// A line as points, with NaN between its pieces.
struct Points
{
    explicit Points(const LinePath &path)
    {
        size_t i = 0;
        for (const size_t end : path.ends) {
            for (; i < end; ++i) {
                xs.append(path.points[i].x());
                ys.append(path.points[i].y());
            }
            xs.append(0.0);
            ys.append(std::nan(""));
        }
    }

    QVector<double> xs;
    QVector<double> ys;
};

/// Those that touch each other are one.
std::vector<RowInterval> joined(std::vector<RowInterval> intervals)
{
    std::sort(intervals.begin(), intervals.end());
    std::vector<RowInterval> all;
    for (const RowInterval &next : intervals) {
        if (!all.empty() && next.first <= all.back().second + 0.5)
            all.back().second = std::max(all.back().second, next.second);
        else
            all.push_back(next);
    }
    return all;
}

/// Whether each of some intervals is inside one of the others, or less than half a row beside it.
bool areInside(const std::vector<RowInterval> &inner, const std::vector<RowInterval> &outer)
{
    return std::all_of(inner.begin(), inner.end(), [&](const RowInterval &part) {
        return std::any_of(outer.begin(), outer.end(), [&](const RowInterval &whole) {
            return part.first >= whole.first - 0.5 && part.second <= whole.second + 0.5;
        });
    });
}

} // namespace

#define COMPARE_MARKS(actual, expected) \
  do { \
    const PixelRects rects_ = actual; \
    const PlainMarks expected_ = expected; \
    QVERIFY2(marksOf(rects_) == expected_, marksOf(rects_).difference(expected_).constData()); \
    QCOMPARE(areaOf(rects_), expected_.count()); \
  } while (false)

/// What a thin line, bars and an area mark, compared with each segment and each bar marked by itself.
class tst_Shapes : public QObject
{
    Q_OBJECT

private slots:
    void marksWhatEverySegmentMarks_data();
    void marksWhatEverySegmentMarks();
    void marksWhatManyShortRunsMark();
    void aWideLineReachesAsFarAsManyShortRuns();
    void marksAlikeWhereverTheViewBegins();
    void drawsADotForAValueAlone();
    void drawsNothingWithoutValues();

private:
    static void compareAll(const Scene &scene);
    static Scene randomScene(RandomSeries &random, int kind);
};

void tst_Shapes::compareAll(const Scene &scene)
{
    const QVector<double> xs = scene.xs();
    const QVector<double> ys = scene.ys();
    const double base = scene.y.toPixels(scene.baseline);
    PlainMarks line(columns, rows);
    line.markLine(xs, ys);
    COMPARE_MARKS(scene.line(), line);
    PlainMarks area(columns, rows);
    area.markArea(xs, ys, base);
    COMPARE_MARKS(scene.area(), area);
    PlainMarks bars(columns, rows);
    bars.markBars(xs, ys, base);
    COMPARE_MARKS(scene.bars(), bars);
}

Scene tst_Shapes::randomScene(RandomSeries &random, int kind)
{
    Scene scene;
    const int count = random.whole(1, random.oneIn(3) ? 30000 : 300);
    double level = 0.0;
    for (int i = 0; i < count; ++i) {
        level = kind % 2 ? 0.98 * level + random.real(-0.1, 0.1) : random.real(-1.1, 1.1);
        scene.values.append(random.oneIn(200) ? level * 8.0 : level);
    }
    if (kind & 2) {
        const int often = random.whole(2, 40);
        for (double &value : scene.values) {
            if (random.oneIn(often))
                value = random.oneIn(2) ? std::nan("") : HUGE_VAL;
        }
    }
    if (kind & 4) {
        double place = random.oneIn(2) ? 1e9 : random.real(-10.0, 10.0);
        for (int i = 0; i < count + int(random.oneIn(2)); ++i) {
            scene.places.append(place);
            place += random.oneIn(20) ? 0.0 : random.real(0.0, random.oneIn(30) ? 40.0 : 1.0);
        }
    }
    if (kind & 8) {
        scene.y = {0.01, 1.0, true, rows, 0.0};
        scene.baseline = 0.02;
    }
    const double first = scene.places.isEmpty() ? 0.0 : scene.places.first();
    const double all = scene.places.isEmpty() ? count : scene.places.last() - first + 1.0;
    const double shown = all * std::pow(10.0, random.real(-3.0, 0.1));
    scene.from = first + random.real(-0.1, 1.0) * (all - shown);
    scene.to = scene.from + shown;
    return scene;
}

void tst_Shapes::marksWhatEverySegmentMarks_data()
{
    QTest::addColumn<int>("kind");
    for (int kind = 0; kind < 16; ++kind) {
        QByteArray name = kind & 1 ? "smooth" : "noise";
        name += kind & 2 ? " gaps" : "";
        name += kind & 4 ? " places" : "";
        name += kind & 8 ? " log" : "";
        QTest::newRow(name) << kind;
    }
}

void tst_Shapes::marksWhatEverySegmentMarks()
{
    QFETCH(int, kind);
    for (int seed = 0; seed < 25; ++seed) {
        RandomSeries random(quint64(100 * kind + seed));
        compareAll(randomScene(random, kind));
        if (QTest::currentTestFailed())
            return;
    }
}

/// Each column has hundreds of runs of few values, which mark the same rows again and again, and now and then a new
/// one.
void tst_Shapes::marksWhatManyShortRunsMark()
{
    for (int seed = 0; seed < 24; ++seed) {
        Scene scene = sceneOfShortRuns(seed);
        if (seed % 3 == 0) {
            scene.y = {0.001, 1.0, true, rows, 0.0};
            scene.baseline = 0.002;
        }
        compareAll(scene);
        if (QTest::currentTestFailed())
            return;
    }
}

void tst_Shapes::aWideLineReachesAsFarAsManyShortRuns()
{
    for (int seed = 0; seed < 12; ++seed) {
        const Scene scene = sceneOfShortRuns(seed);
        const LinePath path = scene.path();
        QVERIFY(path.points.size() < size_t(columns * (4 * rows + 100)));
        const Points points(path);
        const ColumnIntervals drawn = intervalsOf(points.xs, points.ys);
        const ColumnIntervals wanted = intervalsOf(scene.xs(), scene.ys());
        for (size_t column = 0; column < size_t(columns); ++column) {
            QVERIFY2(areInside(wanted[column], drawn[column]), QByteArray::number(qint64(column)));
            QVERIFY2(areInside(drawn[column], joined(wanted[column])), QByteArray::number(qint64(column)));
        }
    }
}

void tst_Shapes::marksAlikeWhereverTheViewBegins()
{
    RandomSeries random(7);
    for (int round = 0; round < 60; ++round) {
        Scene scene = randomScene(random, round % 4);
        const int pixels = random.whole(1, columns - 1);
        const double shift = pixels * (scene.to - scene.from) / columns;
        Scene panned = scene;
        panned.from += shift;
        panned.to += shift;
        const ColumnGrid before = scene.grid();
        const ColumnGrid after = ColumnGrid::over(panned.from, panned.to, columns, before.step);
        QCOMPARE(after.step, before.step);
        QCOMPARE(after.first, before.first + pixels);
        const PlainMarks a = marksOf(scene.line());
        const PlainMarks b = marksOf(panned.line());
        for (int column = pixels; column < columns; ++column) {
            for (int row = 0; row < rows; ++row)
                QCOMPARE(b.at(column - pixels, row), a.at(column, row));
        }
    }
}

void tst_Shapes::drawsADotForAValueAlone()
{
    Scene scene;
    scene.values = {std::nan(""), 0.5, std::nan(""), std::nan("")};
    scene.to = 4.0;
    const PixelRects rects = scene.line();
    QCOMPARE(rects.rects().size(), size_t(1));
    QVERIFY(rects.rects()[0] == (SPixelRect{30, 22, 31, 23}));
}

void tst_Shapes::drawsNothingWithoutValues()
{
    Scene scene;
    QVERIFY(scene.line().rects().empty());
    QVERIFY(scene.area().rects().empty());
    QVERIFY(scene.bars().rects().empty());
    scene.values = QVector<double>(200, std::nan(""));
    QVERIFY(scene.line().rects().empty());
    QVERIFY(scene.area().rects().empty());
    QVERIFY(scene.bars().rects().empty());
}

QTEST_MAIN(tst_Shapes)
#include "tst_Shapes.moc"
