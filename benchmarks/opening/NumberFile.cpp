// SPDX-License-Identifier: MIT
#include "benchmarks/opening/NumberFile.h"

#include <QFile>

#include <algorithm>
#include <cmath>
#include <random>

namespace {

constexpr int portion = 1'000'000; ///< lines or samples that are written again and again

QByteArray number(double value)
{
    return QByteArray::number(value, 'f', 3);
}

QByteArray withComma(double value)
{
    return number(value).replace('.', ',');
}

QByteArray lineOf(NumberFile::Kind kind, int index, double value)
{
    switch (kind) {
    case NumberFile::Kind::Column:
        return number(value) + '\n';
    case NumberFile::Kind::ThreeColumns:
        return withComma(index * 0.001) + ';' + withComma(value) + ';' + withComma(-2.0 * value) + '\n';
    case NumberFile::Kind::Floats:
        break;
    }
    const float sample = float(value);
    return {reinterpret_cast<const char *>(&sample), sizeof sample};
}

void write(QFile &file, const QByteArray &bytes)
{
    if (file.write(bytes) != bytes.size())
        qFatal("%s: %s", qPrintable(file.fileName()), qPrintable(file.errorString()));
}

} // namespace

NumberFile::NumberFile(Kind kind, qint64 count, const QString &folder)
    : m_path(folder + QStringLiteral("/vorlix-opening"))
{
    std::mt19937 random(1);
    std::normal_distribution<double> noise(0.0, 1.0);
    QByteArray bytes;
    qint64 firstSize = 0; // of the lines that are left to the last portion
    const qint64 rest = count % portion;
    for (int i = 0; i < std::min(count, qint64(portion)); ++i) {
        if (i == rest)
            firstSize = bytes.size();
        bytes += lineOf(kind, i, 100.0 * std::sin(i * 6e-5) + noise(random));
    }
    QFile file(m_path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Unbuffered))
        qFatal("%s: %s", qPrintable(m_path), qPrintable(file.errorString()));
    if (kind == Kind::ThreeColumns)
        write(file, "t [s];level [V];drift [V]\n");
    for (qint64 i = 0; i < count / portion; ++i)
        write(file, bytes);
    write(file, count < portion ? bytes : bytes.left(int(firstSize)));
}

NumberFile::~NumberFile()
{
    QFile::remove(m_path);
}
