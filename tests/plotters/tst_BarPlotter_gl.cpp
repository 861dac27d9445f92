// SPDX-License-Identifier: MIT
#include "chart/IChartArea.h"
#include "plotters/BarPlotter.h"
#include "tests/support/LogCatcher.h"
#include "tests/support/OffscreenGL.h"

#include <QtTest>

#include <QOpenGLFunctions>

#include <limits>
#include <memory>
#include <optional>

namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
const QColor black(0, 0, 0);
const QColor blue(0, 0, 255);

QVector<double> values(int count, double value)
{
    return QVector<double>(count, value);
}

} // namespace

/// Calls the plotter as a chart area does, without a scene. A picture is 100 x 100 pixels.
class tst_BarPlotter_gl : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void barsStandWhereTheSeriesHasThem();
    void theVerticalPositionDoesNotDependOnTheViewsTop();
    void anOffsetMovesTheBarsToTheLeft();
    void aColourIsBlendedByItsAlpha();
    void aViewDrawsOnlyTheBarsInIt_data();
    void aViewDrawsOnlyTheBarsInIt();

    void withoutDataNothingIsDrawnAndTheHeightIsZero();
    void shrinkingKeepsTheIndicesAndDrawsFewer();
    void growingAgainUploadsNoIndicesThatAreThere();
    void atEqualLengthTheIndicesAreUploadedAgain();
    void negativeBarsAreDrawnBelowZero();
    void theHeightOfTheAreaFollowsTheDataWithoutASignal();
    void afterTheFirstSynchronisationTheHeightCannotBeSet();
    void theHeightIgnoresNotANumberAndTakesInfinity();

    void anInvisiblePlotterUploadsOnceItIsShown();
    void aSeriesThatGrowsAfterTheUploadIsNotDrawnYet();
    void aPlotterThatWasNotSynchronisedIsNotDrawn();
    void propertiesSetAfterTheSynchronisationWaitForTheNext();
    void anotherContextGetsItsOwnBuffers();
    void aContextAtTheSameAddressGetsItsOwnBuffers();
    void strangeAreasDrawNothingOrEndInPeace_data();
    void strangeAreasDrawNothingOrEndInPeace();

    void anErrorIsReportedUntilItIsTheSameAgain();

private:
    QImage drawn(const QRectF &view)
    {
        return m_gl->picture([&] { m_plotter->drawFrame(view); });
    }
    int bars(const QRectF &view)
    {
        return m_gl->primitives([&] { m_plotter->drawFrame(view); }) / 2;
    }

    std::unique_ptr<LogCatcher> m_log;
    std::unique_ptr<OffscreenGL> m_gl;
    std::unique_ptr<BarPlotter> m_plotter;
};

void tst_BarPlotter_gl::init()
{
    m_log = std::make_unique<LogCatcher>();
    m_gl = std::make_unique<OffscreenGL>();
    QVERIFY(m_gl->isValid());
    m_plotter = std::make_unique<BarPlotter>();
    m_plotter->setColor(blue);
}

void tst_BarPlotter_gl::cleanup()
{
    m_plotter.reset();
    m_gl.reset();
    const QStringList messages = m_log->messages();
    m_log.reset();
    QCOMPARE(messages, QStringList());
}

// pictures

void tst_BarPlotter_gl::barsStandWhereTheSeriesHasThem()
{
    m_plotter->setPlotterArea({0.0, 0.0, 5.0, 1.0});
    m_plotter->setData({1.0, 0.0, 4.0, 2.0, 0.5});
    m_plotter->synchronize();
    const QImage picture = drawn({0.0, 0.0, 5.0, 4.0});
    // Five bars of 20 pixels; a value of 1 is 25 pixels high.
    const int heights[] = {25, 0, 100, 50, 12};
    for (int bar = 0; bar < 5; ++bar) {
        for (int x = 20 * bar; x < 20 * bar + 20; ++x) {
            for (int y = 0; y < 100; ++y) {
                if (bar == 4 && y == 87)
                    continue; // 12.5 pixels high
                QCOMPARE(picture.pixelColor(x, y), y >= 100 - heights[bar] ? blue : black);
            }
        }
    }
}

void tst_BarPlotter_gl::theVerticalPositionDoesNotDependOnTheViewsTop()
{
    m_plotter->setPlotterArea({0.0, 0.0, 1.0, 1.0});
    m_plotter->setData({2.0});
    m_plotter->synchronize();
    const QImage low = drawn({0.0, 0.0, 1.0, 4.0});
    const QImage high = drawn({0.0, 1.0, 1.0, 4.0});
    QCOMPARE(low, high);
    QCOMPARE(low.pixelColor(50, 49), black);
    QCOMPARE(low.pixelColor(50, 50), blue);
}

void tst_BarPlotter_gl::anOffsetMovesTheBarsToTheLeft()
{
    m_plotter->setPlotterArea({0.0, 0.0, 10.0, 1.0});
    m_plotter->setData({0.0, 0.0, 0.0, 0.0, 0.0, 1.0, 0.0, 0.0, 0.0, 0.0});
    m_plotter->setXOffset(2.0);
    m_plotter->synchronize();
    const QImage picture = drawn({0.0, 0.0, 10.0, 1.0});
    for (int x = 0; x < 100; ++x)
        QCOMPARE(picture.pixelColor(x, 50), x >= 30 && x < 40 ? blue : black);
}

void tst_BarPlotter_gl::aColourIsBlendedByItsAlpha()
{
    m_plotter->setColor(QColor(255, 100, 0, 51)); // a fifth
    m_plotter->setPlotterArea({0.0, 0.0, 1.0, 1.0});
    m_plotter->setData({1.0});
    m_plotter->synchronize();
    QCOMPARE(drawn({0.0, 0.0, 1.0, 1.0}).pixelColor(50, 50), QColor(51, 20, 0));
}

void tst_BarPlotter_gl::aViewDrawsOnlyTheBarsInIt_data()
{
    QTest::addColumn<QRectF>("view");
    QTest::addColumn<int>("count");
    QTest::newRow("3.2 to 7.5 are bars 3 to 7") << QRectF(3.2, 0.0, 4.3, 5.0) << 5;
    QTest::newRow("all") << QRectF(0.0, 0.0, 10.0, 5.0) << 10;
    QTest::newRow("more than all") << QRectF(-10.0, 0.0, 100.0, 5.0) << 10;
    QTest::newRow("whole bars") << QRectF(2.0, 0.0, 3.0, 5.0) << 3;
    QTest::newRow("inside one") << QRectF(9.1, 0.0, 0.1, 5.0) << 1;
    QTest::newRow("left of it") << QRectF(-10.0, 0.0, 5.0, 5.0) << 0;
    QTest::newRow("right of it") << QRectF(10.0, 0.0, 5.0, 5.0) << 0;
    QTest::newRow("above it") << QRectF(0.0, 50.0, 10.0, 5.0) << 0;
}

void tst_BarPlotter_gl::aViewDrawsOnlyTheBarsInIt()
{
    QFETCH(QRectF, view);
    QFETCH(int, count);
    m_plotter->setPlotterArea({0.0, 0.0, 10.0, 1.0});
    m_plotter->setData(values(10, 2.0));
    m_plotter->synchronize();
    QCOMPARE(bars(view), count);
    if (count == 5) {
        QCOMPARE(m_plotter->data().size(), 10);
        const QImage picture = drawn(view);
        for (int x = 0; x < 100; ++x)
            QCOMPARE(picture.pixelColor(x, 99), blue); // both cut bars reach the border
    }
}

// buffers

void tst_BarPlotter_gl::withoutDataNothingIsDrawnAndTheHeightIsZero()
{
    m_plotter->setPlotterArea({0.0, 0.0, 10.0, 7.0});
    m_plotter->synchronize();
    QCOMPARE(m_plotter->plotterArea(), QRectF(0.0, 0.0, 10.0, 0.0));
    QCOMPARE(bars({0.0, 0.0, 10.0, 1.0}), 0);
    m_plotter->setData({1.0, 2.0});
    m_plotter->setData({});
    m_plotter->synchronize();
    QCOMPARE(m_plotter->plotterArea().height(), 0.0);
    QCOMPARE(bars({0.0, 0.0, 10.0, 1.0}), 0);
}

void tst_BarPlotter_gl::shrinkingKeepsTheIndicesAndDrawsFewer()
{
    const QRectF view(0.0, 0.0, 10.0, 5.0);
    m_plotter->setPlotterArea({0.0, 0.0, 10.0, 1.0});
    m_plotter->setData(values(10, 1.0));
    m_plotter->synchronize();
    QCOMPARE(m_gl->bufferSizes(), (QVector<int>{160, 160, 240})); // points, vertex ids, 60 indices
    m_plotter->setData(values(5, 1.0));
    QCOMPARE(bars(view), 10); // until the next synchronisation
    m_plotter->synchronize();
    QCOMPARE(m_gl->bufferSizes(), (QVector<int>{80, 160, 240}));
    QCOMPARE(bars(view), 5);
    QCOMPARE(drawn({0.0, 0.0, 10.0, 1.0}).pixelColor(99, 50), blue); // five bars over the whole width
}

void tst_BarPlotter_gl::growingAgainUploadsNoIndicesThatAreThere()
{
    m_plotter->setPlotterArea({0.0, 0.0, 10.0, 1.0});
    for (const int count : {10, 5, 8, 10, 12, 3}) {
        m_plotter->setData(values(count, 1.0 + count));
        m_plotter->synchronize();
        QCOMPARE(bars({0.0, 0.0, 10.0, 5.0}), count);
        const int most = count > 10 || count == 3 ? 12 : 10;
        QCOMPARE(m_gl->bufferSizes(), (QVector<int>{16 * count, 16 * most, 24 * most}));
    }
}

void tst_BarPlotter_gl::atEqualLengthTheIndicesAreUploadedAgain()
{
    m_plotter->setPlotterArea({0.0, 0.0, 4.0, 1.0});
    m_plotter->setData(values(4, 1.0));
    m_plotter->synchronize();
    // Spoil the vertex ids and the indices in their buffers: only a new upload makes the bars whole again.
    QOpenGLFunctions &gl = m_gl->gl();
    const QByteArray zeros(96, '\0');
    for (GLuint name = 1; name < 10; ++name) {
        if (!gl.glIsBuffer(name))
            continue;
        gl.glBindBuffer(GL_ARRAY_BUFFER, name);
        gl.glBufferSubData(GL_ARRAY_BUFFER, 0, 64, zeros.constData());
        gl.glBindBuffer(GL_ARRAY_BUFFER, 0);
    }
    QCOMPARE(drawn({0.0, 0.0, 4.0, 1.0}).pixelColor(50, 50), black);
    m_plotter->setData(values(4, 2.0));
    m_plotter->synchronize();
    QCOMPARE(drawn({0.0, 0.0, 4.0, 1.0}).pixelColor(50, 50), blue);
}

void tst_BarPlotter_gl::negativeBarsAreDrawnBelowZero()
{
    m_plotter->setPlotterArea({0.0, 0.0, 4.0, 9.0});
    m_plotter->setData({-1.0, -2.0, -3.0, -4.0});
    m_plotter->synchronize();
    QCOMPARE(m_plotter->plotterArea(), QRectF(0.0, 0.0, 4.0, 0.0));
    QCOMPARE(bars({0.0, 0.0, 4.0, 1.05}), 4);
    QCOMPARE(bars({1.5, 0.0, 1.0, 1.05}), 2);
    QCOMPARE(bars({4.0, 0.0, 1.0, 1.05}), 0);
    // Zero is the lower border of the item: nothing of them is seen.
    const QImage picture = drawn({0.0, 0.0, 4.0, 1.05});
    for (int x = 0; x < 100; ++x)
        QCOMPARE(picture.pixelColor(x, 99), black);
}

void tst_BarPlotter_gl::theHeightOfTheAreaFollowsTheDataWithoutASignal()
{
    m_plotter->setPlotterArea({3.0, 0.0, 4.0, 9.0});
    m_plotter->setData({1.0, 8.0});
    QSignalSpy changed(m_plotter.get(), &IPlotter::plotterAreaChanged);
    m_plotter->synchronize();
    QCOMPARE(m_plotter->plotterArea(), QRectF(3.0, 0.0, 4.0, 8.0));
    m_plotter->setData({1.0, 5.0, 2.0});
    QCOMPARE(m_plotter->plotterArea(), QRectF(3.0, 0.0, 4.0, 5.0));
    QCOMPARE(changed.count(), 0);
}

void tst_BarPlotter_gl::afterTheFirstSynchronisationTheHeightCannotBeSet()
{
    m_plotter->setPlotterArea({0.0, 0.0, 4.0, 100.0});
    m_plotter->setData({1.0, 8.0});
    m_plotter->synchronize();
    QSignalSpy changed(m_plotter.get(), &IPlotter::plotterAreaChanged);
    m_plotter->setPlotterArea({0.0, 0.0, 4.0, 500.0});
    QCOMPARE(changed.count(), 0);
    m_plotter->setPlotterArea({1.0, 2.0, 3.0, 500.0});
    QCOMPARE(m_plotter->plotterArea(), QRectF(1.0, 2.0, 3.0, 8.0));
    QCOMPARE(changed.count(), 1);
}

void tst_BarPlotter_gl::theHeightIgnoresNotANumberAndTakesInfinity()
{
    m_plotter->setPlotterArea({0.0, 0.0, 3.0, 1.0});
    m_plotter->setData({notANumber, 3.0, notANumber});
    m_plotter->synchronize();
    QCOMPARE(m_plotter->plotterArea().height(), 3.0);
    m_plotter->setData({2.0, infinity, -infinity});
    QCOMPARE(m_plotter->plotterArea().height(), infinity);
    m_plotter->setData({1e-300, -1.0});
    QVERIFY(m_plotter->plotterArea().height() == 1e-300);
}

// handing over

void tst_BarPlotter_gl::anInvisiblePlotterUploadsOnceItIsShown()
{
    m_plotter->setVisible(false);
    m_plotter->setPlotterArea({0.0, 0.0, 4.0, 1.0});
    m_plotter->setData(values(4, 1.0));
    m_plotter->synchronize();
    QCOMPARE(m_plotter->plotterArea().height(), 1.0);
    QCOMPARE(bars({0.0, 0.0, 4.0, 1.0}), 0);
    m_plotter->setVisible(true);
    QCOMPARE(bars({0.0, 0.0, 4.0, 1.0}), 0); // not before it is synchronised
    m_plotter->synchronize();
    QCOMPARE(bars({0.0, 0.0, 4.0, 1.0}), 4);
    QCOMPARE(m_gl->bufferSizes(), (QVector<int>{64, 64, 96}));
}

void tst_BarPlotter_gl::aSeriesThatGrowsAfterTheUploadIsNotDrawnYet()
{
    m_plotter->setPlotterArea({0.0, 0.0, 4.0, 1.0});
    m_plotter->setData(values(4, 1.0));
    m_plotter->synchronize();
    const QImage before = drawn({0.0, 0.0, 4.0, 1.0});
    m_plotter->setData(values(100000, 1.0));
    m_plotter->setPlotterArea({0.0, 0.0, 100000.0, 1.0});
    QCOMPARE(bars({0.0, 0.0, 4.0, 1.0}), 4);
    QCOMPARE(drawn({0.0, 0.0, 4.0, 1.0}), before);
}

void tst_BarPlotter_gl::aPlotterThatWasNotSynchronisedIsNotDrawn()
{
    m_plotter->setPlotterArea({0.0, 0.0, 4.0, 1.0});
    m_plotter->setData(values(4, 1.0));
    QCOMPARE(bars({0.0, 0.0, 4.0, 1.0}), 0);
}

void tst_BarPlotter_gl::propertiesSetAfterTheSynchronisationWaitForTheNext()
{
    m_plotter->setPlotterArea({0.0, 0.0, 4.0, 1.0});
    m_plotter->setData(values(4, 1.0));
    m_plotter->synchronize();
    m_plotter->setColor(Qt::red);
    m_plotter->setXOffset(2.0);
    m_plotter->setVisible(false);
    const QImage before = drawn({0.0, 0.0, 4.0, 1.0});
    QCOMPARE(before.pixelColor(90, 50), blue);
    m_plotter->setVisible(true);
    m_plotter->synchronize();
    const QImage after = drawn({0.0, 0.0, 4.0, 1.0});
    QCOMPARE(after.pixelColor(10, 50), QColor(Qt::red));
    QCOMPARE(after.pixelColor(90, 50), black);
}

void tst_BarPlotter_gl::anotherContextGetsItsOwnBuffers()
{
    const QRectF view(0.0, 0.0, 4.0, 1.0);
    m_plotter->setPlotterArea(view);
    m_plotter->setData(values(4, 1.0));
    m_plotter->synchronize();
    const QImage first = drawn(view);
    OffscreenGL other;
    QVERIFY(other.isValid());
    QCOMPARE(other.picture([&] { m_plotter->drawFrame(view); }).pixelColor(50, 50), black); // not synchronised here
    m_plotter->synchronize();
    QCOMPARE(other.picture([&] { m_plotter->drawFrame(view); }), first);
    m_gl->makeCurrent();
    QCOMPARE(drawn(view).pixelColor(50, 50), black); // the other one has it now
    m_plotter->synchronize();
    QCOMPARE(drawn(view), first);
}

void tst_BarPlotter_gl::aContextAtTheSameAddressGetsItsOwnBuffers()
{
    const QRectF view(0.0, 0.0, 4.0, 1.0);
    m_plotter->setPlotterArea(view);
    m_plotter->setData(values(4, 1.0));
    std::optional<OffscreenGL> contexts;
    for (int i = 0; i < 3; ++i) {
        contexts.emplace();
        m_plotter->synchronize();
        const QImage picture = contexts->picture([&] { m_plotter->drawFrame(view); });
        QCOMPARE(picture.pixelColor(50, 50), blue);
    }
}

void tst_BarPlotter_gl::strangeAreasDrawNothingOrEndInPeace_data()
{
    QTest::addColumn<QRectF>("area");
    QTest::addColumn<QRectF>("view");
    const QRectF usual(0.0, 0.0, 4.0, 1.0);
    QTest::newRow("null area") << QRectF() << usual;
    QTest::newRow("null view") << usual << QRectF();
    QTest::newRow("view without width") << usual << QRectF(1.0, 0.0, 0.0, 1.0);
    QTest::newRow("negative area") << QRectF(4.0, 0.0, -4.0, 1.0) << usual;
    QTest::newRow("negative view") << usual << QRectF(4.0, 1.0, -4.0, -1.0);
    QTest::newRow("endless area") << QRectF(-infinity, 0.0, infinity, 1.0) << usual;
    QTest::newRow("endless view") << usual << QRectF(-infinity, 0.0, infinity, 1.0);
    QTest::newRow("huge view") << usual << QRectF(-1e308, 0.0, 1.7e308, 1.0);
    QTest::newRow("tiny view") << usual << QRectF(1.0, 0.0, 5e-324, 5e-324);
    QTest::newRow("tiny area") << QRectF(1.0, 0.0, 5e-324, 1.0) << usual;
    QTest::newRow("area not a number") << QRectF(notANumber, notANumber, notANumber, notANumber) << usual;
    QTest::newRow("view not a number") << usual << QRectF(notANumber, notANumber, notANumber, notANumber);
    QTest::newRow("view's width not a number") << usual << QRectF(0.0, 0.0, notANumber, 1.0);
}

void tst_BarPlotter_gl::strangeAreasDrawNothingOrEndInPeace()
{
    QFETCH(QRectF, area);
    QFETCH(QRectF, view);
    for (const double value : {1.0, -1.0, infinity, notANumber}) {
        m_plotter->setData(values(4, value));
        m_plotter->setPlotterArea(area);
        m_plotter->synchronize();
        QVERIFY(bars(view) <= 4);
    }
}

// messages

void tst_BarPlotter_gl::anErrorIsReportedUntilItIsTheSameAgain()
{
    m_plotter->setPlotterArea({0.0, 0.0, 4.0, 1.0});
    m_plotter->setData(values(4, 1.0));
    m_plotter->synchronize();
    const auto drawWithError = [this](bool error) {
        if (error)
            m_gl->gl().glEnable(0x1234); // an error of somebody else's
        m_plotter->drawFrame({0.0, 0.0, 4.0, 1.0});
    };
    for (const bool error : {true, true, true, false, true})
        drawWithError(error);
    const QString message = QStringLiteral("WE GOT AN OPENGL ERROR CODE:  1280");
    QCOMPARE(m_log->messages(), (QStringList{message, message})); // the first, and the one after a draw without
    m_log->clear();
}

QTEST_MAIN(tst_BarPlotter_gl)
#include "tst_BarPlotter_gl.moc"
