// SPDX-License-Identifier: MIT
#include "tests/support/LogCatcher.h"
#include "tests/support/Scene.h"
#include "views/items/LineSeries.h"
#include "views/items/LogValueAxis.h"
#include "views/items/PlotFrame.h"
#include "views/items/PlotTheme.h"
#include "views/items/PlotView.h"

#include <QtTest>

#include <qqml.h>

#include <memory>

namespace {

const QColor ground(10, 20, 30);
const QColor plotGround(40, 50, 60);
const QColor gridColor(200, 100, 50);

QQuickItem *textItem(const PlotView &view, const QString &text)
{
    for (QQuickItem *item : view.frame()->childItems()) {
        if (item->isVisible() && item->property("text").toString() == text)
            return item;
    }
    return nullptr;
}

} // namespace

/// Grid, labels and titles around a plot. In both render loops.
class tst_PlotFrame_gl : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();

    void theGridLiesUnderItsLabels();
    void linesAreOneDevicePixelWide();
    void labelsKeepTheirItemsInAPan();
    void theRoomFollowsTitlesAndLabels();
    void theRoomDoesNotShiverInAPan();
    void linkedPlotsBeginAndEndAtTheSamePlaces();
    void aLowPlotHasMoreThanOneLabel();
    void anIntervalIsKeptWhileItsLabelsFit();
    void switchedOffNothingIsDrawn();
    void aLogAxisHasMinorLines();
    void aTimeAxisSaysItsDay();
    void aBaseIsWritten();
    void aThemeColorsAll();
    void aStillViewAsksForNoFrame();
    void aThemeMayGoBeforeItsView();
    void writesAPictureToLookAt();

private:
    std::unique_ptr<LogCatcher> m_log;
    std::unique_ptr<Scene> m_scene;
    PlotView *m_view = nullptr;
};

void tst_PlotFrame_gl::initTestCase()
{
    qmlRegisterType<PlotView>("Plots", 1, 0, "PlotView");
    qmlRegisterAnonymousType<PlotAxis>("Plots", 1);
    qmlRegisterType<LogValueAxis>("Plots", 1, 0, "LogValueAxis");
    qmlRegisterType<PlotTheme>("Plots", 1, 0, "PlotTheme");
}

void tst_PlotFrame_gl::init()
{
    m_log = std::make_unique<LogCatcher>();
    m_scene = std::make_unique<Scene>(QSize(600, 400), Qt::black);
    QQmlComponent component(&m_scene->engine());
    component.setData("import QtQuick 2.14\nimport Plots 1.0\nPlotView {}", QUrl());
    m_view = qobject_cast<PlotView *>(component.create());
    QVERIFY2(m_view, qPrintable(component.errorString()));
    m_scene->add(m_view);
    m_view->theme()->setBackgroundColor(ground);
    m_view->theme()->setPlotAreaBackgroundColor(plotGround);
    m_view->theme()->setGridColor(gridColor);
    m_view->axisX()->setRange(0.0, 100.0);
    m_view->axisY()->setRange(0.0, 10.0);
    QVERIFY(m_scene->show());
}

void tst_PlotFrame_gl::cleanup()
{
    m_scene.reset();
    const QStringList messages = m_log->messages();
    m_log.reset();
    QCOMPARE(messages, QStringList());
}

void tst_PlotFrame_gl::theGridLiesUnderItsLabels()
{
    const QImage picture = m_scene->grab();
    const QRectF area = m_view->plotArea();
    QVERIFY(area.width() > 400 && area.height() > 300);
    QQuickItem *const label = textItem(*m_view, QStringLiteral("40"));
    QVERIFY(label);
    const int x = int(std::floor(m_view->axisX()->mapping(area.left(), area.right()).toPixels(40.0) + 1e-6));
    QVERIFY(std::abs(label->x() + label->width() * 0.5 - x) <= 1.0);
    QVERIFY(label->y() > area.bottom());
    QCOMPARE(picture.pixelColor(x, int(area.top()) + 5), gridColor);
    QCOMPARE(picture.pixelColor(x + 3, int(area.top()) + 5), plotGround);
    QCOMPARE(picture.pixelColor(2, 2), ground);
}

void tst_PlotFrame_gl::linesAreOneDevicePixelWide()
{
    m_view->axisY()->setGridVisible(false);
    const QImage picture = m_scene->grab();
    const int y = int(m_view->plotArea().center().y());
    int lines = 0;
    for (int x = int(m_view->plotArea().left()) + 2; x < int(m_view->plotArea().right()) - 1; ++x) {
        const QColor color = picture.pixelColor(x, y);
        QVERIFY(color == plotGround || color == gridColor);
        if (color == gridColor) {
            ++lines;
            QCOMPARE(picture.pixelColor(x + 1, y), plotGround);
        }
    }
    QVERIFY2(lines >= 3 && lines <= 10, qPrintable(QString::number(lines)));
}

void tst_PlotFrame_gl::labelsKeepTheirItemsInAPan()
{
    m_scene->grab();
    QQuickItem *const label = textItem(*m_view, QStringLiteral("40"));
    QVERIFY(label);
    const double before = label->x();
    m_view->axisX()->setRange(5.0, 105.0);
    m_scene->grab();
    QCOMPARE(textItem(*m_view, QStringLiteral("40")), label);
    QVERIFY(label->x() < before);
    const int count = m_view->frame()->childItems().size();
    for (int pan = 0; pan < 30; ++pan) {
        m_view->axisX()->setRange(pan, 100.0 + pan);
        QVERIFY(m_scene->frames(1));
    }
    QVERIFY(m_view->frame()->childItems().size() <= count + 4);
}

void tst_PlotFrame_gl::theRoomFollowsTitlesAndLabels()
{
    m_scene->grab();
    const QRectF before = m_view->plotArea();
    m_view->setTitle(QStringLiteral("A title"));
    m_view->axisY()->setTitleText(QStringLiteral("counts"));
    m_scene->grab();
    QVERIFY(m_view->plotArea().top() > before.top() + 10.0);
    QVERIFY(m_view->plotArea().left() > before.left() + 10.0);
    QCOMPARE(textItem(*m_view, QStringLiteral("counts"))->rotation(), -90.0);
    m_view->axisY()->setTitleText(QString());
    m_view->axisY()->setLabelsVisible(false);
    m_view->axisX()->setLabelsVisible(false);
    m_scene->grab();
    QVERIFY(m_view->plotArea().left() < before.left());
    QVERIFY(m_view->plotArea().bottom() > before.bottom());
}

void tst_PlotFrame_gl::theRoomDoesNotShiverInAPan()
{
    m_scene->grab();
    QSet<double> lefts;
    for (double y = 0.0; y < 120.0; y += 0.7) {
        m_view->axisY()->setRange(y, y + 10.0);
        QVERIFY(m_scene->frames(1));
        lefts.insert(m_view->plotArea().left());
    }
    QVERIFY2(lefts.size() <= 2, qPrintable(QString::number(lefts.size())));
}

void tst_PlotFrame_gl::linkedPlotsBeginAndEndAtTheSamePlaces()
{
    auto second = std::make_unique<PlotView>();
    auto third = std::make_unique<PlotView>();
    for (PlotView *view : {second.get(), third.get()}) {
        m_scene->add(view);
        view->setSize(m_view->size());
    }
    second->axisY()->setRange(0.0, 1234567.0);
    second->axisY()->setLabelFormat(QStringLiteral("%.4f"));
    third->axisX()->setLabelsVisible(false);
    third->axisY()->setLabelsVisible(false);
    m_scene->settle();
    const QRectF own = m_view->plotArea();
    QVERIFY(second->plotArea().left() > own.left() + 10.0);
    QVERIFY(third->plotArea().right() > own.right() + 10.0);
    second->setLinkedTo(m_view);
    third->setLinkedTo(second.get());
    const auto ends = [](const PlotView &view) { return qMakePair(view.plotArea().left(), view.plotArea().right()); };
    QTRY_VERIFY(ends(*m_view) == ends(*second) && ends(*second) == ends(*third));
    second->axisY()->setTitleText(QStringLiteral("more room"));
    QTRY_VERIFY(ends(*m_view) == ends(*second) && ends(*second) == ends(*third));
    QVERIFY(m_view->plotArea().left() > own.left() + 20.0);
    third->setLinkedTo(nullptr);
    QTRY_VERIFY(third->plotArea().right() > own.right() + 10.0);
    second.reset();
    QTRY_COMPARE(m_view->plotArea(), own);
}

void tst_PlotFrame_gl::aLowPlotHasMoreThanOneLabel()
{
    m_view->setHeight(145.0);
    m_view->axisX()->setTitleText(QStringLiteral("x"));
    m_view->axisY()->setRange(-52.0, 47.0);
    m_scene->settle();
    QVERIFY(textItem(*m_view, QStringLiteral("0")));
    QVERIFY2(textItem(*m_view, QStringLiteral("-50")), qPrintable(m_view->frame()->texts().join('|')));
}

void tst_PlotFrame_gl::anIntervalIsKeptWhileItsLabelsFit()
{
    m_view->axisX()->setTickInterval(1.0);
    m_view->axisX()->setRange(0.0, 20.0);
    m_view->axisY()->setTickInterval(1.0);
    m_view->axisY()->setRange(0.0, 15.0);
    m_scene->settle();
    const QStringList texts = m_view->frame()->texts();
    QVERIFY2(texts.count(QStringLiteral("13")) == 2 && texts.contains(QStringLiteral("19")),
             qPrintable(texts.join('|')));
    m_view->axisX()->setRange(0.0, 150.0);
    m_scene->settle();
    QCOMPARE(m_view->frame()->texts().count(QStringLiteral("13")), 1); // that of y
    QVERIFY2(textItem(*m_view, QStringLiteral("130")), qPrintable(m_view->frame()->texts().join('|')));
}

void tst_PlotFrame_gl::switchedOffNothingIsDrawn()
{
    for (PlotAxis *axis : {m_view->axisX(), m_view->axisY()}) {
        axis->setGridVisible(false);
        axis->setLabelsVisible(false);
    }
    const QImage picture = m_scene->grab();
    QVERIFY(m_view->frame()->texts().isEmpty());
    const QRect inside = m_view->plotArea().toRect().adjusted(2, 2, -2, -2);
    for (int x = inside.left(); x < inside.right(); ++x)
        QCOMPARE(picture.pixelColor(x, inside.center().y()), plotGround);
}

void tst_PlotFrame_gl::aLogAxisHasMinorLines()
{
    m_view->axisY()->setLog(true);
    m_view->axisY()->setRange(1.0, 1000.0);
    m_view->axisX()->setGridVisible(false);
    const QImage picture = m_scene->grab();
    QVERIFY(textItem(*m_view, QStringLiteral("100")));
    const QRect inside = m_view->plotArea().toRect().adjusted(2, 2, -2, -2);
    int strong = 0, faint = 0;
    for (int y = inside.top(); y < inside.bottom(); ++y) {
        const QColor color = picture.pixelColor(inside.center().x(), y);
        strong += color == gridColor;
        faint += color != gridColor && color != plotGround;
    }
    QVERIFY(strong >= 2);
    QVERIFY(faint >= 14);
}

void tst_PlotFrame_gl::aTimeAxisSaysItsDay()
{
    m_view->axisX()->setStartTime(1767258000.0); // 2026-01-01 09:00
    m_view->axisX()->setRange(0.0, 3600.0);
    m_scene->grab();
    QVERIFY(m_view->frame()->texts().contains(QStringLiteral("09:15")));
    QVERIFY(m_view->frame()->texts().contains(QStringLiteral("2026-01-01")));
    m_view->axisX()->setTimeFormat(QStringLiteral("h'h'mm"));
    m_scene->grab();
    QVERIFY(m_view->frame()->texts().contains(QStringLiteral("9h15")));
}

void tst_PlotFrame_gl::aBaseIsWritten()
{
    m_view->axisX()->setRange(1e9, 1e9 + 1.0);
    m_view->axisY()->setRange(5e6, 5e6 + 2.0);
    m_scene->grab();
    QVERIFY(m_view->frame()->texts().contains(QStringLiteral("1000000000")));
    QVERIFY(m_view->frame()->texts().contains(QStringLiteral("5000000")));
    QVERIFY(m_view->frame()->texts().contains(QStringLiteral("+0.5")));
}

void tst_PlotFrame_gl::aThemeColorsAll()
{
    PlotTheme theme;
    theme.setColorScheme(PlotTheme::Dark);
    LineSeries first, second;
    m_view->addSeries(&first);
    m_view->addSeries(&second);
    m_view->setTheme(&theme);
    const QImage picture = m_scene->grab();
    QCOMPARE(picture.pixelColor(2, 2), theme.backgroundColor());
    QCOMPARE(second.color(), theme.seriesColor(1));
    theme.setColorScheme(PlotTheme::Light);
    QCOMPARE(second.color(), theme.seriesColor(1));
    QCOMPARE(m_scene->grab().pixelColor(2, 2), theme.backgroundColor());
    m_view->setTheme(nullptr);
    QCOMPARE(m_scene->grab().pixelColor(2, 2), ground);
}

void tst_PlotFrame_gl::aStillViewAsksForNoFrame()
{
    m_scene->settle();
    const int frames = m_scene->frameCount();
    m_view->axisX()->setRange(0.0, 100.0);
    m_view->setTitle(QString());
    QTest::qWait(200);
    QCOMPARE(m_scene->frameCount(), frames);
}

void tst_PlotFrame_gl::aThemeMayGoBeforeItsView()
{
    auto theme = std::make_unique<PlotTheme>();
    m_view->setTheme(theme.get());
    m_scene->grab();
    theme.reset();
    QCOMPARE(m_scene->grab().pixelColor(2, 2), ground);
}

void tst_PlotFrame_gl::writesAPictureToLookAt()
{
    const QString file = qEnvironmentVariable("VORLIX_TEST_PICTURES");
    if (file.isEmpty())
        QSKIP("VORLIX_TEST_PICTURES names no folder");
    m_view->setTitle(QStringLiteral("Decay of a sample"));
    m_view->axisX()->setTitleText(QStringLiteral("energy"));
    m_view->axisX()->setUnit(QStringLiteral("keV"));
    m_view->axisY()->setTitleText(QStringLiteral("counts"));
    PlotTheme theme;
    m_view->setTheme(&theme);
    for (const PlotTheme::ColorScheme scheme : {PlotTheme::Light, PlotTheme::Dark}) {
        theme.setColorScheme(scheme);
        m_view->axisY()->setLog(scheme == PlotTheme::Dark);
        m_view->axisY()->setRange(1.0, 30000.0);
        QVERIFY(m_scene->grab().save(QStringLiteral("%1/frame-%2.png").arg(file).arg(int(scheme))));
    }
}

QTEST_MAIN(tst_PlotFrame_gl)
#include "tst_PlotFrame_gl.moc"
