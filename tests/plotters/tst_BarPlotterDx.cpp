// SPDX-License-Identifier: MIT
#include "chart/IChartArea.h"
#include "plotters/BarPlotterDx.h"
#include "plotters/SHResBarProgram.h"
#include "tests/support/MetaTable.h"
#include "tests/support/QuietTest.h"

#include <QRandomGenerator>
#include <QtTest>

#include <cstring>
#include <limits>
#include <memory>

namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

/// Opens the arrays to the test.
class OpenBarPlotter : public BarPlotterDx
{
public:
    ~OpenBarPlotter() override { withdraw(); }
    QVector<float> vertices() const { return numbers<float>(0); }
    QVector<uint> indices() const { return numbers<uint>(1); }

private:
    template <class T>
    QVector<T> numbers(int attribute) const
    {
        const SAttributePointer bytes = _fetch_attribute_data(attribute);
        const auto *first = static_cast<const T *>(bytes.data);
        return QVector<T>(first, first + bytes.size / int(sizeof(T)));
    }
};

/// A plotter in an area, with the arrays of `data` built.
struct SBuilt
{
    IChartArea area;
    OpenBarPlotter plotter;
    bool verticesBuilt = false;
    bool indicesBuilt = false;

    explicit SBuilt(const QVector<double> &data = {}, double left = 0.0)
    {
        plotter.setChartArea(&area);
        plotter.setPlotterArea(QRectF(left, 0.0, 0.0, 0.0));
        set(data);
    }
    void set(const QVector<double> &data)
    {
        plotter.setData(data);
        verticesBuilt = plotter.__update_vertex();
        indicesBuilt = plotter.__update_index();
    }
};

QVector<uint> quads(int count)
{
    QVector<uint> indices;
    for (uint i = 0; i < uint(count); ++i)
        indices << 4 * i + 1 << 4 * i + 2 << 4 * i << 4 * i + 1 << 4 * i + 2 << 4 * i + 3;
    return indices;
}

bool sameBits(const QVector<float> &a, const QVector<float> &b)
{
    return a.size() == b.size() && std::memcmp(a.constData(), b.constData(), size_t(a.size()) * sizeof(float)) == 0;
}

const QVector<double> oneAndTwo{1.0, 5.0, 2.0, 3.0}; // widths 1 and 2, values 5 and 3

} // namespace

class tst_BarPlotterDx : public QuietTest
{
    Q_OBJECT

private slots:
    void itAddsNothingToTheMetaObject();
    void itDeclaresVerticesAndIndices();
    void theProgramIsAsDescribed();

    void itBuildsTheArraysOfAnExample();
    void positionsAreSplitIntoTwoFloats();
    void verticesAreThoseOfTheOracle();
    void anEmptySeriesKeepsArraysAndArea();
    void aSingleNumberIsNoBar();
    void anOddLastNumberIsNoBar();
    void anAllNegativeSeriesReportsItsLargestValue();
    void theUnusedHalfIsZeroWhateverWasThereBefore();
    void indicesGrowAndNeverShrink();
    void anUnknownAttributeYieldsNothingSilently();
    void onlyThePositionOfTheAreaCanBeSet();

    void theIndexIsThatOfTheBarWhoseRightEdgeIsNext();
    void theEdgesOfTheAreaAreTheFirstBarAndOnePastTheLast();
    void outsideTheAreaIsNoBar();
    void theOffsetDoesNotShiftTheSearch();
    void theSearchEndsWithTheLastBar();
    void theSearchIsThatOfABoundedScan();
    void startAndEndIndex();
    void theMaximumOfTheTouchedBars();
    void hoveringHitsBelowTheValue();
    void hoveringAboveTheValueNamesTheBar();
    void hoveringOnTheRightEdgeOrAtNoPlaceIsAMiss();
    void hoveringOverNoNumberHits();
    void theAreaAtAPointIsAUniformSlot();
};

void tst_BarPlotterDx::itAddsNothingToTheMetaObject()
{
    const QMetaObject &meta = BarPlotterDx::staticMetaObject;
    QCOMPARE(meta.superClass()->className(), "IPlotter1D");
    QCOMPARE(ownProperties(meta), QStringList());
    QCOMPARE(ownSignals(meta), QStringList());
    QCOMPARE(ownMethods(meta), QStringList());
}

void tst_BarPlotterDx::itDeclaresVerticesAndIndices()
{
    BarPlotterDx plotter;
    const QVector<SAttributeDefinition> attributes = plotter.declareArributeArray();
    QCOMPARE(attributes.size(), 2);
    const SAttributeDefinition &vertex = attributes.at(0);
    QCOMPARE(vertex.name, QStringLiteral("vertex"));
    QCOMPARE(vertex.updateFlag, 0x1000u);
    QCOMPARE(int(vertex.usagePattern), 0x88E8);
    QCOMPARE(int(vertex.bufferType), 0x8892);
    QCOMPARE(vertex.dataType, GLenum(0x1406));
    QCOMPARE(vertex.tupleSize, 3);
    const SAttributeDefinition &index = attributes.at(1);
    QCOMPARE(index.name, QStringLiteral("index"));
    QCOMPARE(index.updateFlag, 0x4000u);
    QCOMPARE(int(index.usagePattern), 0x88E4);
    QCOMPARE(int(index.bufferType), 0x8893);
    QCOMPARE(index.dataType, GLenum(0x1405));
    QCOMPARE(index.tupleSize, 1);
    for (const SAttributeDefinition &attribute : attributes) {
        QCOMPARE(attribute.offset, 0);
        QCOMPARE(attribute.stride, 0);
        QVERIFY(attribute.mutex);
        QCOMPARE(attribute.mutex, vertex.mutex);
    }
}

void tst_BarPlotterDx::theProgramIsAsDescribed()
{
    const SHResBarProgram program;
    QCOMPARE(program.name(), QStringLiteral("hresbar"));
    const auto sources = program.sources();
    QCOMPARE(sources.size(), 2);
    QCOMPARE(int(sources.at(0).first), int(QOpenGLShader::Vertex));
    QCOMPARE(int(sources.at(1).first), int(QOpenGLShader::Fragment));
    const QStringList vertexLines{"attribute vec3 vertex;",
                                  "uniform float x_msb;",
                                  "uniform float x_lsb;",
                                  "uniform float screen_dx;",
                                  "uniform float screen_dy;",
                                  "void main()",
                                  "{",
                                  "   float x\t\t= ((vertex[0] - x_msb) + (vertex[1] - x_lsb))*screen_dx - 1.0;",
                                  "   float y\t\t= -vertex[2]/screen_dy + 1.0;",
                                  "   gl_Position = vec4( x, y, 1.0, 1.0);",
                                  "}",
                                  ""};
    const QStringList fragmentLines{"#ifdef GL_ES",
                                    "precision mediump float;",
                                    "#endif",
                                    "uniform vec4 color;",
                                    "void main()",
                                    "{",
                                    "    gl_FragColor = color;",
                                    "}"};
    QCOMPARE(sources.at(0).second, vertexLines.join(QLatin1Char('\n')));
    QCOMPARE(sources.at(1).second, fragmentLines.join(QLatin1Char('\n')));
    QCOMPARE(program.interfaceVersion(), 1);
    QVERIFY(!program.isOptional());
}

void tst_BarPlotterDx::itBuildsTheArraysOfAnExample()
{
    const SBuilt built(oneAndTwo);
    QVERIFY(built.verticesBuilt);
    QVERIFY(built.indicesBuilt);
    QVector<float> expected{0, 0, 0, 1, 0, 0, 0, 0, 5, 1, 0, 5, //
                            1, 0, 0, 3, 0, 0, 1, 0, 3, 3, 0, 3};
    expected.resize(2 * expected.size()); // eight zero vertices
    QCOMPARE(built.plotter.vertices(), expected);
    QCOMPARE(built.plotter.indices().mid(0, 12), (QVector<uint>{1, 2, 0, 1, 2, 3, 5, 6, 4, 5, 6, 7}));
    QCOMPARE(built.plotter.indices(), quads(4));
    QCOMPARE(built.plotter.plotterArea(), QRectF(0.0, 0.0, 3.0, 5.0));
}

void tst_BarPlotterDx::positionsAreSplitIntoTwoFloats()
{
    const SBuilt built({100000000.5, 1.0, 1.0, 1.0});
    const QVector<float> vertices = built.plotter.vertices();
    QCOMPARE(vertices.at(3), 100000000.0f);
    QCOMPARE(vertices.at(4), 0.5f);
    QCOMPARE(vertices.at(12), 100000000.0f);
    QCOMPARE(vertices.at(13), 0.5f);
    QCOMPARE(vertices.at(15), 100000000.0f);
    QCOMPARE(vertices.at(16), 1.5f);
}

void tst_BarPlotterDx::verticesAreThoseOfTheOracle()
{
    QRandomGenerator random(815);
    SBuilt built;
    for (int round = 0; round < 300; ++round) {
        QVector<double> data(1 + int(random.bounded(60)));
        for (double &number : data)
            number = (random.generateDouble() - 0.2) * std::pow(10.0, random.bounded(30) - 15);
        built.set(data);
        QVector<float> expected(12 * data.size(), 0.0f);
        double x = 0.0;
        double height = data.size() > 1 ? data.at(1) : 0.0;
        for (int k = 0; k < data.size() / 2; ++k) {
            const double edges[] = {x, x + data.at(2 * k)};
            for (int corner = 0; corner < 4; ++corner) {
                float *vertex = &expected[12 * k + 3 * corner];
                vertex[0] = float(edges[corner % 2]);
                vertex[1] = float(edges[corner % 2] - double(vertex[0]));
                vertex[2] = corner < 2 ? 0.0f : float(data.at(2 * k + 1));
            }
            height = std::max(height, data.at(2 * k + 1));
            x = edges[1];
        }
        QVERIFY(sameBits(built.plotter.vertices(), expected));
        QCOMPARE(built.plotter.plotterArea().width(), x);
        QCOMPARE(built.plotter.plotterArea().height(), height);
    }
}

void tst_BarPlotterDx::anEmptySeriesKeepsArraysAndArea()
{
    SBuilt built(oneAndTwo);
    const QVector<float> before = built.plotter.vertices();
    built.set({});
    QVERIFY(!built.verticesBuilt);
    QVERIFY(!built.indicesBuilt);
    QCOMPARE(built.plotter.vertices(), before);
    QCOMPARE(built.plotter.plotterArea(), QRectF(0.0, 0.0, 3.0, 5.0));
    QCOMPARE(built.plotter._index_at(1.0), -1);
    QCOMPARE(built.plotter.max_in(QRectF(0.0, 0.0, 3.0, 5.0)), 0.0);
}

void tst_BarPlotterDx::aSingleNumberIsNoBar()
{
    const SBuilt built({4.0});
    QVERIFY(built.verticesBuilt);
    QCOMPARE(built.plotter.vertices(), QVector<float>(12, 0.0f));
    QCOMPARE(built.plotter.plotterArea(), QRectF(0.0, 0.0, 0.0, 0.0));
    QCOMPARE(built.plotter._index_at(0.0), -1);
    QVERIFY(!built.plotter.mouse_hovering(QPointF(0.0, 0.0)).valid);
    QVERIFY(built.plotter.area_at(QPointF(0.0, 0.0)).isNull());
    QCOMPARE(built.plotter.max_in(QRectF(-1.0, -1.0, 10.0, 10.0)), 0.0);
}

void tst_BarPlotterDx::anOddLastNumberIsNoBar()
{
    const SBuilt built({1.0, 5.0, 2.0, 3.0, 9.0});
    QCOMPARE(built.plotter.plotterArea(), QRectF(0.0, 0.0, 3.0, 5.0));
    QCOMPARE(built.plotter.vertices().size(), 5 * 4 * 3);
    QCOMPARE(built.plotter.vertices().mid(24), QVector<float>(36, 0.0f));
    QCOMPARE(built.plotter.indices(), quads(5));
    QCOMPARE(built.plotter._index_at(3.0), 2);
}

void tst_BarPlotterDx::anAllNegativeSeriesReportsItsLargestValue()
{
    QCOMPARE(SBuilt({1.0, -5.0, 1.0, -3.0, 1.0, -4.0}).plotter.plotterArea().height(), -3.0);
    QCOMPARE(SBuilt({1.0, 2.0, 1.0, notANumber}).plotter.plotterArea().height(), 2.0);
}

void tst_BarPlotterDx::theUnusedHalfIsZeroWhateverWasThereBefore()
{
    SBuilt built;
    for (const int size : {100, 100, 60, 59, 61, 200, 3, 8, 1, 2}) {
        built.set(QVector<double>(size, 7.0 + size));
        const QVector<float> vertices = built.plotter.vertices();
        QCOMPARE(vertices.size(), 12 * size);
        const int used = 12 * (size / 2);
        QCOMPARE(vertices.mid(used), QVector<float>(12 * size - used, 0.0f));
    }
}

void tst_BarPlotterDx::indicesGrowAndNeverShrink()
{
    SBuilt built(QVector<double>(4, 1.0));
    QVERIFY(built.indicesBuilt);
    QCOMPARE(built.plotter.indices(), quads(4));
    built.set(QVector<double>(8, 1.0));
    QVERIFY(built.indicesBuilt);
    QCOMPARE(built.plotter.indices(), quads(8));
    built.set(QVector<double>(8, 2.0));
    QVERIFY(built.indicesBuilt); // at equal length too
    built.set(QVector<double>(4, 1.0));
    QVERIFY(!built.indicesBuilt);
    QCOMPARE(built.plotter.indices(), quads(8));
}

void tst_BarPlotterDx::anUnknownAttributeYieldsNothingSilently()
{
    const BarPlotterDx plotter;
    for (const int number : {-1, 2, 100}) {
        QVERIFY(!plotter._fetch_attribute_data(number).data);
        QCOMPARE(plotter._fetch_attribute_data(number).size, 0);
    }
}

void tst_BarPlotterDx::onlyThePositionOfTheAreaCanBeSet()
{
    BarPlotterDx fresh;
    fresh.setPlotterArea(QRectF(1.0, 2.0, 3.0, 4.0));
    QCOMPARE(fresh.plotterArea(), QRectF(1.0, 2.0, 0.0, 0.0));

    SBuilt built(oneAndTwo);
    const QSignalSpy changed(&built.plotter, &IPlotter::plotterAreaChanged);
    built.plotter.setPlotterArea(QRectF(0.0, 0.0, 30.0, 40.0));
    QCOMPARE(changed.count(), 0);
    built.plotter.setPlotterArea(QRectF(10.0, 0.0, 30.0, 40.0));
    QCOMPARE(changed.count(), 1);
    QCOMPARE(built.plotter.plotterArea(), QRectF(10.0, 0.0, 3.0, 5.0));
}

// queries

void tst_BarPlotterDx::theIndexIsThatOfTheBarWhoseRightEdgeIsNext()
{
    const SBuilt built({1.0, 5.0, 2.0, 3.0, 4.0, 1.0}, 10.0); // edges 10 11 13 17
    QCOMPARE(built.plotter._index_at(10.5), 0);
    QCOMPARE(built.plotter._index_at(11.0), 0); // an edge belongs to the bar on its left
    QCOMPARE(built.plotter._index_at(11.001), 1);
    QCOMPARE(built.plotter._index_at(13.0), 1);
    QCOMPARE(built.plotter._index_at(16.9), 2);
}

void tst_BarPlotterDx::theEdgesOfTheAreaAreTheFirstBarAndOnePastTheLast()
{
    const SBuilt built(oneAndTwo, 10.0);
    QCOMPARE(built.plotter._index_at(built.plotter.plotterArea().left()), 0);
    QCOMPARE(built.plotter._index_at(built.plotter.plotterArea().right()), 2);
    QCOMPARE(built.plotter._index_at(10.0 + 1e-12), 0); // fuzzily equal
}

void tst_BarPlotterDx::outsideTheAreaIsNoBar()
{
    const SBuilt built(oneAndTwo);
    for (const double x : {-0.001, 3.001, infinity, -infinity, notANumber})
        QCOMPARE(built.plotter._index_at(x), -1);
    SBuilt above(oneAndTwo);
    above.plotter.setPlotterArea(QRectF(0.0, 1.0, 3.0, 5.0)); // (x, 0) lies below it
    QCOMPARE(above.plotter._index_at(1.0), -1);
    QCOMPARE(BarPlotterDx()._index_at(0.0), -1);
}

void tst_BarPlotterDx::theOffsetDoesNotShiftTheSearch()
{
    SBuilt built(oneAndTwo);
    built.plotter.setXOffset(100.0);
    QCOMPARE(built.plotter._index_at(0.5), 0);
    QCOMPARE(built.plotter._index_at(2.5), 1);
}

void tst_BarPlotterDx::theSearchEndsWithTheLastBar()
{
    SBuilt built({10.0, 5.0, 10.0, 5.0});
    built.plotter.setData({1.0, 5.0, 1.0, 3.0}); // the area is still 20 wide
    QCOMPARE(built.plotter._index_at(15.0), 1);
    QCOMPARE(built.plotter._index_at(20.0), 2);
    built.plotter.setData({notANumber, 5.0, 1.0, 3.0});
    QCOMPARE(built.plotter._index_at(15.0), 0);
    built.plotter.setData({-1.0, 5.0, infinity, 3.0, 1.0, 1.0});
    QCOMPARE(built.plotter._index_at(15.0), 1);
    built.plotter.setData({infinity, 5.0, 1.0, 3.0});
    QCOMPARE(built.plotter._index_at(15.0), 0);
    built.plotter.setData({3.0});
    QCOMPARE(built.plotter._index_at(15.0), -1);
}

void tst_BarPlotterDx::theSearchIsThatOfABoundedScan()
{
    QRandomGenerator random(99);
    SBuilt built;
    for (int round = 0; round < 200; ++round) {
        QVector<double> data;
        for (int k = int(random.bounded(1, 30)); k > 0; --k)
            data << (random.bounded(4) ? random.generateDouble() : 0.0) << 1.0 + random.generateDouble();
        built.set(data);
        const QRectF area = built.plotter.plotterArea();
        if (area.width() == 0.0)
            continue;
        for (int probe = 0; probe < 20; ++probe) {
            const double x = area.width() * (0.001 + 0.998 * random.generateDouble());
            int expected = 0;
            double right = data.at(0);
            while (right < x && expected < data.size() / 2 - 1)
                right += data.at(2 * ++expected);
            QCOMPARE(built.plotter._index_at(x), expected);
        }
    }
}

void tst_BarPlotterDx::startAndEndIndex()
{
    const SBuilt built({1.0, 5.0, 1.0, 4.0, 1.0, 3.0, 1.0, 2.0});
    QCOMPARE(built.plotter.__start_index(QRectF(2.5, 0.0, 1.0, 1.0)), 1); // one before the bar
    QCOMPARE(built.plotter.__start_index(QRectF(0.5, 0.0, 1.0, 1.0)), 0);
    QCOMPARE(built.plotter.__start_index(QRectF(-2.0, 0.0, 1.0, 1.0)), 0);
    QCOMPARE(built.plotter.__end_index(QRectF(0.5, 0.0, 2.0, 1.0)), 2);
    QCOMPARE(built.plotter.__end_index(QRectF(0.5, 0.0, 3.5, 1.0)), 4);
    QCOMPARE(built.plotter.__end_index(QRectF(0.5, 0.0, 9.0, 1.0)), -1);
}

void tst_BarPlotterDx::theMaximumOfTheTouchedBars()
{
    const SBuilt built({1.0, 5.0, 1.0, 4.0, 1.0, 3.0, 1.0, 1e300});
    QCOMPARE(built.plotter.max_in(QRectF(-10.0, 0.0, 100.0, 1.0)), 1e300);
    QCOMPARE(built.plotter.max_in(QRectF(1.5, 0.0, 1.0, 1.0)), 5.0); // from one bar before to before the last touched
    QCOMPARE(built.plotter.max_in(QRectF(2.5, 0.0, 1.0, 1.0)), 4.0);
    QCOMPARE(built.plotter.max_in(QRectF(20.0, 0.0, 1.0, 1.0)), 0.0);
    QCOMPARE(built.plotter.max_in(QRectF(1.0, 0.0, 0.0, 1.0)), 0.0);
    QCOMPARE(built.plotter.max_in(QRectF(notANumber, 0.0, 1.0, 1.0)), 0.0);
    const SBuilt negative({1.0, -5.0, 1.0, -4.0});
    QCOMPARE(negative.plotter.max_in(QRectF(-10.0, -10.0, 100.0, 100.0)), 0.0);
}

void tst_BarPlotterDx::hoveringHitsBelowTheValue()
{
    const SBuilt built({1.0, 5.0, 2.0, 3.0, 4.0, 8.0}, 10.0);
    const SInfoPoint info = built.plotter.mouse_hovering(QPointF(12.0, 3.0));
    QVERIFY(info.valid);
    QCOMPARE(info.index, 1);
    QCOMPARE(info.area, QRectF(11.0, 0.0, 2.0, 3.0));
    QCOMPARE(info.plotter, &built.plotter);
    QCOMPARE(info.xValue, 0.0);
    QCOMPARE(info.yValue, 0.0);
    QVERIFY(info.label.isEmpty() && info.text.isEmpty());
    QVERIFY(built.plotter.mouse_hovering(QPointF(12.0, -100.0)).valid);
}

void tst_BarPlotterDx::hoveringAboveTheValueNamesTheBar()
{
    const SBuilt built(oneAndTwo);
    const SInfoPoint info = built.plotter.mouse_hovering(QPointF(2.0, 3.001));
    QVERIFY(!info.valid);
    QCOMPARE(info.index, 1);
    QVERIFY(info.area.isNull());
}

void tst_BarPlotterDx::hoveringOnTheRightEdgeOrAtNoPlaceIsAMiss()
{
    const SBuilt built(oneAndTwo);
    for (const QPointF &point : {QPointF(3.0, 1.0), QPointF(notANumber, 1.0), QPointF(-1.0, 1.0)}) {
        QVERIFY(!built.plotter.mouse_hovering(point).valid);
        QCOMPARE(built.plotter.mouse_hovering(point).plotter, &built.plotter);
        QVERIFY(built.plotter.area_at(point).isNull());
    }
}

void tst_BarPlotterDx::hoveringOverNoNumberHits()
{
    const SBuilt hole({1.0, 5.0, 1.0, notANumber});
    const SInfoPoint hit = hole.plotter.mouse_hovering(QPointF(1.5, 50.0)); // which is not greater than the value
    QVERIFY(hit.valid);
    QCOMPARE(hit.index, 1);
    QCOMPARE(hit.area.left(), 1.0);
    QCOMPARE(hit.area.width(), 1.0);
    QVERIFY(qIsNaN(hit.area.height()));
    QVERIFY(qIsNaN(hole.plotter.area_at(QPointF(1.5, 50.0)).height())); // as this has it
    QVERIFY(hole.plotter.mouse_hovering(QPointF(0.5, notANumber)).valid);
}

void tst_BarPlotterDx::theAreaAtAPointIsAUniformSlot()
{
    const SBuilt built({1.0, 5.0, 3.0, 2.0}); // four numbers in a width of 4
    QCOMPARE(built.plotter.area_at(QPointF(2.0, 0.0)), QRectF(1.0, 0.0, 1.0, 2.0));
    QCOMPARE(built.plotter.area_at(QPointF(0.5, 100.0)), QRectF(0.0, 0.0, 1.0, 5.0));
}

QTEST_MAIN(tst_BarPlotterDx)
#include "tst_BarPlotterDx.moc"
