// SPDX-License-Identifier: MIT
#include "fuzz/Oracles.h"

#include "tests/support/PlainBuckets.h"

namespace {

bool differs(const QVector<double> &a, const QVector<double> &b)
{
    if (a.size() != b.size())
        return true;
    for (int i = 0; i < a.size(); ++i) {
        if (!(a.at(i) == b.at(i)))
            return true;
    }
    return false;
}

} // namespace

bool passThrough(SModel &model, const QVector<double> &series)
{
    if (!differs(model.held, series))
        return false;
    model.held = series;
    return true;
}

bool keepPyramid(SModel &model, const QVector<double> &series)
{
    if (!differs(model.held, series))
        return false;
    if (!series.isEmpty())
        model.held = series; // without a chart area the finest level is published
    return true;
}

bool reduceToPoints(SModel &model, const QVector<double> &series)
{
    if (model.area.isNull() || series.isEmpty())
        return false;
    QVector<double> reduced = model.held;
    const double step = double(series.size()) / model.points;
    double x = 0.0;
    int start = 0;
    for (int j = 0; j < model.points && start < series.size(); ++j) {
        x += step;
        const int end = int(std::round(x));
        const QVector<double> bucket = series.mid(start, end - start);
        double largest = bucket.value(0, 0.0);
        for (const double value : bucket) {
            if (value > largest)
                largest = value;
        }
        reduced[j] = largest;
        start = end;
    }
    model.held = reduced;
    return true;
}

bool average(SModel &model, const QVector<double> &series)
{
    if (series.isEmpty())
        return false;
    const int last = series.size() - 1;
    QVector<double> smoothed(series.size() + 2 * (model.depth - 1), 0.0);
    double sum = model.depth * series.at(0);
    for (int i = 0; i < smoothed.size(); ++i) {
        const int from = i - model.depth < 0 ? 0 : (i - model.depth > last ? last : i - model.depth);
        const int to = i + 1 > last ? last : i + 1;
        sum = sum - series.at(from) + series.at(to);
        smoothed[i] = sum / model.depth;
    }
    model.held = smoothed;
    return true;
}

bool mergeNarrowBins(SModel &model, const QVector<double> &series)
{
    model.held.clear();
    double covered = 0.0;
    double peak = 0.0;
    for (int i = 0; i + 1 < series.size(); i += 2) {
        const double width = series.at(i);
        const double value = series.at(i + 1);
        if (width >= model.width && covered == 0.0) {
            model.held << width << value;
            continue;
        }
        covered += width;
        if (value > peak)
            peak = value;
        if (covered < model.width)
            continue;
        model.held << model.width << peak;
        covered -= model.width;
        peak = value;
        if (covered >= model.width) {
            model.held << covered << peak;
            covered = 0.0;
            peak = 0.0;
        }
    }
    if (covered != 0.0)
        model.held << covered << peak;
    return true;
}

bool sampleBins(SModel &model, const QVector<double> &series)
{
    if (model.area.isNull() || series.size() < 2)
        return false;
    const int pairs = series.size() / 2;
    const double binWidth = model.area.width() / model.points;
    QVector<double> sampled(model.points, 0.0);
    double covered = series.at(0);
    double peak = series.at(1);
    double x = 0.0;
    int pair = 0;
    for (int round = 0; round < model.points; ++round) {
        x += binWidth;
        while (x - binWidth / 1000.0 > covered && pair + 1 < pairs) {
            ++pair;
            covered += series.at(2 * pair);
            if (series.at(2 * pair + 1) > peak)
                peak = series.at(2 * pair + 1);
        }
        sampled[0] = binWidth;
        if (model.points > 2)
            sampled[2] = peak;
        peak = series.at(2 * pair + 1);
    }
    model.held = sampled;
    return true;
}

QVector<QVector<double>> pyramid(const QVector<double> &series)
{
    return plainPyramid(series);
}
