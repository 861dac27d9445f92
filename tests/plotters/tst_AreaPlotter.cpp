// SPDX-License-Identifier: MIT
#include "chart/IChartArea.h"
#include "plotters/AreaPlotter.h"
#include "plotters/SAreaGradientProgram.h"
#include "plotters/SAreaPlotterProgram.h"
#include "tests/support/CountingArea.h"
#include "tests/support/MetaTable.h"
#include "tests/support/QuietTest.h"

#include <QPointer>
#include <QRandomGenerator>
#include <QtTest>

#include <cstring>
#include <limits>
#include <memory>

namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

/// Opens the arrays to the test.
class OpenAreaPlotter : public AreaPlotter
{
public:
    ~OpenAreaPlotter() override { withdraw(); }
    uint dirtyFlags() const { return m_dirtyFlags; }
    QVector<float> floats(int attribute) const
    {
        const SAttributePointer bytes = _fetch_attribute_data(attribute);
        const auto *first = static_cast<const float *>(bytes.data);
        return QVector<float>(first, first + bytes.size / int(sizeof(float)));
    }
};

/// A plotter in an area, with the arrays of `data` built.
struct SBuilt
{
    CountingArea area;
    OpenAreaPlotter plotter;

    explicit SBuilt(const QVector<double> &data = {})
    {
        plotter.setChartArea(&area);
        set(data);
    }
    void set(const QVector<double> &data)
    {
        plotter.setData(data);
        built = plotter.__update_vertex();
    }
    bool built = false;
};

bool sameBits(const QVector<float> &a, const QVector<float> &b)
{
    return a.size() == b.size() && std::memcmp(a.constData(), b.constData(), size_t(a.size()) * sizeof(float)) == 0;
}

QString lines(std::initializer_list<const char *> texts)
{
    QStringList list;
    for (const char *text : texts)
        list.append(QString::fromLatin1(text));
    return list.join(QLatin1Char('\n'));
}

} // namespace

class tst_AreaPlotter : public QuietTest
{
    Q_OBJECT

private slots:
    void itsMetaObjectIsExactlyAsDescribed();
    void aFreshPlotterHasTheDefaults();
    void settersEmitOncePerChange();
    void onlyTheGradientIsSetWithoutAskingForAFrame();
    void aFuzzilyEqualBorderWidthIsNoChange();
    void theOffsetMovesItToTheRight();
    void theAreaIsTakenWholeBeforeTheFirstFrame();
    void aHandlerMayDestroyThePlotter();

    void itDeclaresTwoAttributesOfOneName();
    void itBuildsTheVerticesOfAnExample();
    void anEmptySeriesYieldsEmptyArrays();
    void negativeValuesLieBelowAHeightOfZero();
    void onlyGreaterValuesRaiseTheHeight();
    void everyRebuildMarksTheBorder();
    void theUnusedHalfIsZeroWhateverWasThereBefore();
    void verticesAreThoseOfTheOracle();
    void anUnknownAttributeYieldsNothingSilently();

    void theFlatProgramIsAsDescribed();
    void theGradientProgramIsAsDescribed();
    void theSourcesAreTakenFromTheAccessors();
};

void tst_AreaPlotter::itsMetaObjectIsExactlyAsDescribed()
{
    const QMetaObject &meta = AreaPlotter::staticMetaObject;
    QCOMPARE(meta.superClass()->className(), "IPlotter1D");
    QCOMPARE(
        ownProperties(meta),
        (QStringList{"borderWidth double write borderWidthChanged", "borderColor QColor write borderColorChanged",
                     "borderEnable bool write borderEnableChanged", "enableGradient bool write enableGradientChanged",
                     "gradientColor QColor write gradientColorChanged"}));
    QCOMPARE(ownSignals(meta),
             (QStringList{"borderWidthChanged()", "borderColorChanged()", "borderEnableChanged()",
                          "enableGradientChanged()", "gradientColorChanged()"}));
    QCOMPARE(ownMethods(meta), QStringList());
}

void tst_AreaPlotter::aFreshPlotterHasTheDefaults()
{
    const AreaPlotter plotter;
    QColor fill(0x07, 0xCB, 0xF2);
    fill.setAlphaF(0.5);
    QCOMPARE(plotter.color(), fill);
    QCOMPARE(plotter.borderColor(), QColor(0x07, 0xCB, 0xF2, 255));
    QCOMPARE(plotter.borderWidth(), 3.0);
    QCOMPARE(plotter.borderEnable(), true);
    QCOMPARE(plotter.enableGradient(), false);
    QCOMPARE(plotter.gradientColor(), QColor(0x07, 0xCB, 0xF2, 255));
    QVERIFY(plotter.plotterArea().isNull());
}

void tst_AreaPlotter::settersEmitOncePerChange()
{
    AreaPlotter plotter;
    const QSignalSpy width(&plotter, &AreaPlotter::borderWidthChanged);
    const QSignalSpy color(&plotter, &AreaPlotter::borderColorChanged);
    const QSignalSpy border(&plotter, &AreaPlotter::borderEnableChanged);
    const QSignalSpy gradient(&plotter, &AreaPlotter::enableGradientChanged);
    const QSignalSpy gradientColor(&plotter, &AreaPlotter::gradientColorChanged);
    for (int i = 0; i < 2; ++i) {
        plotter.setBorderWidth(1.5);
        plotter.setBorderColor(Qt::red);
        plotter.setBorderEnable(false);
        plotter.setEnableGradient(true);
        plotter.setGradientColor(Qt::blue);
    }
    QCOMPARE(width.count(), 1);
    QCOMPARE(color.count(), 1);
    QCOMPARE(border.count(), 1);
    QCOMPARE(gradient.count(), 1);
    QCOMPARE(gradientColor.count(), 1);
    QCOMPARE(plotter.borderWidth(), 1.5);
    QCOMPARE(plotter.borderColor(), QColor(Qt::red));
    QCOMPARE(plotter.borderEnable(), false);
    QCOMPARE(plotter.enableGradient(), true);
    QCOMPARE(plotter.gradientColor(), QColor(Qt::blue));
}

void tst_AreaPlotter::onlyTheGradientIsSetWithoutAskingForAFrame()
{
    CountingArea area;
    AreaPlotter plotter;
    plotter.setChartArea(&area);
    area.requests = 0;
    plotter.setEnableGradient(true);
    plotter.setGradientColor(Qt::blue);
    QCOMPARE(area.requests, 0);
    plotter.setBorderWidth(1.0);
    QCOMPARE(area.requests, 1);
    plotter.setBorderColor(Qt::red);
    QCOMPARE(area.requests, 2);
    plotter.setBorderEnable(false);
    QCOMPARE(area.requests, 3);
    plotter.setBorderEnable(false);
    QCOMPARE(area.requests, 3);
}

void tst_AreaPlotter::aFuzzilyEqualBorderWidthIsNoChange()
{
    AreaPlotter plotter;
    const QSignalSpy width(&plotter, &AreaPlotter::borderWidthChanged);
    plotter.setBorderWidth(3.0 + 1e-13);
    QCOMPARE(width.count(), 0);
    QCOMPARE(plotter.borderWidth(), 3.0);
    plotter.setBorderWidth(3.0 + 1e-10);
    QCOMPARE(width.count(), 1);
}

void tst_AreaPlotter::theOffsetMovesItToTheRight()
{
    AreaPlotter plotter;
    plotter.setPlotterArea(QRectF(10.0, 0.0, 5.0, 1.0));
    plotter.setXOffset(2.0);
    QCOMPARE(plotter.modArea(), QRectF(12.0, 0.0, 5.0, 1.0));
}

void tst_AreaPlotter::theAreaIsTakenWholeBeforeTheFirstFrame()
{
    SBuilt built({1.0, 3.0});
    const QSignalSpy changed(&built.plotter, &IPlotter::plotterAreaChanged);
    built.plotter.setPlotterArea(QRectF(1.0, 2.0, 3.0, 4.0));
    QCOMPARE(built.plotter.plotterArea(), QRectF(1.0, 2.0, 3.0, 4.0));
    QCOMPARE(changed.count(), 1);
}

void tst_AreaPlotter::aHandlerMayDestroyThePlotter()
{
    CountingArea area;
    const QPointer<AreaPlotter> plotter(new AreaPlotter);
    plotter->setChartArea(&area);
    connect(plotter.data(), &AreaPlotter::borderWidthChanged, this, [&] { delete plotter.data(); });
    plotter->setBorderWidth(7.0);
    QVERIFY(!plotter);
    QVERIFY(area.plotter().isEmpty());
}

void tst_AreaPlotter::itDeclaresTwoAttributesOfOneName()
{
    AreaPlotter plotter;
    const QVector<SAttributeDefinition> attributes = plotter.declareArributeArray();
    QCOMPARE(attributes.size(), 2);
    for (const SAttributeDefinition &attribute : attributes) {
        QCOMPARE(attribute.name, QStringLiteral("vertex"));
        QCOMPARE(int(attribute.usagePattern), 0x88E8);
        QCOMPARE(int(attribute.bufferType), 0x8892);
        QCOMPARE(attribute.dataType, GLenum(0x1406));
        QCOMPARE(attribute.offset, 0);
        QCOMPARE(attribute.tupleSize, 2);
        QCOMPARE(attribute.stride, 0);
        QVERIFY(attribute.mutex);
        QCOMPARE(attribute.mutex, attributes.first().mutex);
    }
    QCOMPARE(attributes.at(0).updateFlag, 0x1000u);
    QCOMPARE(attributes.at(1).updateFlag, 0x100000u);
}

void tst_AreaPlotter::itBuildsTheVerticesOfAnExample()
{
    SBuilt built({1.0, 3.0, 2.0});
    QVERIFY(built.built);
    QCOMPARE(built.plotter.floats(0), (QVector<float>{0, 0, 0, 1, 1, 0, 1, 3, 2, 0, 2, 2, //
                                                      0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0}));
    QCOMPARE(built.plotter.floats(1), (QVector<float>{0, 1, 1, 3, 2, 2}));
    QCOMPARE(built.plotter.plotterArea().height(), 3.0);
}

void tst_AreaPlotter::anEmptySeriesYieldsEmptyArrays()
{
    SBuilt built({1.0, 3.0, 2.0});
    built.set({});
    QVERIFY(built.built);
    QVERIFY(built.plotter.floats(0).isEmpty());
    QVERIFY(built.plotter.floats(1).isEmpty());
    QCOMPARE(built.plotter.plotterArea().height(), 0.0);
}

void tst_AreaPlotter::negativeValuesLieBelowAHeightOfZero()
{
    SBuilt built({-1.0, -2.0});
    QCOMPARE(built.plotter.floats(1), (QVector<float>{0, -1, 1, -2}));
    QCOMPARE(built.plotter.floats(0).mid(0, 8), (QVector<float>{0, 0, 0, -1, 1, 0, 1, -2}));
    QCOMPARE(built.plotter.plotterArea().height(), 0.0);
}

void tst_AreaPlotter::onlyGreaterValuesRaiseTheHeight()
{
    QCOMPARE(SBuilt({notANumber, 2.0, notANumber, 1.0}).plotter.plotterArea().height(), 2.0);
    QCOMPARE(SBuilt({1.0, infinity, notANumber}).plotter.plotterArea().height(), infinity);
    SBuilt placed;
    placed.plotter.setPlotterArea(QRectF(3.0, 4.0, 5.0, 6.0));
    const QSignalSpy changed(&placed.plotter, &IPlotter::plotterAreaChanged);
    placed.set({8.0});
    QCOMPARE(placed.plotter.plotterArea(), QRectF(3.0, 4.0, 5.0, 8.0));
    QCOMPARE(changed.count(), 0);
}

void tst_AreaPlotter::everyRebuildMarksTheBorder()
{
    OpenAreaPlotter plotter;
    QCOMPARE(plotter.dirtyFlags(), 0u);
    plotter.__update_vertex();
    QCOMPARE(plotter.dirtyFlags(), 0x100000u);
    QVERIFY(!plotter.__update_index());
}

void tst_AreaPlotter::theUnusedHalfIsZeroWhateverWasThereBefore()
{
    SBuilt built;
    for (const int size : {100, 100, 60, 59, 61, 200, 3, 0, 8, 1}) {
        built.set(QVector<double>(size, 7.0 + size));
        const QVector<float> fill = built.plotter.floats(0);
        QCOMPARE(fill.size(), 8 * size);
        QCOMPARE(fill.mid(4 * size), QVector<float>(4 * size, 0.0f));
        QCOMPARE(fill.mid(0, 4 * size).count(0.0f), size ? 2 * size - size + 2 : 0);
    }
}

void tst_AreaPlotter::verticesAreThoseOfTheOracle()
{
    QRandomGenerator random(4711);
    const double odd[] = {0.0, -0.0, notANumber, infinity, -infinity, 5e-324, 1e-50, 1e308, -1e308, 16777217.0};
    SBuilt built;
    for (int round = 0; round < 300; ++round) {
        QVector<double> data(int(random.bounded(40)));
        for (double &value : data)
            value = random.bounded(5) ? random.generateDouble() * 200.0 - 100.0 : odd[random.bounded(10)];
        built.set(data);
        QVector<float> fill(8 * data.size(), 0.0f);
        QVector<float> border;
        double height = 0.0;
        for (int i = 0; i < data.size(); ++i) {
            fill[4 * i] = fill[4 * i + 2] = float(i);
            fill[4 * i + 3] = float(data.at(i));
            border << float(i) << float(data.at(i));
            if (data.at(i) > height)
                height = data.at(i);
        }
        QVERIFY(sameBits(built.plotter.floats(0), fill));
        QVERIFY(sameBits(built.plotter.floats(1), border));
        QCOMPARE(built.plotter.plotterArea().height(), height);
    }
}

void tst_AreaPlotter::anUnknownAttributeYieldsNothingSilently()
{
    const AreaPlotter plotter;
    for (const int number : {-1, 2, 100}) {
        QVERIFY(!plotter._fetch_attribute_data(number).data);
        QCOMPARE(plotter._fetch_attribute_data(number).size, 0);
    }
}

void tst_AreaPlotter::theFlatProgramIsAsDescribed()
{
    const SAreaPlotterProgram program;
    QCOMPARE(program.name(), QStringLiteral("area"));
    const auto sources = program.sources();
    QCOMPARE(sources.size(), 2);
    QCOMPARE(int(sources.at(0).first), int(QOpenGLShader::Vertex));
    QCOMPARE(int(sources.at(1).first), int(QOpenGLShader::Fragment));
    QCOMPARE(sources.at(0).second,
             lines({"attribute vec2 vertex;", "uniform mat4 matrix;", "void main()", "{",
                    "   gl_Position = matrix * vec4( vertex.xy, 1.0, 1.0);", "}", ""}));
    QCOMPARE(sources.at(1).second,
             lines({"#ifdef GL_ES", "precision mediump float;", "#endif", "uniform vec4 color;", "void main()", "{",
                    "    gl_FragColor = color;", "}"}));
}

void tst_AreaPlotter::theGradientProgramIsAsDescribed()
{
    const SAreaGradientProgram program;
    QCOMPARE(program.name(), QStringLiteral("area_gradient"));
    const auto sources = program.sources();
    QCOMPARE(sources.size(), 2);
    QCOMPARE(sources.at(0).second,
             lines({"attribute vec2 vertex;", "uniform mat4 matrix;", "uniform vec4 color_top;",
                    "uniform vec4 color_bot;", "varying vec4 vColor;", "void main()", "{",
                    "   vec4 pos = matrix * vec4( vertex.xy, 1.0, 1.0);", "   float middle = (-pos.y+1.0)/2.0;",
                    "   vColor = mix(color_bot, color_top, middle);", "   gl_Position = pos;", "}", ""}));
    QCOMPARE(sources.at(1).second,
             lines({"#ifdef GL_ES", "precision mediump float;", "#endif", "varying vec4 vColor;", "void main()", "{",
                    "    gl_FragColor = vColor;", "}"}));
}

void tst_AreaPlotter::theSourcesAreTakenFromTheAccessors()
{
    class Other : public SAreaPlotterProgram
    {
    public:
        QString vertexSource() const override { return QStringLiteral("v"); }
        QString fragmentSource() const override { return QStringLiteral("f"); }
    };
    const auto sources = Other().sources();
    QCOMPARE(sources.at(0).second, QStringLiteral("v"));
    QCOMPARE(sources.at(1).second, QStringLiteral("f"));
    QCOMPARE(Other().interfaceVersion(), 1);
    QVERIFY(!Other().isOptional());
}

QTEST_MAIN(tst_AreaPlotter)
#include "tst_AreaPlotter.moc"
