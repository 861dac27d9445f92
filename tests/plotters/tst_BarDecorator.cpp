// SPDX-License-Identifier: MIT
#include "chart/IChartArea.h"
#include "gl/DecoratorShaders.h"
#include "plotters/BarDecorator.h"
#include "plotters/IPlotter1D.h"
#include "tests/support/CountingArea.h"
#include "tests/support/MetaTable.h"
#include "tests/support/QuietTest.h"
#include "tests/support/Stillness.h"

#include <QElapsedTimer>
#include <QPointer>
#include <QtTest>

#include <limits>
#include <memory>

namespace {

constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

using Plotters = QList<IPlotter *>;

/// Of 100 x 100 pixels that show (0, 0) to (10, 20).
class SquareArea : public CountingArea
{
public:
    SquareArea()
    {
        setAdaptAreaToPlotters(false);
        setChartRect(QRectF(0.0, 0.0, 10.0, 20.0));
        setSize(QSizeF(100.0, 100.0));
    }
    ~SquareArea() override { withdraw(); }
    void updateChartRect() override
    {
        CountingArea::updateChartRect();
        sinceAccepted.start();
    }

    QElapsedTimer sinceAccepted; ///< the last request that was
};

/// Remembers where it was asked; answers with `answer` when that is valid.
class AskedPlotter : public IPlotter
{
public:
    explicit AskedPlotter(QVector<QPair<IPlotter *, QPointF>> *questions = nullptr) : m_questions(questions) {}
    ~AskedPlotter() override { withdraw(); }
    SInfoPoint mouse_hovering(const QPointF &point) const override
    {
        if (m_questions)
            m_questions->append({const_cast<AskedPlotter *>(this), point});
        return answer;
    }
    void hit(const QRectF &rect)
    {
        answer.valid = true;
        answer.area = rect;
        answer.plotter = this;
    }
    SInfoPoint answer;

private:
    QVector<QPair<IPlotter *, QPointF>> *m_questions;
};

/// Ten bars of width 1 and values 1 to 10 in an item of 100 x 100 pixels that shows (0, 0) to (10, 20).
struct SHovered
{
    SquareArea area;
    IPlotter1D bars;
    BarDecorator decorator;

    SHovered()
    {
        bars.setChartArea(&area);
        bars.setPlotterArea(QRectF(0.0, 0.0, 10.0, 10.0));
        bars.setName(QStringLiteral("counts"));
        bars.setColor(Qt::green);
        bars.setData({1, 2, 3, 4, 5, 6, 7, 8, 9, 10});
        decorator.setChartArea(&area);
        decorator.addPlotter(&bars);
        decorator.setActive(true);
        decorator.setMouseY(99.0);
    }
    QRectF rect(int entry = 0) const { return decorator.infoMap().at(entry).toMap().value("rect").toRectF(); }
};

/// Two plotters, one above the other, that answer with the same bar at different heights.
struct STwoHovered
{
    SquareArea area;
    AskedPlotter low, high;
    BarDecorator decorator;

    STwoHovered()
    {
        low.hit(QRectF(3.0, 0.0, 1.0, 4.0));
        high.hit(QRectF(3.0, 0.0, 1.0, 9.0));
        high.setZOrder(1.0);
        decorator.setChartArea(&area);
        decorator.setPlotters({&low, &high});
        decorator.setActive(true);
        area.requests = 0;
    }
};

/// Waits until nothing asks for frames any more.
void waitForQuiet(const CountingArea &area)
{
    waitUntilStill([&] { return area.requests; });
}

QString lines(const QStringList &texts)
{
    return texts.join(QLatin1Char('\n'));
}

} // namespace

class tst_BarDecorator : public QuietTest
{
    Q_OBJECT

private slots:
    void itsMetaObjectIsExactlyAsDescribed();
    void aFreshDecoratorHasTheDefaults();
    void theDialectFollowsTheContext_data();
    void theDialectFollowsTheContext();
    void theShadersAreAsDescribed();

    void theMouseIsMappedToTheVisibleRectangle();
    void aHitIsPublishedAsAMap();
    void onlyADifferentAnswerIsAnnounced();
    void aboveEveryBarThereIsNothing();
    void inactiveTheMouseChangesNothing();
    void withoutAChartAreaNothingIsAsked();
    void anItemOfZeroSizeAnswersNoHover();
    void aMouseAtNoNumberHitsNothing();
    void aFuzzilyEqualMouseIsNoMove();
    void plottersAreAskedInTheirOrderAndOnlyVisibleOnes();
    void anAnswerMayNameNoPlotter();
    void switchingActiveAnnouncesOnceAndKeepsTheAnswer();

    void listChangesAreAnnouncedAndAskAgain();
    void nullAndRepeatedPlottersAreIgnored();
    void aDestroyedPlotterIsForgotten();
    void handlersMayDestroyTheDecorator();

    void aNewHighlightAsksForAFrame();
    void whatStaysHoveredIsHighlightedOnce();
    void whatStaysHoveredTakesThePlaceOfWhatIsLeft();
    void highlightsBeginAnewWhenSwitchedOnAgain();
    void framesAreAskedForWhileSomethingFadesAndNotLonger();
    void framesAreAskedForUntilOneIsAccepted();
};

void tst_BarDecorator::itsMetaObjectIsExactlyAsDescribed()
{
    const QMetaObject &meta = BarDecorator::staticMetaObject;
    QCOMPARE(meta.superClass()->className(), "IPlotter");
    QCOMPARE(ownProperties(meta),
             (QStringList{"mouseX double write -", "mouseY double write -", "active bool write activeChanged",
                          "plotters QList<IPlotter*> write plottersChanged", "infoMap QVariantList - infoMapChanged"}));
    QCOMPARE(ownSignals(meta), (QStringList{"activeChanged()", "infoMapChanged()", "plottersChanged()"}));
    QCOMPARE(ownMethods(meta),
             (QStringList{"void addPlotter(IPlotter*)", "void removePlotter(IPlotter*)", "void removeAllPlotter()"}));
    QCOMPARE(meta.method(meta.indexOfMethod("addPlotter(IPlotter*)")).parameterNames(),
             QList<QByteArray>{"newPlotter"});
    QCOMPARE(meta.method(meta.indexOfMethod("removePlotter(IPlotter*)")).parameterNames(),
             QList<QByteArray>{"newPlotter"});
}

void tst_BarDecorator::aFreshDecoratorHasTheDefaults()
{
    const BarDecorator decorator;
    QCOMPARE(decorator.mouseX(), 0.0);
    QCOMPARE(decorator.mouseY(), 0.0);
    QCOMPARE(decorator.active(), false);
    QVERIFY(decorator.plotters().isEmpty());
    QVERIFY(decorator.infoMap().isEmpty());
    QCOMPARE(decorator.color(), QColor(255, 255, 255, 70));
    QVERIFY(decorator.visible());
}

void tst_BarDecorator::theDialectFollowsTheContext_data()
{
    QTest::addColumn<int>("major");
    QTest::addColumn<int>("minor");
    QTest::addColumn<bool>("es");
    QTest::addColumn<int>("dialect");
    QTest::newRow("desktop 2.0") << 2 << 0 << false << 2;
    QTest::newRow("desktop 3.0") << 3 << 0 << false << 2;
    QTest::newRow("desktop 3.3") << 3 << 3 << false << 2;
    QTest::newRow("desktop 4.0") << 4 << 0 << false << 0;
    QTest::newRow("desktop 4.5") << 4 << 5 << false << 0;
    QTest::newRow("ES 2.0") << 2 << 0 << true << 2;
    QTest::newRow("ES 2.9") << 2 << 9 << true << 2;
    QTest::newRow("ES 3.0") << 3 << 0 << true << 2;
    QTest::newRow("ES 3.2") << 3 << 2 << true << 2;
    QTest::newRow("ES 3.3") << 3 << 3 << true << 1;
    QTest::newRow("ES 4.0") << 4 << 0 << true << 1;
}

void tst_BarDecorator::theDialectFollowsTheContext()
{
    QFETCH(int, major);
    QFETCH(int, minor);
    QFETCH(bool, es);
    QFETCH(int, dialect);
    QCOMPARE(int(decoratorDialect(major, minor, es)), dialect);
}

void tst_BarDecorator::theShadersAreAsDescribed()
{
    const QStringList vertexBody{
        "uniform vec4 color;",
        "uniform float curr_time;",
        "uniform float screen_dy;",
        "void main()",
        "{",
        "   float alpha = min ( max( time - curr_time, 0.0 ), color.w );",
        "   vColor      = vec4(color.xyz, alpha );",
        "   float y\t\t= -point.y*screen_dy + 1.0;   gl_Position = vec4( point.x, y, 1.0, 1.0);",
        "}",
        ""};
    const auto legacy = decoratorShaderSources(DecoratorDialect::Legacy);
    QCOMPARE(legacy.size(), 2);
    QCOMPARE(int(legacy.at(0).first), int(QOpenGLShader::Vertex));
    QCOMPARE(int(legacy.at(1).first), int(QOpenGLShader::Fragment));
    QCOMPARE(legacy.at(0).second,
             lines(QStringList{"attribute vec2 point;", "attribute float time;", "varying vec4 vColor;"} + vertexBody));
    QCOMPARE(legacy.at(1).second,
             lines({"#ifdef GL_ES", "precision mediump float;", "#endif", "varying vec4 vColor;", "void main()", "{",
                    "    gl_FragColor = vColor;", "}"}));
    for (const DecoratorDialect dialect : {DecoratorDialect::NotDrawn, DecoratorDialect::ByLocation}) {
        const auto sources = decoratorShaderSources(dialect);
        QCOMPARE(sources.size(), 2);
        QCOMPARE(sources.at(0).second,
                 lines(QStringList{"#version 330", "layout (location = 0) in vec2 point;",
                                   "layout (location = 1) in float time;", "out vec4 vColor;"}
                       + vertexBody));
        QCOMPARE(sources.at(1).second,
                 lines({"#version 330", "out vec4 FragColor;", "in vec4 vColor;", "void main()", "{",
                        "    FragColor = vColor;", "}", ""}));
    }
}

// hovering

void tst_BarDecorator::theMouseIsMappedToTheVisibleRectangle()
{
    SquareArea area;
    area.setSize(QSizeF(400.0, 200.0));
    area.setChartRect(QRectF(100.0, 10.0, 40.0, 20.0));
    QVector<QPair<IPlotter *, QPointF>> questions;
    AskedPlotter plotter(&questions);
    BarDecorator decorator;
    decorator.setChartArea(&area);
    decorator.addPlotter(&plotter);
    decorator.setActive(true);
    decorator.setMouseX(100.0);
    decorator.setMouseY(50.0);
    QCOMPARE(questions.size(), 2);
    QCOMPARE(questions.at(0).second, QPointF(110.0, 30.0)); // mouseY 0 is the far end of the values
    QCOMPARE(questions.at(1).second, QPointF(110.0, 25.0));
}

void tst_BarDecorator::aHitIsPublishedAsAMap()
{
    SHovered scene;
    const QSignalSpy changed(&scene.decorator, &BarDecorator::infoMapChanged);
    scene.decorator.setMouseX(35.0);
    QCOMPARE(changed.count(), 1);
    QCOMPARE(scene.decorator.infoMap().size(), 1);
    const QVariantMap map = scene.decorator.infoMap().first().toMap();
    QCOMPARE(map.keys(), (QStringList{"color", "name", "plotter", "rect"}));
    QCOMPARE(map.value("rect").userType(), int(QMetaType::QRectF));
    QCOMPARE(map.value("rect").toRectF(), QRectF(3.0, 0.0, 1.0, 4.0));
    QCOMPARE(map.value("plotter"), QVariant(true));
    QCOMPARE(map.value("name"), QVariant(QStringLiteral("counts")));
    QCOMPARE(map.value("color"), QVariant(QColor(Qt::green)));
}

void tst_BarDecorator::onlyADifferentAnswerIsAnnounced()
{
    SHovered scene;
    scene.decorator.setMouseX(35.0);
    const QSignalSpy changed(&scene.decorator, &BarDecorator::infoMapChanged);
    scene.decorator.setMouseX(36.0);
    scene.decorator.setMouseY(98.0);
    QCOMPARE(changed.count(), 0);
    scene.decorator.setMouseX(45.0);
    QCOMPARE(changed.count(), 1);
    QCOMPARE(scene.rect(), QRectF(4.0, 0.0, 1.0, 5.0));
    scene.bars.setName(QStringLiteral("renamed"));
    QCOMPARE(changed.count(), 1);
    scene.decorator.setMouseX(46.0);
    QCOMPARE(changed.count(), 2);
}

void tst_BarDecorator::aboveEveryBarThereIsNothing()
{
    SHovered scene;
    scene.decorator.setMouseX(35.0);
    const QSignalSpy changed(&scene.decorator, &BarDecorator::infoMapChanged);
    scene.decorator.setMouseY(10.0);
    QCOMPARE(changed.count(), 1);
    QVERIFY(scene.decorator.infoMap().isEmpty());
}

void tst_BarDecorator::inactiveTheMouseChangesNothing()
{
    SHovered scene;
    scene.decorator.setMouseX(35.0);
    scene.decorator.setActive(false);
    const QVariantList before = scene.decorator.infoMap();
    const QSignalSpy changed(&scene.decorator, &BarDecorator::infoMapChanged);
    scene.decorator.setMouseX(75.0);
    scene.decorator.setMouseY(50.0);
    QCOMPARE(scene.decorator.mouseX(), 75.0);
    QCOMPARE(scene.decorator.mouseY(), 50.0);
    QCOMPARE(changed.count(), 0);
    QCOMPARE(scene.decorator.infoMap(), before);
}

void tst_BarDecorator::withoutAChartAreaNothingIsAsked()
{
    QVector<QPair<IPlotter *, QPointF>> questions;
    AskedPlotter plotter(&questions);
    BarDecorator decorator;
    decorator.addPlotter(&plotter);
    decorator.setActive(true);
    decorator.setMouseX(5.0);
    QVERIFY(questions.isEmpty());
    QVERIFY(decorator.infoMap().isEmpty());
}

void tst_BarDecorator::anItemOfZeroSizeAnswersNoHover()
{
    SHovered scene;
    scene.decorator.setMouseX(35.0);
    QCOMPARE(scene.decorator.infoMap().size(), 1);
    scene.area.setSize(QSizeF(0.0, 100.0));
    scene.decorator.setMouseX(36.0);
    QVERIFY(scene.decorator.infoMap().isEmpty());
    scene.area.setSize(QSizeF(100.0, 0.0));
    scene.decorator.setMouseX(35.0);
    QVERIFY(scene.decorator.infoMap().isEmpty());
    scene.area.setSize(QSizeF(100.0, 100.0));
    scene.decorator.setMouseX(36.0);
    QCOMPARE(scene.decorator.infoMap().size(), 1);
}

void tst_BarDecorator::aMouseAtNoNumberHitsNothing()
{
    SHovered scene;
    scene.decorator.setMouseX(35.0);
    scene.decorator.setMouseX(notANumber);
    QVERIFY(scene.decorator.infoMap().isEmpty());
    scene.decorator.setMouseX(35.0);
    QCOMPARE(scene.decorator.infoMap().size(), 1);
    scene.decorator.setMouseY(notANumber);
    QVERIFY(scene.decorator.infoMap().isEmpty());
}

void tst_BarDecorator::aFuzzilyEqualMouseIsNoMove()
{
    SquareArea area;
    QVector<QPair<IPlotter *, QPointF>> questions;
    AskedPlotter plotter(&questions);
    BarDecorator decorator;
    decorator.setChartArea(&area);
    decorator.addPlotter(&plotter);
    decorator.setActive(true);
    decorator.setMouseX(50.0);
    decorator.setMouseX(50.0);
    decorator.setMouseX(50.0 + 1e-12);
    QCOMPARE(questions.size(), 1);
    QCOMPARE(decorator.mouseX(), 50.0);
}

void tst_BarDecorator::plottersAreAskedInTheirOrderAndOnlyVisibleOnes()
{
    SquareArea area;
    QVector<QPair<IPlotter *, QPointF>> questions;
    AskedPlotter high(&questions);
    AskedPlotter low(&questions);
    AskedPlotter middle(&questions);
    AskedPlotter hidden(&questions);
    high.setZOrder(3.0);
    low.setZOrder(-1.0);
    middle.setZOrder(0.5);
    hidden.setZOrder(0.0);
    hidden.setVisible(false);
    high.hit(QRectF(1.0, 0.0, 1.0, 1.0));
    low.hit(QRectF(2.0, 0.0, 1.0, 1.0));
    hidden.hit(QRectF(3.0, 0.0, 1.0, 1.0));
    BarDecorator decorator;
    decorator.setChartArea(&area);
    decorator.setPlotters({&high, &low, &middle, &hidden});
    decorator.setActive(true);
    decorator.setMouseX(1.0);
    QCOMPARE(questions.size(), 3);
    QCOMPARE(questions.at(0).first, &low);
    QCOMPARE(questions.at(1).first, &middle);
    QCOMPARE(questions.at(2).first, &high);
    QCOMPARE(decorator.infoMap().size(), 2);
    QCOMPARE(decorator.infoMap().at(0).toMap().value("rect").toRectF(), QRectF(2.0, 0.0, 1.0, 1.0));
    QCOMPARE(decorator.infoMap().at(1).toMap().value("rect").toRectF(), QRectF(1.0, 0.0, 1.0, 1.0));
}

void tst_BarDecorator::anAnswerMayNameNoPlotter()
{
    SquareArea area;
    AskedPlotter plotter;
    plotter.setName(QStringLiteral("nameless"));
    plotter.hit(QRectF(1.0, 0.0, 1.0, 1.0));
    plotter.answer.plotter = nullptr;
    BarDecorator decorator;
    decorator.setChartArea(&area);
    decorator.addPlotter(&plotter);
    decorator.setActive(true);
    decorator.setMouseX(1.0);
    const QVariantMap map = decorator.infoMap().value(0).toMap();
    QCOMPARE(map.value("plotter"), QVariant(false));
    QCOMPARE(map.value("name"), QVariant(QStringLiteral("nameless")));
}

void tst_BarDecorator::switchingActiveAnnouncesOnceAndKeepsTheAnswer()
{
    SHovered scene;
    scene.decorator.setMouseX(35.0);
    const QSignalSpy active(&scene.decorator, &BarDecorator::activeChanged);
    const QSignalSpy info(&scene.decorator, &BarDecorator::infoMapChanged);
    scene.decorator.setActive(true);
    QCOMPARE(active.count(), 0);
    scene.decorator.setActive(false);
    scene.decorator.setActive(false);
    QCOMPARE(active.count(), 1);
    scene.decorator.setActive(true);
    QCOMPARE(active.count(), 2);
    QCOMPARE(info.count(), 0);
    QCOMPARE(scene.decorator.infoMap().size(), 1);
}

// the list

void tst_BarDecorator::listChangesAreAnnouncedAndAskAgain()
{
    SHovered scene;
    scene.decorator.setMouseX(35.0);
    const QSignalSpy changed(&scene.decorator, &BarDecorator::plottersChanged);
    AskedPlotter second;
    second.hit(QRectF(7.0, 0.0, 1.0, 1.0));
    second.setZOrder(1.0);

    scene.decorator.addPlotter(&second);
    QCOMPARE(changed.count(), 1);
    QCOMPARE(scene.decorator.plotters(), (Plotters{&scene.bars, &second}));
    QCOMPARE(scene.decorator.infoMap().size(), 2);

    scene.decorator.removePlotter(&scene.bars);
    QCOMPARE(changed.count(), 2);
    QCOMPARE(scene.decorator.infoMap().size(), 1);
    QCOMPARE(scene.rect(), QRectF(7.0, 0.0, 1.0, 1.0));

    scene.decorator.setPlotters({&scene.bars});
    QCOMPARE(changed.count(), 3);
    QCOMPARE(scene.rect(), QRectF(3.0, 0.0, 1.0, 4.0));

    scene.decorator.removeAllPlotter();
    QCOMPARE(changed.count(), 4);
    QVERIFY(scene.decorator.plotters().isEmpty());
    QVERIFY(scene.decorator.infoMap().isEmpty());
}

void tst_BarDecorator::nullAndRepeatedPlottersAreIgnored()
{
    AskedPlotter first;
    AskedPlotter second;
    BarDecorator decorator;
    decorator.addPlotter(&first);
    const QSignalSpy changed(&decorator, &BarDecorator::plottersChanged);
    decorator.addPlotter(nullptr);
    decorator.addPlotter(&first);
    decorator.removePlotter(nullptr);
    decorator.removePlotter(&second);
    decorator.setPlotters({&first});
    decorator.setPlotters({nullptr, &first, &first});
    QCOMPARE(changed.count(), 0);
    QCOMPARE(decorator.plotters(), Plotters{&first});
    decorator.setPlotters({&second, nullptr, &first, &second});
    QCOMPARE(changed.count(), 1);
    QCOMPARE(decorator.plotters(), (Plotters{&second, &first}));
    decorator.removeAllPlotter();
    decorator.removeAllPlotter();
    QCOMPARE(changed.count(), 2);
}

void tst_BarDecorator::aDestroyedPlotterIsForgotten()
{
    SHovered scene;
    auto second = std::make_unique<AskedPlotter>();
    second->hit(QRectF(7.0, 0.0, 1.0, 1.0));
    scene.decorator.addPlotter(second.get());
    const QSignalSpy changed(&scene.decorator, &BarDecorator::plottersChanged);
    second.reset();
    QCOMPARE(changed.count(), 0);
    QCOMPARE(scene.decorator.plotters(), Plotters{&scene.bars});
    scene.decorator.setMouseX(35.0);
    QCOMPARE(scene.decorator.infoMap().size(), 1);
}

void tst_BarDecorator::handlersMayDestroyTheDecorator()
{
    const auto run = [this](auto signal, auto act) {
        SquareArea area;
        AskedPlotter plotter;
        AskedPlotter other;
        plotter.hit(QRectF(1.0, 0.0, 1.0, 1.0));
        const QPointer<BarDecorator> decorator(new BarDecorator);
        decorator->setChartArea(&area);
        decorator->addPlotter(&plotter);
        decorator->setActive(true);
        connect(decorator.data(), signal, this, [&] { delete decorator.data(); });
        act(*decorator, other);
        QVERIFY(!decorator);
        QVERIFY(area.plotter().isEmpty());
    };
    run(&BarDecorator::infoMapChanged, [](BarDecorator &decorator, IPlotter &) { decorator.setMouseX(5.0); });
    run(&BarDecorator::plottersChanged, [](BarDecorator &decorator, IPlotter &other) { decorator.addPlotter(&other); });
    run(&BarDecorator::activeChanged, [](BarDecorator &decorator, IPlotter &) { decorator.setActive(false); });
}

// frames

void tst_BarDecorator::aNewHighlightAsksForAFrame()
{
    SHovered scene;
    waitForQuiet(scene.area); // the answer to the first mouse position has faded
    scene.area.requests = 0;
    scene.decorator.setMouseX(35.0);
    QCOMPARE(scene.area.requests, 1);
    scene.decorator.setMouseX(36.0); // the same bar
    QCOMPARE(scene.area.requests, 1);
    scene.decorator.setActive(false);
    QCOMPARE(scene.area.requests, 2);
}

void tst_BarDecorator::whatStaysHoveredIsHighlightedOnce()
{
    STwoHovered scene;
    scene.decorator.setMouseX(35.0);
    QCOMPARE(scene.area.requests, 1);
    for (double x = 36.0; x < 39.0; x += 0.5)
        scene.decorator.setMouseX(x);
    QCOMPARE(scene.area.requests, 1);
    scene.high.hit(QRectF(3.0, 0.0, 1.0, notANumber));
    for (double x = 36.0; x < 39.0; x += 0.5)
        scene.decorator.setMouseX(x);
    QCOMPARE(scene.area.requests, 2);
}

void tst_BarDecorator::whatStaysHoveredTakesThePlaceOfWhatIsLeft()
{
    STwoHovered scene;
    scene.decorator.setMouseX(35.0);
    scene.high.answer.valid = false; // it was the newest
    scene.decorator.setMouseX(36.0);
    QCOMPARE(scene.area.requests, 2);
    scene.decorator.setMouseX(37.0);
    QCOMPARE(scene.area.requests, 2);
}

void tst_BarDecorator::highlightsBeginAnewWhenSwitchedOnAgain()
{
    STwoHovered scene;
    scene.decorator.setMouseX(35.0);
    scene.decorator.setActive(false);
    scene.decorator.setActive(true);
    scene.area.requests = 0;
    scene.decorator.setMouseX(36.0);
    QCOMPARE(scene.area.requests, 1);
}

void tst_BarDecorator::framesAreAskedForWhileSomethingFadesAndNotLonger()
{
    SHovered scene;
    waitForQuiet(scene.area); // one highlight stands and nothing fades
    const int before = scene.area.requests;
    QTest::qWait(200);
    QCOMPARE(scene.area.requests, before);
    // A busy machine misses ticks. How many come is told by a timer that ticks as often.
    int ticks = 0;
    QElapsedTimer sinceRelease;
    QTimer timer;
    connect(&timer, &QTimer::timeout, this, [&] { ticks += sinceRelease.elapsed() < 100; });
    timer.start(20);
    for (int round = 0; round < 20 && ticks < 3; ++round) {
        const int until = scene.area.requests;
        ticks = 0;
        sinceRelease.start();
        scene.decorator.setMouseX(round % 2 ? 55.0 : 35.0);
        waitForQuiet(scene.area);
        const int during = scene.area.requests - until;
        QVERIFY2(during <= 12, qPrintable(QString::number(during))); // ticks of 20 ms for 100 ms, and the last frame
        QVERIFY2(during >= ticks, qPrintable(QStringLiteral("%1 at %2 ticks").arg(during).arg(ticks)));
    }
    const int after = scene.area.requests;
    QTest::qWait(200);
    QCOMPARE(scene.area.requests, after);
}

void tst_BarDecorator::framesAreAskedForUntilOneIsAccepted()
{
    SHovered scene;
    waitForQuiet(scene.area);
    scene.area.setUpdateIntervalMs(700); // the ticks of the fading all come too soon
    scene.area.requestUpdate();
    QElapsedTimer sinceRelease;
    sinceRelease.start();
    scene.decorator.setMouseX(35.0);
    waitForQuiet(scene.area);
    const qint64 lastAccepted = sinceRelease.elapsed() - scene.area.sinceAccepted.elapsed();
    QVERIFY2(lastAccepted > 100, qPrintable(QString::number(lastAccepted))); // when it had faded
    const int after = scene.area.requests;
    QTest::qWait(200);
    QCOMPARE(scene.area.requests, after);
}

QTEST_MAIN(tst_BarDecorator)
#include "tst_BarDecorator.moc"
