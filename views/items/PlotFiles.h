// SPDX-License-Identifier: MIT
#pragma once

#include "views/items/FileJobs.h"

#include <QImage>
#include <QObject>
#include <QString>
#include <QVector>

#include <functional>

class PlotView;

/// Writes what views show to files, in threads of their own. GUI thread.
class PlotFiles : public QObject
{
    Q_OBJECT

public:
    /// Null, with the reason in `error`, if there can't be a picture.
    using Paint = std::function<QImage(QString &error)>;

    PlotFiles();

    /// The picture that `paint` returns at once, with `scale` pixels for one of the usual screen.
    void saveImage(const QString &file, double scale, const Paint &paint);
    void saveValues(const QString &file, const QVector<PlotView *> &views);

signals:
    /// Once for each call, from the event loop; `error` is empty if the file is written.
    void saved(const QString &file, const QString &error);

private:
    FileJobs m_jobs;
};
