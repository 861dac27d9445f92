// SPDX-License-Identifier: MIT
#pragma once

#include "filters/Filter1D.h"

/// Loads a series from a text file with one number per line, inside the write of `file`, and publishes it.
///
/// A line that isn't a number yields 0.0; nothing is skipped. The area becomes (0, 0, count * binWidth, 0). A file that
/// cannot be opened changes nothing but `file`, silently; so does a path to anything but a file, such as a directory, a
/// pipe or a device (the null device is an empty file). One that cannot be read to its end (a read error, more than
/// longestSeries lines) changes nothing but `file` either, with a warning.
///
/// GUI thread, which waits for the threads that help to convert a long file.
class SCSVReader : public Filter1D
{
    Q_OBJECT
    /// The path. Setting the same path again does not read again.
    Q_PROPERTY(QString file READ file WRITE setFile NOTIFY fileChanged)
    /// Width of one value in data units; applies from the next load.
    Q_PROPERTY(double binWidth READ binWidth WRITE setBinWidth NOTIFY binWidthChanged)

public:
    explicit SCSVReader(QObject *parent = nullptr);
    ~SCSVReader() override;

    const QString &file() const { return m_file; }
    void setFile(const QString &file);
    double binWidth() const { return m_binWidth; }
    void setBinWidth(double binWidth);

signals:
    void fileChanged();
    void binWidthChanged();

private:
    QString m_file;
    double m_binWidth = 9.375e-12;
};
