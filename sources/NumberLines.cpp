// SPDX-License-Identifier: MIT
#include "sources/NumberLines.h"

#include <QIODevice>
#include <QString>

QVector<double> readNumberLines(QIODevice &device)
{
    QVector<double> values;
    while (!device.atEnd())
        values.append(QString::fromUtf8(device.readLine()).toDouble());
    return values;
}
