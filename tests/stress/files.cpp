// SPDX-License-Identifier: MIT

// Files that are none, and files that change while they are read.

#include "stress/Scenario.h"

#include <QFile>
#include <QTemporaryDir>

#include <atomic>
#include <thread>

namespace {

constexpr int longLine = 200 * 1000 * 1000;

void write(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
        qFatal("cannot write %s", qPrintable(path));
}

class BadFiles : public Scenario
{
    void round(Stage &stage) override
    {
        const std::unique_ptr<QObject> reader(stage.make("SCSVReader {}"));
        const std::unique_ptr<QObject> plotter(stage.make("BarPlotter {}"));
        for (const char *path : {"/nowhere/at/all", "/", "/dev/null", "", "\n", "/proc/self/mem"})
            reader->setProperty("file", QString::fromLatin1(path));
        expectSize(stage, *reader, 0, "files that are none");

        QByteArray garbage;
        for (int i = 0; i < 100000; ++i)
            garbage.append(char(stage.chance.below(256)));
        const int lines = garbage.count('\n') + (garbage.endsWith('\n') ? 0 : 1);
        write(path("garbage"), garbage);
        reader->setProperty("file", path("garbage"));
        expectSize(stage, *reader, lines, "binary garbage");

        if (!m_hadLongLine) {
            m_hadLongLine = true;
            write(path("long"), QByteArray(longLine, '7') + "\n5\n");
            reader->setProperty("file", path("long"));
            expectSize(stage, *reader, 2, "a line of 200 MB");
            QFile::remove(path("long"));
        }
        shrinking(stage, *reader);
    }

    /// Another thread cuts the file and makes it grow again while it is read.
    void shrinking(Stage &stage, QObject &reader)
    {
        const QByteArray full = QByteArray("123.5\n").repeated(200000);
        write(path("shrinking"), full);
        std::atomic<bool> stop{false};
        std::thread other([&] {
            QFile file(path("shrinking"));
            while (!stop) {
                file.resize(full.size() / 3);
                file.resize(full.size());
            }
        });
        for (int i = 0; i < 5; ++i) {
            reader.setProperty("file", path("shrinking"));
            reader.setProperty("file", QString());
        }
        stop = true;
        other.join();
        const int size = reader.property("data").value<QVector<double>>().size();
        if (size > full.size())
            stage.judge("a file that shrinks", {QStringLiteral("%1 values").arg(size)});
    }

    static void expectSize(Stage &stage, const QObject &reader, int size, const char *what)
    {
        const int found = reader.property("data").value<QVector<double>>().size();
        if (found != size)
            stage.judge(QString::fromLatin1(what), {QStringLiteral("%1 values instead of %2").arg(found).arg(size)});
    }

    QString path(const char *name) const { return m_folder.filePath(QString::fromLatin1(name)); }

    QTemporaryDir m_folder;
    bool m_hadLongLine = false;
};
STRESS_SCENARIO(BadFiles, "bad-files", 8192)

} // namespace
