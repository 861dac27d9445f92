// SPDX-License-Identifier: MIT
#include "views/reading/TextMarks.h"

#include "tests/support/RandomSeries.h"

#include <QByteArray>
#include <QtTest>

class tst_TextMarks : public QObject
{
    Q_OBJECT

private slots:
    void everyByteButDigitsAndSignsIsMarked();
    void everySizeIsLookedThroughToItsEnd();
};

namespace {

constexpr int margin = 16;

QVector<quint32> marksOf(const QByteArray &text, int from, int to)
{
    const QByteArray padded = text + QByteArray(margin, '-');
    TextMarks marks;
    marks.find(padded.constData(), from, to);
    QVector<quint32> places;
    std::copy(marks.begin(), marks.end(), std::back_inserter(places));
    return places;
}

/// The same, byte by byte.
QVector<quint32> expectedMarks(const QByteArray &text, int from, int to)
{
    const auto isDigit = [](char c) { return c >= '0' && c <= '9'; };
    QVector<quint32> places{quint32(from - 1)};
    for (int i = from; i < to; ++i) {
        const char before = i == from ? '\n' : text.at(i - 1);
        const bool isSign = text.at(i) == '-' && before != '-' && !isDigit(before);
        if (!isDigit(text.at(i)) && !isSign)
            places << quint32(i);
    }
    return places;
}

} // namespace

void tst_TextMarks::everyByteButDigitsAndSignsIsMarked()
{
    QByteArray all;
    for (int first = 0; first < 256; ++first) {
        for (int second = 0; second < 256; ++second)
            all += QByteArray(1, char(first)) + char(second);
    }
    QCOMPARE(marksOf(all, 0, int(all.size())), expectedMarks(all, 0, int(all.size())));
}

void tst_TextMarks::everySizeIsLookedThroughToItsEnd()
{
    RandomSeries random(1);
    static constexpr char likely[] = "0123456789--;,.\n\r x\xFF";
    for (int size = 0; size < 400; ++size) {
        QByteArray text;
        for (int i = 0; i < size + 3; ++i)
            text += likely[random.whole(0, int(sizeof likely) - 2)];
        const int from = random.whole(0, 3);
        QCOMPARE(marksOf(text, from, from + size), expectedMarks(text, from, from + size));
    }
}

QTEST_GUILESS_MAIN(tst_TextMarks)
#include "tst_TextMarks.moc"
