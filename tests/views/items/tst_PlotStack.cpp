// SPDX-License-Identifier: MIT
#include "tests/support/LogCatcher.h"
#include "tests/views/items/PlotFixture.h"
#include "views/items/BarSeries.h"
#include "views/items/PlotFrame.h"
#include "views/items/PlotStack.h"
#include "views/items/PlotTheme.h"

#include <QImage>
#include <QTemporaryDir>
#include <QtTest>

#include <memory>

/// Views beneath each other: their places, their x, and what is saved of them.
class tst_PlotStack : public QObject
{
    Q_OBJECT

private slots:
    void init();

    void makesPlotsEquallyHigh();
    void tellsXUnderTheLowestOne();
    void leavesNoRoomForWhatIsHidden();
    void showsOnePartOfX();
    void linksInTheOrderFromAbove();
    void letsGoOfWhatLeaves();
    void outlivesItsViewsAndTheyIt();
    void savesAllInOnePicture();
    void savesAPictureOfAnotherSize();
    void savesAllInOneTable();
    void warnsWhereNobodyListens();
    void isNothingWithoutViews();

private:
    /// What saveImage() or saveValues() answered: an error, or nothing.
    template <class Save>
    QString answerTo(Save save);
    static void layOut(const PlotView &view)
    {
        for (int i = 0; i < 2; ++i)
            view.frame()->layOutNow();
    }

    QTemporaryDir m_folder;
    std::unique_ptr<PlotStack> m_stack;
    PlotView *m_upper = nullptr; ///< children of the stack
    PlotView *m_lower = nullptr;
};

void tst_PlotStack::init()
{
    m_stack = std::make_unique<PlotStack>();
    m_stack->setSize({400.0, 300.0});
    m_upper = new PlotView;
    m_lower = new PlotView;
    for (PlotView *view : {m_upper, m_lower}) {
        view->setParent(m_stack.get());
        view->setParentItem(m_stack.get());
        view->theme()->setColorScheme(PlotTheme::Light);
        layOut(*view);
    }
}

template <class Save>
QString tst_PlotStack::answerTo(Save save)
{
    QSignalSpy spy(m_stack.get(), &PlotStack::saved);
    save();
    return spy.wait(10'000) ? spy.first().at(1).toString() : QStringLiteral("no answer");
}

void tst_PlotStack::makesPlotsEquallyHigh()
{
    m_upper->setTitle(QStringLiteral("above")); // takes room from both
    m_lower->axisX()->setTitleText(QStringLiteral("time"));
    m_lower->axisY()->setTitleText(QStringLiteral("speed"));
    StoredSeries<> large(*m_lower, {123456.0, 654321.0}); // with longer labels
    layOut(*m_upper);
    layOut(*m_lower);
    layOut(*m_upper);
    QVERIFY(m_upper->plotArea().height() > 50.0);
    QVERIFY(qAbs(m_upper->plotArea().height() - m_lower->plotArea().height()) <= 1.0);
    QCOMPARE(m_upper->plotArea().left(), m_lower->plotArea().left());
    QCOMPARE(m_upper->plotArea().right(), m_lower->plotArea().right());
    QCOMPARE(m_upper->position(), QPointF(0.0, 0.0));
    QCOMPARE(m_lower->y(), m_upper->height());
    QCOMPARE(m_lower->y() + m_lower->height(), 300.0);
    QCOMPARE(m_lower->width(), 400.0);
    m_stack->setSize({500.0, 700.0});
    QCOMPARE(m_lower->y() + m_lower->height(), 700.0);
    QCOMPARE(m_upper->width(), 500.0);
}

void tst_PlotStack::tellsXUnderTheLowestOne()
{
    StoredSeries<> line(*m_upper, ramp(10));
    for (PlotView *view : {m_upper, m_lower}) {
        view->axisX()->setTitleText(QStringLiteral("time"));
        layOut(*view);
    }
    QVERIFY(!m_upper->frame()->texts().contains(QStringLiteral("time")));
    QVERIFY(m_lower->frame()->texts().contains(QStringLiteral("time")));
    const int texts = m_upper->frame()->texts().size();
    m_lower->setVisible(false);
    layOut(*m_upper);
    QVERIFY(m_upper->frame()->texts().contains(QStringLiteral("time")));
    QVERIFY(m_upper->frame()->texts().size() > texts + 3); // and numbers
    QVERIFY(m_upper->axisX()->labelsVisible());            // which stays its owner's
}

void tst_PlotStack::leavesNoRoomForWhatIsHidden()
{
    m_upper->setVisible(false);
    QCOMPARE(m_lower->y(), 0.0);
    QCOMPARE(m_lower->height(), 300.0);
    m_upper->setVisible(true);
    QCOMPARE(m_lower->y(), m_upper->height());
}

void tst_PlotStack::showsOnePartOfX()
{
    StoredSeries<> line(*m_upper, ramp(10));
    StoredSeries<> longer(*m_lower, ramp(100));
    QTRY_COMPARE(m_upper->axisX()->range(), (SAxisRange{0.0, 99.0}));
    m_lower->zoomTo(3.0, 5.0);
    QCOMPARE(m_upper->axisX()->range(), (SAxisRange{3.0, 5.0}));
}

void tst_PlotStack::linksInTheOrderFromAbove()
{
    QCOMPARE(m_upper->linkedTo(), nullptr);
    QCOMPARE(m_lower->linkedTo(), m_upper);
    PlotView third;
    third.setParentItem(m_stack.get());
    QCOMPARE(third.linkedTo(), m_upper);
    delete m_upper;
    QCOMPARE(m_lower->linkedTo(), nullptr);
    QCOMPARE(third.linkedTo(), m_lower);
    QCOMPARE(m_lower->y(), 0.0);
}

void tst_PlotStack::letsGoOfWhatLeaves()
{
    m_upper->axisX()->setTitleText(QStringLiteral("time"));
    m_upper->setParentItem(nullptr);
    QCOMPARE(m_lower->linkedTo(), nullptr);
    QCOMPARE(m_lower->height(), 300.0);
    layOut(*m_upper);
    QVERIFY(m_upper->frame()->texts().contains(QStringLiteral("time"))); // its own again
    m_upper->setParentItem(m_stack.get());                               // the lowest now
    QCOMPARE(m_upper->linkedTo(), m_lower);
    QCOMPARE(m_upper->y(), m_lower->height());
}

void tst_PlotStack::outlivesItsViewsAndTheyIt()
{
    PlotView other;
    other.setParentItem(m_stack.get());
    QCOMPARE(other.linkedTo(), m_upper);
    delete m_lower;
    m_stack->setSize({200.0, 200.0});
    m_stack.reset();
    QCOMPARE(other.linkedTo(), nullptr);
    other.setSize({50.0, 50.0});
}

void tst_PlotStack::savesAllInOnePicture()
{
    StoredSeries<BarSeries> red(*m_upper, {1.0, 1.0});
    StoredSeries<BarSeries> green(*m_lower, {1.0, 1.0});
    red.series.setColor(Qt::red);
    green.series.setColor(Qt::green);
    const QString path = m_folder.filePath(QStringLiteral("all.png"));
    QCOMPARE(answerTo([&] { m_stack->saveImage(path, 2.0); }), QString());
    const QImage picture(path);
    QCOMPARE(picture.size(), QSize(800, 600));
    const auto at = [&](const PlotView &view) {
        return picture.pixelColor(((view.position() + view.plotArea().center()) * 2.0).toPoint());
    };
    QCOMPARE(at(*m_upper), QColor(Qt::red));
    QCOMPARE(at(*m_lower), QColor(Qt::green));
    m_upper->setVisible(false);
    QCOMPARE(answerTo([&] { m_stack->saveImage(path); }), QString());
    const QImage rest(path);
    QCOMPARE(rest.pixelColor(200, 50), QColor(Qt::green));
}

void tst_PlotStack::savesAPictureOfAnotherSize()
{
    StoredSeries<> line(*m_upper, ramp(10));
    const auto settle = [this] {
        for (const PlotView *view : {m_upper, m_lower, m_upper, m_lower})
            layOut(*view);
    };
    settle();
    const QRectF area = m_upper->plotArea();
    const QString path = m_folder.filePath(QStringLiteral("sized.png"));
    QCOMPARE(answerTo([&] { m_stack->saveImage(path, 1.5, {1000.0, 800.0}); }), QString());
    QCOMPARE(QImage(path).size(), QSize(1500, 1200));
    QCOMPARE(m_stack->size(), QSizeF(400.0, 300.0)); // all as it was
    QCOMPARE(m_upper->width(), 400.0);
    settle();
    QCOMPARE(m_upper->plotArea(), area);
    for (const QSizeF &size : {QSizeF(0.0, 100.0), QSizeF(100.0, qQNaN()), QSizeF(qInf(), 100.0)}) {
        QCOMPARE(answerTo([&] { m_stack->saveImage(path, 1.0, size); }), QString());
        QCOMPARE(QImage(path).size(), QSize(400, 300));
    }
}

void tst_PlotStack::savesAllInOneTable()
{
    StoredSeries<> first(*m_upper, {1.0, 2.0});
    StoredSeries<> second(*m_lower, {3.0, 4.0});
    first.series.setName(QStringLiteral("a"));
    second.series.setName(QStringLiteral("b"));
    const QString path = m_folder.filePath(QStringLiteral("all.csv"));
    QTRY_COMPARE(m_lower->axisX()->range().max, 1.0);
    QCOMPARE(answerTo([&] { m_stack->saveValues(path); }), QString());
    QFile file(path);
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(file.readAll(), QByteArray("x,a,b\n0,1,3\n1,2,4\n"));
}

void tst_PlotStack::warnsWhereNobodyListens()
{
    const LogCatcher log;
    m_stack->saveImage(QString());
    QTRY_COMPARE(log.count(QStringLiteral("a file to write to was expected")), 1);
}

void tst_PlotStack::isNothingWithoutViews()
{
    PlotStack empty;
    empty.setSize({100.0, 100.0});
    QSignalSpy spy(&empty, &PlotStack::saved);
    empty.saveValues(m_folder.filePath(QStringLiteral("none.csv")));
    QVERIFY(spy.wait(10'000));
    QCOMPARE(spy.first().at(1).toString(), QStringLiteral("no values are in view"));
}

QTEST_MAIN(tst_PlotStack)
#include "tst_PlotStack.moc"
