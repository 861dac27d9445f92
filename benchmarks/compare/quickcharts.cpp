// SPDX-License-Identifier: MIT
#include "benchmarks/compare/QuickStage.h"

#include <QAbstractListModel>
#include <QGuiApplication>
#include <QQuickItem>

#include <cmath>

namespace {

/// The visible part of the series as a list model, which the charts read value by value: no copy.
/// A change of the charts' xRange alone does not make them draw again.
class SeriesModel final : public QAbstractListModel
{
public:
    void setSeries(const QVector<double> &series)
    {
        beginResetModel();
        m_series = series;
        endResetModel();
    }
    void setShown(const SView &view)
    {
        beginResetModel();
        m_view = view;
        endResetModel();
    }
    int rowCount(const QModelIndex &) const override
    {
        return int(std::ceil(m_view.to * m_series.size())) - firstRow();
    }
    QVariant data(const QModelIndex &index, int) const override { return m_series.at(firstRow() + index.row()); }
    QHash<int, QByteArray> roleNames() const override { return {{Qt::UserRole, "value"}}; }

private:
    int firstRow() const { return int(std::floor(m_view.from * m_series.size())); }

    QVector<double> m_series;
    SView m_view;
};

class QuickCharts final : public Contender
{
public:
    QStringList variants(const QString &) const override { return {QString()}; }

    QWindow *open(const STask &task, const QVector<double> &series) override
    {
        m_model.setSeries(series);
        m_stage.open(QUrl(QStringLiteral("qrc:/quickcharts.qml")),
                     {{QStringLiteral("kind"), task.kind},
                      {QStringLiteral("ceiling"), plotTop},
                      {QStringLiteral("model"), QVariant::fromValue<QObject *>(&m_model)}});
        return &m_stage.view();
    }

    void replace(const QVector<double> &series) override { m_model.setSeries(series); }

    void zoom(const SView &view) override { m_model.setShown(view); }

private:
    SeriesModel m_model;
    QuickStage m_stage;
};

} // namespace

int main(int argc, char *argv[])
{
    QGuiApplication application(argc, argv);
    QuickCharts contender;
    return runContest(contender);
}
