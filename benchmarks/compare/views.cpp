// SPDX-License-Identifier: MIT
#include "benchmarks/compare/QuickStage.h"

#include <QGuiApplication>
#include <QQmlEngine>
#include <QQuickItem>
#include <QVariant>

namespace {

/// The companion module with a plot that is the window.
class Views final : public Contender
{
public:
    QStringList variants(const QString &) const override { return {QString()}; }

    QWindow *open(const STask &task, const QVector<double> &series) override
    {
        m_count = task.count;
        m_stage.view().engine()->addImportPath(QStringLiteral(VORLIX_IMPORT_PATH));
        m_plot = m_stage.open(QUrl(QStringLiteral("qrc:/views.qml")),
                              {{QStringLiteral("kind"), task.kind}, {QStringLiteral("highest"), plotTop}});
        replace(series);
        zoom(zoomView(0));
        return &m_stage.view();
    }

    void replace(const QVector<double> &series) override
    {
        m_plot->property("series").value<QObject *>()->setProperty("values", QVariant::fromValue(series));
    }

    void zoom(const SView &view) override
    {
        QMetaObject::invokeMethod(m_plot, "zoomTo", Q_ARG(double, view.from *m_count), Q_ARG(double, view.to *m_count));
    }

private:
    QuickStage m_stage;
    QQuickItem *m_plot = nullptr;
    int m_count = 0;
};

} // namespace

int main(int argc, char *argv[])
{
    QGuiApplication application(argc, argv);
    Views contender;
    return runContest(contender);
}
