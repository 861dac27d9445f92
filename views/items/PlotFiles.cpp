// SPDX-License-Identifier: MIT
#include "views/items/PlotFiles.h"

#include "common/LocalPath.h"
#include "views/items/OutputFile.h"
#include "views/items/ValueTable.h"

#include <QBuffer>
#include <QImageWriter>
#include <QPainter>
#include <QPdfWriter>

#include <utility>

namespace {

/// A page of the picture's size.
bool writePage(const QImage &picture, double scale, QIODevice &device)
{
    constexpr double pointsPerPixel = 72.0 / 96.0;
    QPdfWriter writer(&device);
    writer.setPageSize(
        QPageSize(QSizeF(picture.size()) / scale * pointsPerPixel, QPageSize::Point, QString(), QPageSize::ExactMatch));
    writer.setPageMargins(QMarginsF());
    QPainter painter(&writer);
    painter.drawImage(QRectF(0.0, 0.0, writer.width(), writer.height()), picture);
    return painter.end();
}

QString writePicture(const QImage &picture, double scale, const QString &path, const std::atomic<bool> &isGivenUp)
{
    QBuffer encoded;
    encoded.open(QIODevice::WriteOnly);
    const bool isPage = path.endsWith(QLatin1String(".pdf"), Qt::CaseInsensitive);
    QImageWriter writer(&encoded, "png");
    if (isPage ? !writePage(picture, scale, encoded) : !writer.write(picture))
        return QStringLiteral("%1: %2").arg(path, writer.errorString());
    OutputFile file(path, isGivenUp);
    const bool isWritten = file.open() && file.write(encoded.data().constData(), encoded.size()) && file.close();
    return isWritten ? QString() : file.error();
}

QString writeTable(ValueTable &table, const QString &path, const std::atomic<bool> &isGivenUp)
{
    OutputFile file(path, isGivenUp);
    if (!file.open())
        return file.error();
    for (QByteArray text = table.head(); !text.isEmpty(); text = table.nextRows()) {
        if (isGivenUp)
            return QStringLiteral("%1: given up before it was written").arg(path);
        if (!file.write(text.constData(), text.size()))
            return file.error();
    }
    return file.close() ? QString() : file.error();
}

QString pathFor(const QString &file, QString &error)
{
    const QString path = localPath(file);
    if (path.isEmpty())
        error = file.isEmpty() ? QStringLiteral("a file to write to was expected")
                               : QStringLiteral("“%1” is not a file here").arg(file);
    return path;
}

} // namespace

PlotFiles::PlotFiles()
{
    connect(&m_jobs, &FileJobs::finished, this, &PlotFiles::saved);
}

void PlotFiles::saveImage(const QString &file, double scale, const Paint &paint)
{
    QString error;
    const QString path = pathFor(file, error);
    const QImage picture = error.isEmpty() ? paint(error) : QImage();
    m_jobs.start(file, [picture, scale, path, error](const std::atomic<bool> &isGivenUp) {
        return error.isEmpty() ? writePicture(picture, scale, path, isGivenUp) : error;
    });
}

void PlotFiles::saveValues(const QString &file, const QVector<PlotView *> &views)
{
    QString error;
    const QString path = pathFor(file, error);
    ValueTable table(views);
    if (error.isEmpty() && table.isEmpty())
        error = QStringLiteral("no values are in view");
    m_jobs.start(file, [table = std::move(table), path, error](const std::atomic<bool> &isGivenUp) mutable {
        return error.isEmpty() ? writeTable(table, path, isGivenUp) : error;
    });
}
