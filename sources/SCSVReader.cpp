// SPDX-License-Identifier: MIT
#include "sources/SCSVReader.h"

#include "common/Change.h"
#include "sources/NumberLines.h"

#include <QFile>

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
    if (!input.open(QIODevice::ReadOnly | QIODevice::Text))
        return;
    const QVector<double> values = readNumberLines(input);
    setArea(QRectF(0.0, 0.0, values.size() * m_binWidth, 0.0));
    if (alive)
        setData(values);
}

void SCSVReader::setBinWidth(double binWidth)
{
    if (change(m_binWidth, binWidth))
        emit binWidthChanged();
}
