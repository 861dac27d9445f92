// SPDX-License-Identifier: MIT
#include "benchmarks/compare/QuickStage.h"

#include <QGuiApplication>
#include <QHash>
#include <QQmlEngine>
#include <QQuickItem>
#include <QRectF>
#include <QVariant>

namespace {

const QString individualWidths = QStringLiteral("bars of individual widths alone");

/// This module, imported from its build tree as any application imports it.
class Vorlix final : public Contender
{
public:
    QStringList variants(const QString &kind) const override
    {
        QStringList all{QStringLiteral("pyramid"), QStringLiteral("plotter alone")};
        if (kind == QLatin1String("bars"))
            all << individualWidths;
        if (kind == QLatin1String("area"))
            all << QStringLiteral("plotter alone, border");
        return all;
    }

    void prepare(const STask &task, const QVector<double> &series) override
    {
        m_wide = task.variant == individualWidths;
        if (m_wide)
            pairsOf(series);
    }

    QWindow *open(const STask &task, const QVector<double> &series) override
    {
        m_count = task.count;
        m_stage.view().engine()->addImportPath(QStringLiteral(VORLIX_IMPORT_PATH));
        m_chart = m_stage.open(QUrl(QStringLiteral("qrc:/vorlix.qml")),
                               {{QStringLiteral("kind"), task.kind},
                                {QStringLiteral("pyramid"), task.variant == QLatin1String("pyramid")},
                                {QStringLiteral("wide"), m_wide},
                                {QStringLiteral("border"), task.variant.endsWith(QLatin1String("border"))},
                                {QStringLiteral("count"), task.count}});
        m_source = m_chart->findChild<QObject *>(QStringLiteral("source"));
        QMetaObject::invokeMethod(m_chart, "start");
        replace(series);
        zoom(zoomView(0));
        return &m_stage.view();
    }

    void replace(const QVector<double> &series) override
    {
        m_source->setProperty("data", QVariant::fromValue(m_wide ? pairsOf(series) : series));
    }

    void zoom(const SView &view) override
    {
        m_chart->setProperty("zoomRect", QRectF(view.from * m_count, 0.0, (view.to - view.from) * m_count, plotTop));
    }

private:
    /// (width, value), made once for each of the contest's series.
    const QVector<double> &pairsOf(const QVector<double> &series)
    {
        QVector<double> &pairs = m_pairs[series.constData()];
        if (pairs.isEmpty()) {
            pairs.reserve(2 * int(series.size()));
            for (const double value : series)
                pairs << 1.0 << value;
        }
        return pairs;
    }

    QuickStage m_stage;
    QQuickItem *m_chart = nullptr;
    QObject *m_source = nullptr;
    int m_count = 0;
    bool m_wide = false;
    QHash<const double *, QVector<double>> m_pairs;
};

} // namespace

int main(int argc, char *argv[])
{
    QGuiApplication application(argc, argv);
    Vorlix contender;
    return runContest(contender);
}
