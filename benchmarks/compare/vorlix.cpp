// SPDX-License-Identifier: MIT
#include "benchmarks/compare/QuickStage.h"

#include <QGuiApplication>
#include <QQmlEngine>
#include <QQuickItem>
#include <QRectF>
#include <QVariant>

namespace {

/// This module, imported from its build tree as any application imports it.
class Vorlix final : public Contender
{
public:
    QStringList variants(const QString &) const override
    {
        return {QStringLiteral("pyramid"), QStringLiteral("plotter alone")};
    }

    QWindow *open(const STask &task, const QVector<double> &series) override
    {
        m_count = task.count;
        m_stage.view().engine()->addImportPath(QStringLiteral(VORLIX_IMPORT_PATH));
        m_chart = m_stage.open(QUrl(QStringLiteral("qrc:/vorlix.qml")),
                               {{QStringLiteral("kind"), task.kind},
                                {QStringLiteral("pyramid"), task.variant == QLatin1String("pyramid")},
                                {QStringLiteral("count"), task.count}});
        m_source = m_chart->findChild<QObject *>(QStringLiteral("source"));
        QMetaObject::invokeMethod(m_chart, "start");
        replace(series);
        zoom(zoomView(0));
        return &m_stage.view();
    }

    void replace(const QVector<double> &series) override { m_source->setProperty("data", QVariant::fromValue(series)); }

    void zoom(const SView &view) override
    {
        m_chart->setProperty("zoomRect", QRectF(view.from * m_count, 0.0, (view.to - view.from) * m_count, plotTop));
    }

private:
    QuickStage m_stage;
    QQuickItem *m_chart = nullptr;
    QObject *m_source = nullptr;
    int m_count = 0;
};

} // namespace

int main(int argc, char *argv[])
{
    QGuiApplication application(argc, argv);
    Vorlix contender;
    return runContest(contender);
}
