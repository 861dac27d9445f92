// SPDX-License-Identifier: MIT

// What a long night is made of for the companion module: stores that are full and appended to, and windows that follow.

#include "stress/KnownPlot.h"
#include "stress/Scenario.h"
#include "stress/StreamedStores.h"

#include <QCoreApplication>
#include <QFile>
#include <QMouseEvent>
#include <QQmlListReference>
#include <QTemporaryDir>

#include <cstdio>

namespace {

class PlotsSoak : public Scenario
{
public:
    ~PlotsSoak() override
    {
        rest();
        std::printf(
            "plots-soak: %lld values appended to each of 4 stores in %.1f s, %.3f a second, at most %.0f ms "
            "late\n",
            m_record.appends, m_record.seconds, double(m_record.appends) / m_record.seconds,
            1000.0 * m_record.longestDelay);
        std::printf("plots-soak: %d pictures checked, %d windows opened, %d scenes and %d plots made, %d files saved\n",
                    m_pictures, m_windows, m_scenes, m_plots, m_files);
    }

private:
    /// A window with two plots whose pictures are known, and a busy scene below them.
    struct SShow
    {
        std::unique_ptr<QQuickWindow> window;
        QQuickItem *known = nullptr; ///< owned by the window's root, as the others
        QQuickItem *part = nullptr;
        QQuickItem *scene = nullptr;
    };

    void prepare(Stage &stage) override
    {
        m_stage = &stage;
        m_stores = std::make_unique<StreamedStores>();
    }

    void round(Stage &stage) override
    {
        if (!m_recorder)
            m_recorder = std::make_unique<Recorder>(*m_stores);
        disturb(stage, m_shows[stage.chance.below(3)]);
        for (SShow &show : m_shows)
            complete(stage, show);
        for (int i = 0; i < 4; ++i) {
            for (const SShow &show : m_shows)
                act(stage, show);
            stage.wait(pause);
        }
        passing(stage, m_shows[stage.chance.below(3)]);
        if (stage.chance.oneIn(20))
            save(stage, *m_shows[stage.chance.below(3)].scene);
        stage.judge(QStringLiteral("stores"), m_stores->faults(stage.chance));
        look(stage, m_shows[m_pictures % 3]);
    }

    /// Stops, and fills the stores up, so that as much is resident each time.
    void rest() override
    {
        for (SShow &show : m_shows)
            show = {};
        if (!m_recorder)
            return;
        const Recorder::SRecord record = m_recorder->stop();
        m_recorder.reset();
        m_record.appends += record.appends;
        m_record.seconds += record.seconds;
        m_record.longestDelay = std::max(m_record.longestDelay, record.longestDelay);
        if (record.refused > 0)
            m_stage->judge(QStringLiteral("recorder"), {QStringLiteral("%1 values refused").arg(record.refused)});
        m_stores->fillUp();
        m_stage->judge(QStringLiteral("stores"), m_stores->fillFaults());
    }

    /// Does away with the scene, hides and shows the window, or rarely does away with all of it: each window that was
    /// ever opened leaves most of a kibibyte resident, also when it is Qt's own and empty.
    void disturb(Stage &stage, SShow &show)
    {
        if (!show.window)
            return;
        const int what = stage.chance.below(200);
        if (what < 20) {
            delete show.scene;
            show.scene = nullptr;
        } else if (what < 30) {
            show.window->hide();
            show.window->show();
        } else if (what == 199) {
            show = {};
        }
    }

    void complete(Stage &stage, SShow &show)
    {
        if (!show.window) {
            show.window = stage.open({320, 330});
            show.known = placeKnownPlot(stage, *show.window);
            show.part = placePartPlot(stage, *show.window, m_stores->narrow);
            ++m_windows;
        }
        if (!show.scene) {
            show.scene =
                qobject_cast<QQuickItem *>(stage.scene("Recorded",
                                                       {{"narrow", QVariant::fromValue(&m_stores->narrow)},
                                                        {"wide", QVariant::fromValue(&m_stores->wide)},
                                                        {"scattered", QVariant::fromValue(&m_stores->scattered)},
                                                        {"places", QVariant::fromValue(&m_stores->places)}}));
            show.scene->setParent(show.window->contentItem());
            show.scene->setParentItem(show.window->contentItem());
            show.scene->setPosition(QPointF(0, 105));
            ++m_scenes;
        }
    }

    double newest() const { return double(m_stores->narrow.snapshot().end()) / 1000.0; }

    void act(Stage &stage, const SShow &show)
    {
        QMetaObject::invokeMethod(show.scene, "act", Q_ARG(QVariant, stage.chance.below(1000)),
                                  Q_ARG(QVariant, stage.chance.between(0.0, 1.0)), Q_ARG(QVariant, newest()));
        const QPointF at(stage.chance.between(0, 320), stage.chance.between(105, 325));
        QMouseEvent hover(QEvent::MouseMove, at, show.window->mapToGlobal(at.toPoint()), Qt::NoButton, Qt::NoButton,
                          Qt::NoModifier);
        QCoreApplication::sendEvent(show.window.get(), &hover);
    }

    /// Plots and series that are there for a moment.
    void passing(Stage &stage, const SShow &show)
    {
        QQuickItem *plot = stage.makeIn(*show.window, QStringLiteral(R"(import VorlixPlugin.Views 1.0
            PlotView {
                id: passing
                width: 200; height: 100; y: 200; followMode: PlotView.FollowAll
                axisY: LogValueAxis {}
                PlotCursor { x: 11000 }
                PlotRegion { from: 11000; to: 11001 }
                OverviewStrip { view: passing; width: 100; height: 20 }
            })"));
        const auto series = std::unique_ptr<QObject>(stage.make(QStringLiteral(R"(import VorlixPlugin.Views 1.0
            AreaSeries { step: 0.001 })")));
        series->setProperty("store", QVariant::fromValue(&m_stores->narrow));
        QQmlListReference(plot, "seriesList").append(series.get());
        QQmlListReference(show.scene->property("plot").value<QObject *>(), "seriesList").append(series.get());
        stage.wait(pause);
        delete plot;
        ++m_plots;
    }

    /// Saves what is in view of the last seconds.
    void save(Stage &stage, QQuickItem &scene)
    {
        auto *plot = scene.property("plot").value<QObject *>();
        const int before = scene.property("savedCount").toInt();
        scene.property("area").value<QObject *>()->setProperty("visible", true); // there's something to save
        QMetaObject::invokeMethod(plot, "zoomTo", Q_ARG(double, newest() - 2.0), Q_ARG(double, newest()));
        const QString values = m_folder.filePath("values.csv");
        const QString image = m_folder.filePath("image.png");
        QFile::remove(values);
        QFile::remove(image);
        QMetaObject::invokeMethod(plot, "saveValues", Q_ARG(QString, values));
        QMetaObject::invokeMethod(plot, "saveImage", Q_ARG(QString, image));
        for (int i = 0; i < 1000 && scene.property("savedCount").toInt() < before + 2; ++i)
            stage.wait(50);
        m_files += scene.property("savedCount").toInt() - before;
        QStringList faults;
        if (scene.property("savedCount").toInt() != before + 2 || !scene.property("savedError").toString().isEmpty())
            faults << QStringLiteral("not saved: ") + scene.property("savedError").toString();
        if (QFile(values).size() < 100 || QImage(image).size() != QSize(320, 180))
            faults << QStringLiteral("not in the files");
        stage.judge(QStringLiteral("files"), faults);
    }

    void look(Stage &stage, SShow &show)
    {
        ++m_pictures;
        const qint64 first = anyPart(stage.chance);
        QVector<double> shown;
        for (qint64 i = first; i < first + 8; ++i)
            shown.append(StreamedStores::narrowAt(i));
        showPart(*show.part, first);
        stage.frames(*show.window, 2);
        const QImage picture = show.window->grabWindow();
        stage.judge(QStringLiteral("picture %1").arg(m_pictures), knownPlotFaults(picture, *show.known));
        stage.judge(QStringLiteral("picture %1 of %2").arg(m_pictures).arg(first),
                    partPlotFaults(picture, *show.part, shown));
    }

    /// Of values that won't have left when they're drawn; often with a gap.
    qint64 anyPart(Chance &chance) const
    {
        const qint64 from = m_stores->narrow.snapshot().begin() + 300'000;
        const qint64 first = from + qint64(chance.between(0.0, 9'000'000.0));
        const qint64 gap = first / StreamedStores::gapDistance * StreamedStores::gapDistance;
        return chance.oneIn(2) && gap - 8 > from ? gap - chance.below(8) : first;
    }

    static constexpr int pause = 150; // milliseconds

    Stage *m_stage = nullptr;
    std::unique_ptr<StreamedStores> m_stores; ///< before all that looks at them
    std::unique_ptr<Recorder> m_recorder;
    Recorder::SRecord m_record; ///< of those that ended
    SShow m_shows[3];
    QTemporaryDir m_folder;
    int m_pictures = 0;
    int m_windows = 0;
    int m_scenes = 0;
    int m_plots = 0;
    int m_files = 0;
};

constexpr int residentGrowth = 2048; // KiB
constexpr double warmUp = 300.0;     // seconds
static const ScenarioRegistration registeredPlotsSoak(
    {"plots-soak", []() -> std::unique_ptr<Scenario> { return std::make_unique<PlotsSoak>(); }, residentGrowth, nullptr,
     warmUp});

} // namespace
