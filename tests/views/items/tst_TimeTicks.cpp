// SPDX-License-Identifier: MIT
#include "views/items/TimeTicks.h"

#include "views/items/Ticks.h"

#include <QDateTime>
#include <QtTest>

#include <limits>

namespace {

constexpr double hour = 3600.0;
constexpr double day = 86400.0;
const SLabelSpace space{7.0, 16.0};

double since1970(int year, int month, int date, int hours = 0, int minutes = 0, int seconds = 0)
{
    return double(QDateTime(QDate(year, month, date), QTime(hours, minutes, seconds), Qt::UTC).toSecsSinceEpoch());
}

struct SAxis
{
    QVector<double> ticks;
    QStringList labels;
};

SAxis axis(double startTime, double from, double to, double pixels = 800.0)
{
    const AxisMapping mapping{from, to, false, 0.0, pixels};
    const STimeStep step = timeStep(mapping, startTime, space);
    SAxis made{timeTicks(mapping, startTime, step), {}};
    for (const double tick : made.ticks)
        made.labels.append(timeLabel(tick, startTime, step));
    return made;
}

} // namespace

class tst_TimeTicks : public QObject
{
    Q_OBJECT

private slots:
    void hoursBeginAtWholeHours();
    void midnightShowsTheDay();
    void secondsAndTheirFractions();
    void aFractionOfTheStartIsKept();
    void monthsBeginOnTheirFirstDay();
    void yearsBeginInJanuary();
    void weeksBeginOnMondays();
    void timesBefore1970();
    void theStepDependsOnTheZoomAlone();
    void ticksAscendAtEveryZoom();
    void aWantedIntervalIsRounded();
    void momentsInWords();
    void beyondTheCalendarThereIsNoStep();
};

void tst_TimeTicks::hoursBeginAtWholeHours()
{
    const double start = since1970(2026, 3, 1, 9, 17, 23);
    const SAxis made = axis(start, 0.0, 8 * hour);
    QCOMPARE(made.labels, (QStringList{"10:00", "11:00", "12:00", "13:00", "14:00", "15:00", "16:00", "17:00"}));
    QCOMPARE(made.ticks.first(), 42 * 60.0 + 37.0);
}

void tst_TimeTicks::midnightShowsTheDay()
{
    const SAxis made = axis(since1970(2024, 2, 28, 20), 0.0, 8 * hour);
    QCOMPARE(made.labels.value(4), QStringLiteral("2024-02-29"));
    QCOMPARE(made.labels.value(3), QStringLiteral("23:00"));
}

void tst_TimeTicks::secondsAndTheirFractions()
{
    const double start = since1970(2026, 3, 1, 23, 59, 50);
    QCOMPARE(axis(start, 1.0, 9.0).labels.first(), QStringLiteral("23:59:51"));
    const SAxis tenths = axis(start, 0.55, 1.45);
    QCOMPARE(tenths.labels.first(), QStringLiteral("23:59:50.6"));
    QCOMPARE(tenths.ticks.first(), 0.6);
    const SAxis micros = axis(start, 5.0, 5.00001);
    QCOMPARE(micros.labels.value(1), QStringLiteral("23:59:55.000002"));
}

void tst_TimeTicks::aFractionOfTheStartIsKept()
{
    const SAxis made = axis(since1970(2026, 3, 1) + 0.25, 0.0, 10.0);
    QCOMPARE(made.ticks.first(), 1.75);
    QCOMPARE(made.labels.first(), QStringLiteral("00:00:02"));
}

void tst_TimeTicks::monthsBeginOnTheirFirstDay()
{
    const SAxis made = axis(since1970(2023, 12, 15), 0.0, 200 * day, 600.0);
    QCOMPARE(made.labels, (QStringList{"2024-01", "2024-02", "2024-03", "2024-04", "2024-05", "2024-06", "2024-07"}));
    QCOMPARE(made.ticks[2] - made.ticks[1], 29 * day); // February of a leap year
}

void tst_TimeTicks::yearsBeginInJanuary()
{
    const SAxis made = axis(0.0, since1970(1968, 6, 1), since1970(1976, 6, 1), 500.0);
    QCOMPARE(made.labels.first(), QStringLiteral("1969"));
    QCOMPARE(made.ticks.first(), -365 * day);
    const SAxis centuries = axis(0.0, since1970(1000, 1, 1), since1970(3000, 1, 1), 1400.0);
    QVERIFY(centuries.labels.contains(QStringLiteral("2000")));
}

void tst_TimeTicks::weeksBeginOnMondays()
{
    const SAxis made = axis(since1970(2026, 1, 1), 0.0, 60 * day);
    QVERIFY(made.ticks.size() >= 8);
    for (const double tick : made.ticks)
        QCOMPARE(QDateTime::fromSecsSinceEpoch(qint64(since1970(2026, 1, 1) + tick), Qt::UTC).date().dayOfWeek(), 1);
}

void tst_TimeTicks::timesBefore1970()
{
    const SAxis made = axis(since1970(1955, 11, 5, 6, 15), 0.0, 4 * hour, 400);
    QCOMPARE(made.labels.first(), QStringLiteral("07:00"));
    const SAxis ancient = axis(0.0, -1e11, -0.5e11, 800);
    QVERIFY(ancient.ticks.size() >= 3);
    QVERIFY(ancient.labels.first().startsWith(QLatin1Char('-')));
}

void tst_TimeTicks::theStepDependsOnTheZoomAlone()
{
    const double start = since1970(2026, 3, 1, 9, 17, 23);
    for (double span = 1e-3; span < 1e9; span *= 1.9) {
        const STimeStep step = timeStep({0.0, span, false, 0.0, 700.0}, start, space);
        for (double pan = 0.0; pan < 50.0; pan += 0.37) {
            const STimeStep panned = timeStep({pan * span, pan * span + span, false, 0.0, 700.0}, start, space);
            QCOMPARE(panned.seconds(), step.seconds());
        }
    }
}

void tst_TimeTicks::ticksAscendAtEveryZoom()
{
    const double start = since1970(2026, 3, 1, 9, 17, 23) + 0.125;
    for (double span = 1e-7; span < 1e12; span *= 1.31) {
        const AxisMapping mapping{0.1, 0.1 + span, false, 0.0, 900.0};
        const STimeStep step = timeStep(mapping, start, space);
        const QVector<double> ticks = timeTicks(mapping, start, step);
        QVERIFY2(ticks.size() >= 2 && ticks.size() < 40, qPrintable(QString::number(span)));
        for (int i = 1; i < ticks.size(); ++i)
            QVERIFY(ticks[i] > ticks[i - 1]);
        QVERIFY(timeLabel(ticks[0], start, step) != timeLabel(ticks[1], start, step));
    }
}

void tst_TimeTicks::aWantedIntervalIsRounded()
{
    const AxisMapping mapping{0.0, 8 * hour, false, 0.0, 2000.0};
    QCOMPARE(timeStepFor(hour, mapping, 0.0, space).seconds(), hour);
    QCOMPARE(timeStepFor(2.5 * hour, mapping, 0.0, space).seconds(), 3 * hour);
    QCOMPARE(timeStepFor(-5.0, mapping, 0.0, space).seconds(), timeStep(mapping, 0.0, space).seconds());
    QVERIFY(timeStepFor(1e-3, mapping, 0.0, space).seconds() >= 600.0);
}

void tst_TimeTicks::momentsInWords()
{
    const double start = since1970(2026, 3, 1, 9, 17, 23);
    QCOMPARE(fullTime(0.0, start, 1.0), QStringLiteral("2026-03-01 09:17:23"));
    QCOMPARE(fullTime(0.3, start, 0.01), QStringLiteral("2026-03-01 09:17:23.30"));
    QCOMPARE(fullTime(0.0, start, 100.0), QStringLiteral("2026-03-01 09:17"));
    QCOMPARE(fullTime(0.0, start, 2 * day), QStringLiteral("2026-03-01"));
    QCOMPARE(fullTime(0.0, since1970(2026, 3, 1), 1.0), QStringLiteral("2026-03-01 00:00:00"));
    QCOMPARE(formattedTime(0.5, start, QStringLiteral("hh-mm-ss.zzz")), QStringLiteral("09-17-23.500"));
}

void tst_TimeTicks::beyondTheCalendarThereIsNoStep()
{
    constexpr double nan = std::numeric_limits<double>::quiet_NaN();
    const AxisMapping mapping{0.0, 100.0, false, 0.0, 700.0};
    QCOMPARE(timeStep(mapping, nan, space).seconds(), 0.0);
    QCOMPARE(timeStep(mapping, 1e300, space).seconds(), 0.0);
    QCOMPARE(timeStep({0.0, 1e300, false, 0.0, 700.0}, 0.0, space).seconds(), 0.0);
    QVERIFY(timeTicks(mapping, nan, {TimeUnit::Second, 1.0}).isEmpty());
    QVERIFY(timeTicks(mapping, 0.0, {}).isEmpty());
    QVERIFY(timeTicks(mapping, 0.0, {TimeUnit::Second, 1e-9}).size() <= maximalTickCount);
    QVERIFY(timeLabel(1e300, 0.0, {TimeUnit::Day, 1.0}).isEmpty());
    QVERIFY(fullTime(nan, 0.0, 1.0).isEmpty());
}

QTEST_APPLESS_MAIN(tst_TimeTicks)
#include "tst_TimeTicks.moc"
