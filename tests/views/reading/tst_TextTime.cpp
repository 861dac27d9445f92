// SPDX-License-Identifier: MIT
#include "views/reading/TextTime.h"

#include "tests/support/RandomSeries.h"

#include <QDateTime>
#include <QtTest>

class tst_TextTime : public QObject
{
    Q_OBJECT

private slots:
    void momentsAreRead_data();
    void momentsAreRead();
    void whatIsNoMomentIsRefused_data();
    void whatIsNoMomentIsRefused();
    void randomMomentsAreWhatQtMakesOfThem();
    void numbersSince1970KeepTheirNanoseconds();
    void differencesAreExact();
};

namespace {

bool read(const QByteArray &text, SMoment &moment)
{
    return isoMomentIn(text.constData(), text.constData() + text.size(), moment);
}

} // namespace

void tst_TextTime::momentsAreRead_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<qint64>("seconds");
    QTest::addColumn<int>("nanoseconds");
    const auto add = [](const char *text, qint64 seconds, int nanoseconds) {
        QTest::newRow(text) << QByteArray(text) << seconds << nanoseconds;
    };
    add("1970-01-01", 0, 0);
    add("2000-02-29", 951'782'400, 0);
    add("1969-12-31T23:59:59.5Z", -1, 500'000'000);
    add("2026-01-31T09:30", 1'769'851'800, 0);
    add("2026-01-31 09:30:15", 1'769'851'815, 0);
    add("2026-01-31T09:30:15.25", 1'769'851'815, 250'000'000);
    add("2026-01-31T09:30:15,25", 1'769'851'815, 250'000'000);
    add("2026-01-31T09:30:15.123456789123Z", 1'769'851'815, 123'456'789);
    add("2026-01-31T09:30:15+01:00", 1'769'848'215, 0);
    add("2026-01-31T09:30:15-0130", 1'769'857'215, 0);
    add("2026-01-31T09:30:15+01", 1'769'848'215, 0);
    add("2026-01-31 09:30:15 +01:00", 1'769'848'215, 0);
}

void tst_TextTime::momentsAreRead()
{
    QFETCH(QByteArray, text);
    SMoment moment;
    QVERIFY(read(text, moment));
    QTEST(moment.seconds, "seconds");
    QTEST(int(moment.nanoseconds), "nanoseconds");
}

void tst_TextTime::whatIsNoMomentIsRefused_data()
{
    QTest::addColumn<QByteArray>("text");
    for (const char *text : {"",
                             "2026",
                             "2026-1-1",
                             "2026-13-01",
                             "2026-02-29",
                             "2026-00-01",
                             "2026-01-32",
                             "20260131",
                             "2026-01-31x",
                             "2026-01-31T",
                             "2026-01-31T9:30",
                             "2026-01-31T25:00",
                             "2026-01-31T09:60",
                             "2026-01-31T09:30:61",
                             "2026-01-31T09:30:15.",
                             "2026-01-31T09:30:15Zx",
                             "2026-01-31T09:30:15+1",
                             "2026-01-31T09:30:15+01:",
                             "09:30",
                             "31.01.2026",
                             "1.5"})
        QTest::newRow(text) << QByteArray(text);
}

void tst_TextTime::whatIsNoMomentIsRefused()
{
    QFETCH(QByteArray, text);
    SMoment moment;
    QVERIFY(!read(text, moment));
}

void tst_TextTime::randomMomentsAreWhatQtMakesOfThem()
{
    RandomSeries random(1);
    for (int round = 0; round < 20'000; ++round) {
        const qint64 milliseconds = qint64(random.real(-5e13, 2e14));
        const QDateTime time = QDateTime::fromMSecsSinceEpoch(milliseconds, Qt::UTC);
        SMoment moment;
        const QByteArray text = time.toString(Qt::ISODateWithMs).toLatin1();
        if (text.size() != 24)
            continue; // beyond the year 9999
        QVERIFY2(read(text, moment), text.constData());
        QCOMPARE(moment.seconds * 1000 + moment.nanoseconds / 1'000'000, milliseconds);
    }
}

void tst_TextTime::numbersSince1970KeepTheirNanoseconds()
{
    const auto check = [](const QByteArray &text, int perSecond, qint64 seconds, int nanoseconds) {
        SMoment moment;
        const bool read =
            epochMomentIn(text.constData(), text.constData() + text.size(), DecimalSign::Either, perSecond, moment);
        return read && moment.seconds == seconds && moment.nanoseconds == nanoseconds;
    };
    QVERIFY(check("1700000000", 1, 1'700'000'000, 0));
    QVERIFY(check("1700000000.123456789", 1, 1'700'000'000, 123'456'789));
    QVERIFY(check("1700000000,5", 1, 1'700'000'000, 500'000'000));
    QVERIFY(check("1700000000123", 1000, 1'700'000'000, 123'000'000));
    QVERIFY(check("1700000000123.456789", 1000, 1'700'000'000, 123'456'789));
    QVERIFY(!check("1.7e9", 1, 1'700'000'000, 0));
    QVERIFY(!check("99999999999999999999", 1, 0, 0));
    QVERIFY(!check("", 1, 0, 0));
}

void tst_TextTime::differencesAreExact()
{
    QCOMPARE(secondsSince(1'700'000'000, {1'700'000'000, 123'456'789, true}), 0.123456789);
    QCOMPARE(secondsSince(1'700'000'000, {1'700'086'400, 1, true}), 86400.000000001);
    QCOMPARE(secondsSince(0, {1'000'000'000'000, 500'000'000, true}), 1e12 + 0.5);
}

QTEST_GUILESS_MAIN(tst_TextTime)
#include "tst_TextTime.moc"
