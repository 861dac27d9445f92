// SPDX-License-Identifier: MIT
#include "sources/TextBlocks.h"

#include <QBuffer>
#include <QtTest>

class tst_TextBlocks : public QObject
{
    Q_OBJECT

private slots:
    void blocksAreTheTextInWholeLines_data();
    void blocksAreTheTextInWholeLines();
    void aLineEndFollowsTheLastLine();
    void anEmptyTextHasNoBlocks();
    void onlyBlocksOfLongLinesAreLong();
};

void tst_TextBlocks::blocksAreTheTextInWholeLines_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::newRow("lines") << QByteArray("1\n22\n333\n4444\n");
    QTest::newRow("no end") << QByteArray("1\n22\n333\n4444");
    QTest::newRow("only ends") << QByteArray("\n\n\n\n\n\n");
    QTest::newRow("long lines") << QByteArray(100, '1') + '\n' + QByteArray(50, '2') + "\n3\n" + QByteArray(70, '4');
    QTest::newRow("one line") << QByteArray(30, '1');
}

void tst_TextBlocks::blocksAreTheTextInWholeLines()
{
    QFETCH(QByteArray, text);
    for (int blockSize = 1; blockSize < 120; ++blockSize) {
        QBuffer device(&text);
        QVERIFY(device.open(QIODevice::ReadOnly));
        TextBlocks blocks(device, blockSize);
        STextBlock block;
        QByteArray joined;
        while (blocks.next(block)) {
            QVERIFY(block.size > 0);
            const QByteArray part(block.begin(), block.size);
            joined += part;
            QCOMPARE(blocks.taken(), qint64(joined.size()));
            QVERIFY(part.endsWith('\n') || joined.size() == text.size());
            QCOMPARE(block.lines, part.count('\n') + int(!part.endsWith('\n')));
        }
        QCOMPARE(joined, text);
        QVERIFY(blocks.error().isEmpty());
    }
}

void tst_TextBlocks::aLineEndFollowsTheLastLine()
{
    for (int blockSize = 1; blockSize < 9; ++blockSize) {
        QByteArray text("1\n22");
        QBuffer device(&text);
        QVERIFY(device.open(QIODevice::ReadOnly));
        TextBlocks blocks(device, blockSize);
        STextBlock block;
        QByteArray last;
        while (blocks.next(block))
            last = QByteArray(block.begin(), block.size + 1);
        QCOMPARE(last, QByteArray("22\n"));
    }
}

void tst_TextBlocks::anEmptyTextHasNoBlocks()
{
    QBuffer device;
    QVERIFY(device.open(QIODevice::ReadOnly));
    STextBlock block;
    QVERIFY(!TextBlocks(device, 10).next(block));
}

void tst_TextBlocks::onlyBlocksOfLongLinesAreLong()
{
    QByteArray text = QByteArray("1\n").repeated(20) + QByteArray(100, ' ') + "2\n" + QByteArray("3\n").repeated(20);
    QBuffer device(&text);
    QVERIFY(device.open(QIODevice::ReadOnly));
    TextBlocks blocks(device, 8);
    STextBlock block;
    int longOnes = 0;
    while (blocks.next(block)) {
        QCOMPARE(block.isLong, block.size >= 100);
        longOnes += int(block.isLong);
    }
    QCOMPARE(longOnes, 1);
}

QTEST_GUILESS_MAIN(tst_TextBlocks)
#include "tst_TextBlocks.moc"
