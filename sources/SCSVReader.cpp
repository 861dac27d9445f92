// SPDX-License-Identifier: MIT
#include "sources/SCSVReader.h"

#include "common/Change.h"
#include "sources/NumberLines.h"

#include <QDebug>
#include <QFile>
#include <QFileInfo>
#include <QProcess>

namespace {

/// Opening a pipe waits for its other end, and a device may never end. The null device is an empty file.
bool isWorthOpening(const QString &path)
{
    return QFileInfo(path).isFile() || path == QProcess::nullDevice();
}

} // namespace

SCSVReader::SCSVReader(QObject *parent) : Filter1D(parent) {}

SCSVReader::~SCSVReader()
{
    withdraw();
}

void SCSVReader::setFile(const QString &file)
{
    if (!change(m_file, file))
        return;
    const QPointer<SCSVReader> alive(this);
    emit fileChanged();
    if (!alive)
        return;
    QFile input(m_file);
    if (!isWorthOpening(m_file) || !input.open(QIODevice::ReadOnly))
        return;
    const SNumberLines lines = readNumberLines(input);
    if (!lines.error.isEmpty()) {
        qWarning() << "SCSVReader: cannot read" << m_file << lines.error;
        return;
    }
    setArea(QRectF(0.0, 0.0, lines.values.size() * m_binWidth, 0.0));
    if (alive)
        setData(lines.values);
}

void SCSVReader::setBinWidth(double binWidth)
{
    if (change(m_binWidth, binWidth))
        emit binWidthChanged();
}
