// SPDX-License-Identifier: MIT
// What the viewer makes of a command line.
#include "viewer/OptionTable.h"
#include "viewer/ViewerOptions.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

class tst_vieweroptions : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void helpNamesEveryOption();
    void badArgumentsAreRefused_data();
    void badArgumentsAreRefused();
    void anUnreadableFileIsRefused();
    void readersAreTold_data();
    void readersAreTold();
    void theWindowIsTold_data();
    void theWindowIsTold();
    void filesAreAbsolute();
    void picturesRememberNothing();

private:
    SViewerOptions parsed(const QString &arguments) const
    {
        return parseViewerOptions(QStringList{"vorlixview"} + arguments.split(QLatin1Char(' '), Qt::SkipEmptyParts));
    }
    QTemporaryDir m_folder;
};

void tst_vieweroptions::initTestCase()
{
    QVERIFY(QDir::setCurrent(m_folder.path()));
    QFile file(QStringLiteral("series.txt"));
    QVERIFY(file.open(QIODevice::WriteOnly) && file.write("1\n2\n") == 4);
}

void tst_vieweroptions::helpNamesEveryOption()
{
    const SViewerOptions help = parsed("--help");
    QCOMPARE(int(help.action), int(SViewerOptions::Action::PrintAndSucceed));
    QVERIFY(help.message.contains(QStringLiteral("[FILE...]")));
    for (const SOption &option : optionTable) {
        for (const QByteArray &name : QByteArray(option.names).split(',')) {
            const QByteArray written = (name.size() == 1 ? "-" : "--") + name;
            QVERIFY2(help.message.contains(QLatin1String(written)), written);
        }
    }
}

void tst_vieweroptions::badArgumentsAreRefused_data()
{
    QTest::addColumn<QString>("arguments");
    QTest::addColumn<QString>("message");
    const auto row = [](const char *arguments, const QString &message) {
        QTest::newRow(arguments) << QString::fromLatin1(arguments) << message;
    };
    row("--png out.png", "no file given; --help tells how");
    row("--csv -", "no file given; --help tells how");
    row("missing.txt", "missing.txt: no such file");
    row("series.txt other/missing.txt", "other/missing.txt: no such file");
    row(".", ".: a directory, not a file of numbers");
    row("- series.txt -", "-: standard input can be read only once");
    row("--colour series.txt", "Unknown option 'colour'.");
    row("--help-all", "Unknown option 'help-all'.");
    row("series.txt --png", "Missing value after '--png'.");
    row("--png= series.txt", "--png needs a file name");
    row("--csv= series.txt", "--csv needs a file name");
    row("--format text2 series.txt", "--format text2: not one of auto, text, npy, raw, wav");
    row("--sample-type int64 series.txt",
        "--sample-type int64: not one of float64, float32, int32, uint32, int16, uint16, int8, uint8");
    row("--separator ,, series.txt", "--separator ,,: not one character");
    row("--decimal-point ; series.txt", "--decimal-point ;: not one of ., ,");
    for (const char *range : {"1", "1:1", "1:2:3", ":", "a:b", "0:nan", "-inf:0"})
        row(qPrintable(QStringLiteral("--range=%1 series.txt").arg(range)),
            QStringLiteral("--range %1: not two numbers with a colon between").arg(range));
    for (const char *size : {"100", "100x", "x100", "axb", "-100x100", "100x-100", "63x64", "64x63", "8193x64",
                             "64x8193", "100x100x100", "1e3x100", "100X100", "4294967396x100"})
        row(qPrintable(QStringLiteral("--size=%1 series.txt").arg(size)),
            QStringLiteral("--size %1: not WIDTHxHEIGHT with sides from 64 to 8192 pixels").arg(size));
    for (const char *width : {"0", "-1", "nan", "inf", "1e400", "wide", "1,5", "0x10"})
        row(qPrintable(QStringLiteral("--bin-width=%1 series.txt").arg(width)),
            QStringLiteral("--step %1: not a number above 0").arg(width));
    for (const char *start : {"nan", "inf", "left"})
        row(qPrintable(QStringLiteral("--start=%1 series.txt").arg(start)),
            QStringLiteral("--start %1: not a number").arg(start));
    for (const char *depth : {"0", "-1", "2.5", "many", "1000001", "99999999"})
        row(qPrintable(QStringLiteral("--smooth=%1 series.txt").arg(depth)),
            QStringLiteral("--smooth %1: not a whole number from 1 to 1000000").arg(depth));
}

void tst_vieweroptions::badArgumentsAreRefused()
{
    QFETCH(QString, arguments);
    QFETCH(QString, message);
    const SViewerOptions options = parsed(arguments);
    QCOMPARE(int(options.action), int(SViewerOptions::Action::PrintAndFail));
    QCOMPARE(options.message, QStringLiteral("vorlixview: %1\n").arg(message));
}

void tst_vieweroptions::anUnreadableFileIsRefused()
{
    QFile file(QStringLiteral("secret.txt"));
    QVERIFY(file.open(QIODevice::WriteOnly));
    QVERIFY(file.setPermissions(QFileDevice::WriteOwner));
    QFile again(file.fileName());
    if (again.open(QIODevice::ReadOnly))
        QSKIP("the superuser may read everything");
    QCOMPARE(parsed("secret.txt").message, QStringLiteral("vorlixview: secret.txt: permission denied\n"));
}

void tst_vieweroptions::readersAreTold_data()
{
    QTest::addColumn<QString>("arguments");
    QTest::addColumn<QVariantMap>("hints");
    QTest::newRow("nothing") << QString() << QVariantMap();
    QTest::newRow("a column") << "--column 3" << QVariantMap{{"column", "3"}};
    QTest::newRow("names") << "--column U --x-column t" << QVariantMap{{"column", "U"}, {"xColumn", "t"}};
    QTest::newRow("samples") << "--sample-type int16" << QVariantMap{{"sampleType", 4}, {"format", 3}};
    QTest::newRow("a format") << "--format npy --follow" << QVariantMap{{"format", 2}, {"follow", true}};
    QTest::newRow("a text") << "--separator ; --decimal-point , --skip-lines 12"
                            << QVariantMap{{"separator", ";"}, {"decimalPoint", ","}, {"skipLines", 12}};
}

void tst_vieweroptions::readersAreTold()
{
    QFETCH(QString, arguments);
    QTEST(parsed(arguments + " series.txt").scene.value("hints").toMap(), "hints");
}

void tst_vieweroptions::theWindowIsTold_data()
{
    QTest::addColumn<QString>("arguments");
    QTest::addColumn<QString>("property");
    QTest::addColumn<QVariant>("value");
    const auto row = [](const char *arguments, const char *property, const QVariant &value) {
        QTest::newRow(arguments) << QString::fromLatin1(arguments) << QString::fromLatin1(property) << value;
    };
    row("", "step", {});
    row("--step 0.5", "step", 0.5);
    row("--bin-width 1e-9", "step", 1e-9);
    row("--start -3", "start", -3.0);
    row("--unit keV", "unit", "keV");
    row("--smooth 8", "smoothDepth", 8);
    row("--line", "look", "line");
    row("--area", "look", "area");
    row("--dark", "colors", "dark");
    row("--light", "colors", "light");
    row("--log", "logarithmic", true);
    row("--range 5:-1", "range", QVariantList{-1.0, 5.0});
}

void tst_vieweroptions::theWindowIsTold()
{
    QFETCH(QString, arguments);
    QFETCH(QString, property);
    QTEST(parsed(arguments).scene.value(property), "value");
}

void tst_vieweroptions::filesAreAbsolute()
{
    const QStringList files{QDir::current().absoluteFilePath("series.txt"), QStringLiteral("-")};
    QCOMPARE(parsed("series.txt -").scene.value("paths").toStringList(), files);
}

void tst_vieweroptions::picturesRememberNothing()
{
    QVERIFY(parsed("series.txt").keepsSettings);
    QVERIFY(!parsed("--no-settings").keepsSettings);
    QVERIFY(!parsed("--png out.png series.txt").keepsSettings);
    QVERIFY(!parsed("--csv - series.txt").keepsSettings);
    QCOMPARE(parsed("--size 3000x2000").scene.value("pixels").toSizeF(), QSizeF(3000, 2000));
    QVERIFY(!parsed("").scene.contains("pixels"));
}

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("vorlixview"));
    tst_vieweroptions test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_vieweroptions.moc"
