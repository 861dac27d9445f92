// SPDX-License-Identifier: MIT
#include "views/reading/TextPreview.h"

#include <QTemporaryDir>
#include <QtTest>

class tst_TextPreview : public QObject
{
    Q_OBJECT

private slots:
    void cutsLinesAsTheReaderDoes();
    void leavesLinesWholeWithoutASeparator();
    void takesTextsOfEveryEncoding();
    void endsLongLines();
    void hasNothingOfWhatIsNotAFile();

private:
    QVector<QStringList> preview(const QByteArray &content, char separator, int lines = 3) const;

    QTemporaryDir m_folder;
};

QVector<QStringList> tst_TextPreview::preview(const QByteArray &content, char separator, int lines) const
{
    QFile file(m_folder.filePath(QStringLiteral("lines.txt")));
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
        qFatal("no test file");
    file.close();
    return previewOf(file.fileName(), lines, separator);
}

void tst_TextPreview::cutsLinesAsTheReaderDoes()
{
    QCOMPARE(preview("a;b\r\n1; 2\n\"3;5\";4\n5;6\n", ';'),
             (QVector<QStringList>{{"a", "b"}, {"1", "2"}, {"3;5", "4"}}));
    QCOMPARE(preview("  1   2\t3 \n", ' '), (QVector<QStringList>{{"1", "2", "3"}}));
    QCOMPARE(preview("1\n2", ';'), (QVector<QStringList>{{"1"}, {"2"}})); // the last line has no end
    QCOMPARE(preview("", ';'), QVector<QStringList>());
    QCOMPARE(preview("1\n", ';', 0), QVector<QStringList>());
}

void tst_TextPreview::leavesLinesWholeWithoutASeparator()
{
    QCOMPARE(preview("a;b c\n", 0), (QVector<QStringList>{{"a;b c"}}));
}

void tst_TextPreview::takesTextsOfEveryEncoding()
{
    QCOMPARE(preview("\xEF\xBB\xBFµ;2\n", ';'), (QVector<QStringList>{{"µ", "2"}}));
    QCOMPARE(preview(QByteArray("\xFF\xFE"
                                "1\0\n\0"
                                "2\0",
                                8),
                     ';'),
             (QVector<QStringList>{{"1"}, {"2"}}));
}

void tst_TextPreview::endsLongLines()
{
    QCOMPARE(preview(QByteArray(100'000, '7'), ';').value(0).value(0), QString(400, QLatin1Char('7')));
}

void tst_TextPreview::hasNothingOfWhatIsNotAFile()
{
    QCOMPARE(previewOf(QStringLiteral("/dev/zero"), 3, ';'), QVector<QStringList>());
    QCOMPARE(previewOf(m_folder.path(), 3, ';'), QVector<QStringList>());
    QCOMPARE(previewOf(m_folder.filePath(QStringLiteral("missing")), 3, ';'), QVector<QStringList>());
}

QTEST_GUILESS_MAIN(tst_TextPreview)
#include "tst_TextPreview.moc"
