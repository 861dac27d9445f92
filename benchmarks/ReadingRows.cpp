// SPDX-License-Identifier: MIT
#include "benchmarks/Rows.h"

#include "sources/SCSVReader.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <charconv>
#include <memory>

namespace {

/// Where files lie in memory, if there is such a place: what a disk does meanwhile isn't measured.
QString folderTemplate()
{
    const QString memory = QStringLiteral("/dev/shm");
    return (QFileInfo(memory).isWritable() ? memory : QDir::tempPath()) + QStringLiteral("/numbers-XXXXXX");
}

/// A file of `count` lines and a second name of it.
class NumberFile
{
public:
    explicit NumberFile(int count) : m_folder(folderTemplate())
    {
        QFile file(name(0));
        if (!file.open(QIODevice::WriteOnly))
            qFatal("%s cannot be written", qPrintable(name(0)));
        QByteArray text;
        for (const double value : randomSeries(count, 1))
            text += QByteArray::number(value * 1000.0, 'g', 6) + '\n';
        file.write(text);
        file.close();
        QFile::link(name(0), name(1));
    }
    QString name(int index) const { return m_folder.filePath(QStringLiteral("numbers%1.txt").arg(index)); }

private:
    QTemporaryDir m_folder;
};

const NumberFile &numberFile(int count)
{
    static std::unique_ptr<NumberFile> kept; // one at a time
    static int keptCount = 0;
    if (keptCount != count) {
        kept.reset();
        kept = std::make_unique<NumberFile>(count);
        keptCount = count;
    }
    return *kept;
}

void readFile(benchmark::State &state)
{
    const NumberFile &file = numberFile(int(state.range(0)));
    SCSVReader reader;
    int turn = 0;
    const auto read = [&] {
        reader.setFile(file.name(turn)); // the same name again would not be read
        turn = 1 - turn;
    };
    read(); // with every row: what a file costs that was just written, and a process that just began, is left out
    for ([[maybe_unused]] auto _ : state)
        read();
}

void mapOnce(const QString &name)
{
    QFile mapped(name);
    if (!mapped.open(QIODevice::ReadOnly))
        qFatal("%s cannot be read", qPrintable(name));
    const char *text = reinterpret_cast<const char *>(mapped.map(0, mapped.size()));
    const char *end = text + mapped.size();
    QVector<double> values;
    double value = 0.0;
    while (text != end) {
        const char *behind = std::from_chars(text, end, value).ptr;
        values.append(value);
        text = behind + 1; // the line end
    }
    benchmark::DoNotOptimize(values.constData());
}

void mapAndConvert(benchmark::State &state)
{
    const NumberFile &file = numberFile(int(state.range(0)));
    mapOnce(file.name(0));
    for ([[maybe_unused]] auto _ : state)
        mapOnce(file.name(0));
}

/// The way that one writes first.
void readLinesOnce(const QString &name)
{
    QFile text(name);
    if (!text.open(QIODevice::ReadOnly | QIODevice::Text))
        qFatal("%s cannot be read", qPrintable(name));
    QVector<double> values;
    while (!text.atEnd())
        values.append(QString::fromUtf8(text.readLine()).toDouble());
    benchmark::DoNotOptimize(values.constData());
}

void readLines(benchmark::State &state)
{
    const NumberFile &file = numberFile(int(state.range(0)));
    readLinesOnce(file.name(0));
    for ([[maybe_unused]] auto _ : state)
        readLinesOnce(file.name(0));
}

} // namespace

void addReadingRows()
{
    addRow("reading of SCSVReader", readFile);
    addRow("reading of SCSVReader|memory map and from_chars", mapAndConvert);
    addRow("readLine and QString::toDouble", readLines);
    addRow("readLine and QString::toDouble|memory map and from_chars", mapAndConvert);
}
