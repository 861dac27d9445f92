// SPDX-License-Identifier: MIT
#include "tests/plugin/Library.h"

#include <QtTest>

#include <QProcess>
#include <QRegularExpression>

namespace {

/// The demangled names of the dynamic symbols that the library defines.
QStringList definedSymbols()
{
    QProcess nm;
    nm.start(QStringLiteral(VORLIX_NM), {"--dynamic", "--demangle", "--defined-only", "--format=posix", libraryFile()});
    if (!nm.waitForFinished(-1) || nm.exitCode() != 0)
        return {};
    QStringList names;
    const QStringList lines = QString::fromUtf8(nm.readAllStandardOutput()).split('\n', Qt::SkipEmptyParts);
    for (const QString &line : lines)
        names.append(QString(line).remove(QRegularExpression(" [A-Za-z] [0-9a-f]+( [0-9a-f]+)?$")));
    return names;
}

/// Whether `name` belongs to one of the two classes that programs may link against.
bool isOfAPublicClass(const QString &name)
{
    static const QRegularExpression pattern(
        "^(typeinfo name for |typeinfo for |vtable for )?(Filter1D|BarPlotterDx)(::|$)");
    return pattern.match(name).hasMatch();
}

} // namespace

class tst_PluginExports : public QObject
{
    Q_OBJECT

private slots:
    void nothingButTheEntryPointsAndTwoClasses();
    void theClassesAreThereInFull();
};

void tst_PluginExports::nothingButTheEntryPointsAndTwoClasses()
{
    const QStringList symbols = definedSymbols();
    QVERIFY(!symbols.isEmpty());
    QStringList others;
    for (const QString &name : symbols) {
        if (!isOfAPublicClass(name))
            others.append(name);
    }
    others.sort();
    QCOMPARE(others, (QStringList{"qt_plugin_instance", "qt_plugin_query_metadata"}));
}

void tst_PluginExports::theClassesAreThereInFull()
{
    const QStringList symbols = definedSymbols();
    for (const QString &name : {QStringLiteral("Filter1D"), QStringLiteral("BarPlotterDx")}) {
        for (const char *member : {"%1::%1(QObject*)", "%1::~%1()", "%1::staticMetaObject", "%1::metaObject() const",
                                   "%1::qt_metacast(char const*)", "%1::qt_metacall(QMetaObject::Call, int, void**)",
                                   "vtable for %1", "typeinfo for %1", "typeinfo name for %1"}) {
            const QString symbol = QString(member).arg(name);
            QVERIFY2(symbols.contains(symbol), qPrintable(symbol));
        }
    }
    for (const char *symbol : {"Filter1D::setData(QVector<double> const&)",
                               "Filter1D::data() const",
                               "Filter1D::area() const",
                               "Filter1D::setArea(QRectF const&)",
                               "Filter1D::dataID() const",
                               "Filter1D::setDataID(QString const&)",
                               "Filter1D::max_in(QRectF const&)",
                               "Filter1D::value_at(double) const",
                               "Filter1D::index_at(double) const",
                               "Filter1D::area_at(QPointF const&) const",
                               "Filter1D::_filter_func(QVector<double> const&)",
                               "Filter1D::__start_index(QRectF const&)",
                               "Filter1D::__end_index(QRectF const&)",
                               "Filter1D::addFilter(Filter1D*)",
                               "Filter1D::removeFilter(Filter1D*)",
                               "Filter1D::addPlotter(IPlotter1D*)",
                               "Filter1D::removePlotter(IPlotter1D*)",
                               "Filter1D::plotters() const",
                               "Filter1D::_request_data_update()",
                               "Filter1D::originalData() const",
                               "Filter1D::size2D() const",
                               "Filter1D::dataChanged()",
                               "Filter1D::areaChanged()",
                               "Filter1D::chartAreaChanged()",
                               "Filter1D::dataIDChanged()",
                               "BarPlotterDx::max_in(QRectF const&) const",
                               "BarPlotterDx::area_at(QPointF const&) const",
                               "BarPlotterDx::setPlotterArea(QRectF const&)",
                               "BarPlotterDx::mouse_hovering(QPointF const&) const",
                               "BarPlotterDx::declareArributeArray()",
                               "BarPlotterDx::__update_vertex()",
                               "BarPlotterDx::__update_index()",
                               "BarPlotterDx::_fetch_attribute_data(int const&) const",
                               "BarPlotterDx::__dx_from_to(int, int) const",
                               "BarPlotterDx::__update_draw_index()"})
        QVERIFY2(symbols.contains(symbol), symbol);
}

QTEST_GUILESS_MAIN(tst_PluginExports)
#include "tst_PluginExports.moc"
