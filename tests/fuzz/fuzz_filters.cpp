// SPDX-License-Identifier: MIT

// Each filter against its definition: a node behind a parent, series and parameters in any order.

#include "filters/DecimatorU64.h"
#include "filters/FixedDecimator2D.h"
#include "filters/FixedDecimatorU64.h"
#include "filters/MinimalWidth2D.h"
#include "filters/MovingAvarangeU64.h"
#include "filters/Pyramid.h"
#include "filters/PyramidBuilder.h"
#include "fuzz/Bytes.h"
#include "fuzz/Check.h"
#include "fuzz/Oracles.h"

#include <algorithm>
#include <memory>

namespace {

constexpr int longestSeriesTried = 3000;

/// A filter, its definition, and what follows from a change of its parameter.
class Subject
{
public:
    virtual ~Subject() = default;
    virtual Filter1D &node() = 0;
    virtual bool take(const QVector<double> &series) = 0; ///< the definition's answer
    /// Changes the parameter in both; `parent` is what the parent publishes.
    virtual void changeParameter(Bytes &bytes, const QVector<double> &parent) = 0;

    SModel model;
};

template <class Node>
class SubjectOf : public Subject
{
public:
    SubjectOf(const char *name, Oracle oracle) : m_name(name), m_oracle(oracle) { model.held = m_node.data(); }

    Filter1D &node() override { return m_node; }
    bool take(const QVector<double> &series) override
    {
        const bool taken = m_oracle(model, series);
        compare(m_name, m_node.data(), model.held);
        return taken;
    }
    void changeParameter(Bytes &bytes, const QVector<double> &parent) override
    {
        const int points = bytes.raw<uint16_t>() % 700 - 10;
        if constexpr (std::is_same_v<Node, MovingAvarangeU64>) {
            m_node.setDepth(points);
            model.depth = std::max(points, 1);
        } else if constexpr (std::is_same_v<Node, FixedDecimatorU64>) {
            const int most = parent.isEmpty() ? FixedDecimatorU64::maximumPoints : parent.size();
            changePoints(std::min(std::max(points, 1), most), parent, true);
            m_node.setNumPoint(points);
        } else if constexpr (std::is_same_v<Node, FixedDecimator2D>) {
            changePoints(std::max(points, 1), parent, false);
            m_node.setNumPoint(points);
        } else if constexpr (std::is_same_v<Node, MinimalWidth2D>) {
            const double width = bytes.number();
            m_node.setMergeWidth(width);
            if (!(width < 0.0) && !(0.8 * model.width < width && width < 1.2 * model.width)) {
                model.width = width;
                m_oracle(model, parent);
            }
        }
    }

private:
    void changePoints(int points, const QVector<double> &parent, bool clears)
    {
        if (points == model.points)
            return;
        model.points = points;
        if (clears)
            model.held = QVector<double>(points, 0.0);
        m_oracle(model, parent);
    }

    Node m_node;
    const char *m_name;
    Oracle m_oracle;
};

std::unique_ptr<Subject> makeSubject(int kind)
{
    switch (kind) {
    case 0:
        return std::make_unique<SubjectOf<Filter1D>>("Filter1D", passThrough);
    case 1:
        return std::make_unique<SubjectOf<DecimatorU64>>("DecimatorU64", keepPyramid);
    case 2:
        return std::make_unique<SubjectOf<FixedDecimatorU64>>("FixedDecimatorU64", reduceToPoints);
    case 3:
        return std::make_unique<SubjectOf<MovingAvarangeU64>>("MovingAvarangeU64", average);
    case 4:
        return std::make_unique<SubjectOf<MinimalWidth2D>>("MinimalWidth2D", mergeNarrowBins);
    default:
        return std::make_unique<SubjectOf<FixedDecimator2D>>("FixedDecimator2D", sampleBins);
    }
}

void compareLevels(const QVector<double> &series)
{
    QVector<QVector<double>> levels{series};
    buildPyramid(levels, 2.0);
    const QVector<QVector<double>> expected = pyramid(series);
    if (levels.size() != expected.size())
        fail("levels", QByteArray::number(levels.size()));
    for (int k = 0; k < levels.size(); ++k)
        compare("level", levels.at(k), expected.at(k));

    // As for a long series: one level after the other, in one of two orders, with and without a thread.
    PyramidBuilder builder(levels);
    for (int time = 0; time < 4; ++time) {
        builder.begin(2.0, 0);
        if (time % 2)
            builder.goOnInBackground();
        for (int i = 0; i < levels.size(); ++i) {
            const int k = time < 2 ? i : levels.size() - 1 - i;
            builder.waitFor(k);
            compare("level of the builder", levels.at(k), expected.at(k));
        }
    }
}

void deliver(Filter1D &parent, Subject &subject, SModel &source, const QVector<double> &series)
{
    int changes = 0;
    QObject::connect(&subject.node(), &Filter1D::dataChanged, &parent, [&] { ++changes; });
    parent.setData(series);
    const int expected = passThrough(source, series) && subject.take(series) ? 1 : 0;
    if (changes != expected)
        fail("publications", QByteArray::number(changes) + " instead of " + QByteArray::number(expected));
    subject.node().disconnect(&parent);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    Bytes bytes(data, size);
    const std::unique_ptr<Subject> subject = makeSubject(bytes.below(6));
    Filter1D parent;
    SModel source;
    parent.addFilter(&subject->node());
    subject->take({}); // adding hands over the parent's empty series
    while (!bytes.atEnd()) {
        switch (bytes.below(4)) {
        case 0:
            subject->changeParameter(bytes, parent.data());
            compare("after a parameter", subject->node().data(), subject->model.held);
            break;
        case 1:
            subject->model.area = QRectF(0.0, 0.0, bytes.number(), bytes.below(2));
            subject->node().setArea(subject->model.area);
            subject->model.area = subject->node().area();
            break;
        case 2:
            if (const QVector<double> series = bytes.series(longestSeriesTried); !series.isEmpty())
                compareLevels(series);
            break;
        default:
            deliver(parent, *subject, source, bytes.series(longestSeriesTried));
        }
    }
    return 0;
}
