// SPDX-License-Identifier: MIT
#include "geometry/HighlightTrail.h"

#include <QtTest>

#include <limits>

namespace {

constexpr float never = 4000000.0f;

QRectF bar(int number)
{
    return {double(number), 0.0, 1.0, 5.0};
}

QVector<QRectF> rects(const HighlightTrail &trail)
{
    QVector<QRectF> result;
    for (const SHighlight &highlight : trail.highlights())
        result.append(highlight.rect);
    return result;
}

/// The fade times, one per highlight, after checking that the corners of each agree.
QVector<float> times(const HighlightTrail &trail)
{
    QVector<float> result;
    for (int i = 0; i < trail.highlights().size(); ++i) {
        for (int corner = 1; corner < 4; ++corner) {
            if (trail.fadeTimes().at(4 * i + corner) != trail.fadeTimes().at(4 * i))
                return {};
        }
        result.append(trail.fadeTimes().at(4 * i));
    }
    return result;
}

} // namespace

class tst_HighlightTrail : public QObject
{
    Q_OBJECT

private slots:
    void aFreshTrailHasOneNullRectangleThatNeverFades();
    void theNewestStaysAndTheReleasedFollowNewestFirst();
    void theNewestIsStampedAnHourAhead();
    void pushingTheNewestAgainIsNoChange();
    void neighboursFarFromTheOriginAreDifferent();
    void theFadeTimeIsOneUnitAfterTheRelease();
    void expiryDropsFromTheEndWhatIsOlderThanItsLife();
    void expiryNeverDropsTheNewest();
    void timesStayWithTheirRectanglesAfterExpiry();
    void midnightDoesNotKeepAHighlight();
    void aClockSetBackDoesNotKeepAHighlight();
    void noMoreAreKeptThanAreDrawn();
};

void tst_HighlightTrail::aFreshTrailHasOneNullRectangleThatNeverFades()
{
    const HighlightTrail trail;
    QCOMPARE(rects(trail), QVector<QRectF>{QRectF()});
    QCOMPARE(trail.fadeTimes(), QVector<float>(4, never));
    QVERIFY(!trail.isFading());
}

void tst_HighlightTrail::theNewestStaysAndTheReleasedFollowNewestFirst()
{
    HighlightTrail trail;
    QVERIFY(trail.push(bar(1), QTime(10, 0, 0, 0)));
    QVERIFY(trail.push(bar(2), QTime(10, 0, 0, 40)));
    QVERIFY(trail.push(bar(3), QTime(10, 0, 0, 80)));
    QVERIFY(trail.isFading());
    QCOMPARE(rects(trail), (QVector<QRectF>{bar(3), bar(2), bar(1), QRectF()}));
    const float ten = 36000000.0f / 100.0f;
    QCOMPARE(times(trail),
             (QVector<float>{never, float(36000080) / 100.0f + 1.0f, float(36000040) / 100.0f + 1.0f, ten + 1.0f}));
    QCOMPARE(trail.fadeTimes().size(), 40);
    QCOMPARE(trail.highlights().at(1).stamp, QTime(10, 0, 0, 80));
    QCOMPARE(trail.highlights().at(3).stamp, QTime(10, 0, 0, 0));
}

void tst_HighlightTrail::theNewestIsStampedAnHourAhead()
{
    HighlightTrail trail;
    trail.push(bar(1), QTime(10, 0));
    QCOMPARE(trail.highlights().first().stamp, QTime(11, 0));
}

void tst_HighlightTrail::pushingTheNewestAgainIsNoChange()
{
    HighlightTrail trail;
    QVERIFY(!trail.push(QRectF(), QTime(10, 0)));
    QVERIFY(trail.push(bar(1), QTime(10, 0)));
    QVERIFY(!trail.push(bar(1), QTime(10, 0, 1)));
    QCOMPARE(trail.highlights().size(), 2);
    QVERIFY(trail.push(bar(2), QTime(10, 0, 1)));
    QVERIFY(trail.push(bar(1), QTime(10, 0, 1))); // not the newest any more
}

void tst_HighlightTrail::neighboursFarFromTheOriginAreDifferent()
{
    HighlightTrail trail;
    QVERIFY(trail.push(QRectF(1e12, 0.0, 0.5, 1.0), QTime(10, 0)));
    QVERIFY(trail.push(QRectF(1e12 + 0.5, 0.0, 0.5, 1.0), QTime(10, 0)));
}

void tst_HighlightTrail::theFadeTimeIsOneUnitAfterTheRelease()
{
    QCOMPARE(HighlightTrail::clock(QTime(0, 0, 0, 0)), 0.0f);
    QCOMPARE(HighlightTrail::clock(QTime(0, 0, 12, 345)), 123.45f);
    QCOMPARE(HighlightTrail::clock(QTime()), 0.0f);
    HighlightTrail trail;
    trail.push(bar(1), QTime(0, 0, 12, 345));
    QCOMPARE(times(trail).at(1), 124.45f);
}

void tst_HighlightTrail::expiryDropsFromTheEndWhatIsOlderThanItsLife()
{
    HighlightTrail trail;
    trail.push(bar(1), QTime(10, 0, 0, 0)); // releases the null rectangle
    trail.push(bar(2), QTime(10, 0, 0, 50));
    trail.push(bar(3), QTime(10, 0, 0, 90));
    trail.expire(QTime(10, 0, 0, 100)); // the oldest is exactly as old as it may be
    QCOMPARE(trail.highlights().size(), 4);
    trail.expire(QTime(10, 0, 0, 101));
    QCOMPARE(rects(trail), (QVector<QRectF>{bar(3), bar(2), bar(1)}));
    trail.expire(QTime(10, 0, 0, 190));
    QCOMPARE(rects(trail), (QVector<QRectF>{bar(3), bar(2)}));
    trail.expire(QTime(10, 0, 0, 191));
    QCOMPARE(rects(trail), QVector<QRectF>{bar(3)});
    QVERIFY(!trail.isFading());
}

void tst_HighlightTrail::expiryNeverDropsTheNewest()
{
    HighlightTrail trail;
    trail.push(bar(1), QTime(10, 0));
    trail.expire(QTime(23, 59));
    QCOMPARE(rects(trail), QVector<QRectF>{bar(1)});
    trail.expire(QTime(9, 59));
    QCOMPARE(rects(trail), QVector<QRectF>{bar(1)});
}

void tst_HighlightTrail::timesStayWithTheirRectanglesAfterExpiry()
{
    HighlightTrail trail;
    trail.push(bar(1), QTime(10, 0, 0));
    trail.push(bar(2), QTime(10, 0, 1));
    trail.expire(QTime(10, 0, 1, 50));
    QCOMPARE(rects(trail), (QVector<QRectF>{bar(2), bar(1)}));
    trail.push(bar(3), QTime(10, 0, 1, 60));
    QCOMPARE(rects(trail), (QVector<QRectF>{bar(3), bar(2), bar(1)}));
    QCOMPARE(times(trail), (QVector<float>{never, float(36001060) / 100.0f + 1.0f, float(36001000) / 100.0f + 1.0f}));
}

void tst_HighlightTrail::midnightDoesNotKeepAHighlight()
{
    HighlightTrail trail;
    trail.push(bar(1), QTime(23, 59, 59, 950));
    trail.expire(QTime(0, 0, 0, 20)); // 70 ms later
    QCOMPARE(trail.highlights().size(), 2);
    trail.expire(QTime(0, 0, 0, 60)); // 110 ms later
    QCOMPARE(rects(trail), QVector<QRectF>{bar(1)});
}

void tst_HighlightTrail::aClockSetBackDoesNotKeepAHighlight()
{
    HighlightTrail trail;
    trail.push(bar(1), QTime(3, 0, 0, 0));
    trail.expire(QTime(2, 0, 0, 0));
    QCOMPARE(rects(trail), QVector<QRectF>{bar(1)});
}

void tst_HighlightTrail::noMoreAreKeptThanAreDrawn()
{
    HighlightTrail trail;
    for (int i = 0; i < 100; ++i)
        trail.push(bar(i), QTime(10, 0, 0, i));
    QCOMPARE(trail.highlights().size(), 10);
    QCOMPARE(trail.fadeTimes().size(), 40);
    QCOMPARE(trail.highlights().first().rect, bar(99));
    QCOMPARE(trail.highlights().last().rect, bar(90));
    QCOMPARE(times(trail).first(), never);
    QCOMPARE(times(trail).last(), float(36000091) / 100.0f + 1.0f);
}

QTEST_APPLESS_MAIN(tst_HighlightTrail)
#include "tst_HighlightTrail.moc"
