// SPDX-License-Identifier: MIT
#include "tests/plugin/Library.h"

#include <QtTest>

#include <QLibrary>
#include <QResource>

#include <dlfcn.h>

namespace {

QVector<int> registeredVersions;
int unregistered = 0;

using Register = bool (*)(int, const unsigned char *, const unsigned char *, const unsigned char *);

Register qtsOwn(const char *symbol)
{
    return reinterpret_cast<Register>(dlsym(RTLD_NEXT, symbol));
}

/// Qt's libraries have sets of their own.
bool isOurs(const unsigned char *tree)
{
    Dl_info info;
    return dladdr(tree, &info) && QFileInfo(QString::fromLocal8Bit(info.dli_fname)) == QFileInfo(libraryFile());
}

QStringList resourceFiles()
{
    QStringList files;
    QDirIterator tree(":/", QDir::Files, QDirIterator::Subdirectories);
    while (tree.hasNext())
        files.append(tree.next());
    return files;
}

} // namespace

// The dynamic linker gives the library these functions of the executable in place of Qt's.

Q_DECL_EXPORT bool qRegisterResourceData(int version, const unsigned char *tree, const unsigned char *name,
                                         const unsigned char *data)
{
    if (isOurs(tree))
        registeredVersions.append(version);
    return qtsOwn("_Z21qRegisterResourceDataiPKhS0_S0_")(version, tree, name, data);
}

Q_DECL_EXPORT bool qUnregisterResourceData(int version, const unsigned char *tree, const unsigned char *name,
                                           const unsigned char *data)
{
    unregistered += isOurs(tree);
    return qtsOwn("_Z23qUnregisterResourceDataiPKhS0_S0_")(version, tree, name, data);
}

class tst_PluginResources : public QObject
{
    Q_OBJECT

private slots:
    void loadingRegistersOneSetOfVersionThree();
    void theTreeIsExactlyTheElevenFiles();
    void theContentsAreTheSourcesCompressedWithZlib();
    void unloadingUnregistersTheSet();

private:
    QStringList m_filesBefore;
    QLibrary m_library{libraryFile()};
};

void tst_PluginResources::loadingRegistersOneSetOfVersionThree()
{
    m_filesBefore = resourceFiles();
    QVERIFY(!QFile::exists(":/qml/utils.js"));
    QVERIFY2(m_library.load(), qPrintable(m_library.errorString()));
    QCOMPARE(registeredVersions, QVector<int>{3});
    QVERIFY(QFile::exists(":/qml/utils.js"));
}

void tst_PluginResources::theTreeIsExactlyTheElevenFiles()
{
    QStringList files = resourceFiles();
    for (const QString &file : qAsConst(m_filesBefore))
        files.removeOne(file);
    files.sort();
    QStringList expected{":/qml/SPlotQML.qml",
                         ":/qml/LinearXAxis.qml",
                         ":/qml/LinearYAxis.qml",
                         ":/qml/NavigatorBar.qml",
                         ":/qml/ChartTooltip.qml",
                         ":/qml/utils.js",
                         ":/qml/Legend/LegendElement.qml",
                         ":/qml/Legend/HorizontalLegend.qml",
                         ":/qml/Legend/VerticalLegend.qml",
                         ":/qml/Legend/ViewLegend.qml",
                         ":/qml/Legend/LegendDropArea.qml"};
    expected.sort();
    QCOMPARE(files, expected);
}

void tst_PluginResources::theContentsAreTheSourcesCompressedWithZlib()
{
    int compressed = 0;
    QDirIterator tree(":/qml", QDir::Files, QDirIterator::Subdirectories);
    while (tree.hasNext()) {
        QFile file(tree.next());
        QFile source(qmlFolder() + file.fileName().mid(int(qstrlen(":/qml"))));
        QVERIFY2(source.open(QIODevice::ReadOnly), qPrintable(source.fileName()));
        QVERIFY(file.open(QIODevice::ReadOnly));
        QCOMPARE(file.readAll(), source.readAll());
        const QResource::Compression algorithm = QResource(file.fileName()).compressionAlgorithm();
        QVERIFY(algorithm == QResource::ZlibCompression
                || algorithm == QResource::NoCompression); // none where it saves nothing
        compressed += algorithm == QResource::ZlibCompression;
    }
    QVERIFY(compressed > 0);
}

void tst_PluginResources::unloadingUnregistersTheSet()
{
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
    QSKIP("sanitized programs keep their libraries, so that reports can name them");
#endif
    if (!m_library.unload())
        QSKIP("the library does not let itself be unloaded");
    QCOMPARE(unregistered, 1);
    QVERIFY(!QFile::exists(":/qml/utils.js"));
}

QTEST_GUILESS_MAIN(tst_PluginResources)
#include "tst_PluginResources.moc"
