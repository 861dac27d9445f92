// SPDX-License-Identifier: MIT
// How the viewer looks at a file.
#include "viewer/Desktop.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

class tst_viewerfiles : public QObject
{
    Q_OBJECT

private slots:
    void theFirstLinesAreText();
};

void tst_viewerfiles::theFirstLinesAreText()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("lines.txt"));
    const auto linesOf = [&](const QByteArray &content) {
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
            qFatal("no test file");
        file.close();
        return Desktop::firstLines(path, 3);
    };
    QCOMPARE(linesOf("a;b\r\n1;2\n3;4\n5;6\n"), (QStringList{"a;b", "1;2", "3;4"}));
    QCOMPARE(linesOf("1"), QStringList{"1"});
    QCOMPARE(linesOf(""), QStringList());
    QCOMPARE(linesOf(QByteArray("\xFF\xFE"
                                "1\0\n\0"
                                "2\0",
                                8)),
             (QStringList{"1", "2"}));
    QCOMPARE(linesOf(QByteArray(100'000, '7')).value(0), QString(400, QLatin1Char('7')));
    QCOMPARE(Desktop::firstLines(QStringLiteral("/dev/zero"), 3), QStringList());
    QCOMPARE(Desktop::firstLines(folder.path(), 3), QStringList());
}

QTEST_GUILESS_MAIN(tst_viewerfiles)
#include "tst_viewerfiles.moc"
