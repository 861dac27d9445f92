// SPDX-License-Identifier: MIT
#pragma once

#include "views/items/PlotAxis.h"

#include <QMarginsF>
#include <QQmlListProperty>
#include <QQuickItem>
#include <QVector>

#include <memory>

class LeftOut;
class OverviewStrip;
class PlotEars;
class PlotFiles;
class PlotFrame;
class PlotHands;
class PlotMarks;
class PlotReadout;
class PlotSeries;
class PlotTheme;
class PlotZoom;
class SeriesItem;

// The view holds what belongs together and no more: two axes, the list of series, the plot area. Whoever adds to it:
//   pictures of series     SeriesItem, one for each series, children of seriesLayer(); made here
//   axes, grid, labels     items of their own, children of the view; they tell what room they need by setPlotMargins()
//   hands                  classes of their own that filter the view's events and set the axes' ranges
//   cursors, regions, ...  declared inside the view: elementAdded() tells of everything that isn't a series

/// A plot: series over a common pair of axes, drawn by the scene graph's own nodes. GUI thread.
class PlotView : public QQuickItem
{
    Q_OBJECT
    /// Never null. An axis that is given stays the giver's; when it's destroyed, or null is set, the view's own
    /// returns.
    Q_PROPERTY(PlotAxis *axisX READ axisX WRITE setAxisX NOTIFY axisXChanged)
    Q_PROPERTY(PlotAxis *axisY READ axisY WRITE setAxisY NOTIFY axisYChanged)
    /// Colors and font. Never null; a theme that is given stays the giver's and may serve many views.
    Q_PROPERTY(PlotTheme *theme READ theme WRITE setTheme NOTIFY themeChanged)
    Q_PROPERTY(QString title READ title WRITE setTitle NOTIFY titleChanged)
    /// Where the values are drawn, in coordinates of the view; it lies on whole device pixels, counted from the view's
    /// corner.
    Q_PROPERTY(QRectF plotArea READ plotArea NOTIFY plotAreaChanged)
    /// How the view follows series that grow: not at all (values that come are only shown as long as all are), by its
    /// right end with the same length, or by stretching to the right. A pan to the left pauses it; the End key, or a
    /// pan to the end, resumes it.
    Q_PROPERTY(FollowMode followMode READ followMode WRITE setFollowMode NOTIFY followModeChanged)
    /// Whether the newest values stay in view now.
    Q_PROPERTY(bool following READ isFollowing NOTIFY followingChanged)
    /// Whether mouse, wheel, fingers and keys do anything.
    Q_PROPERTY(bool interactive READ isInteractive WRITE setInteractive NOTIFY interactiveChanged)
    /// Whether the view lists the names of its series; a click on one hides or shows that series. Series without a name
    /// aren't listed.
    Q_PROPERTY(bool legendVisible READ legendVisible WRITE setLegendVisible NOTIFY legendVisibleChanged)
    /// The whole of the series in small under the plot, with the part that's shown.
    Q_PROPERTY(bool overviewVisible READ overviewVisible WRITE setOverviewVisible NOTIFY overviewVisibleChanged)
    /// What the series are under the pointer.
    Q_PROPERTY(bool readoutVisible READ readoutVisible WRITE setReadoutVisible NOTIFY readoutVisibleChanged)
    /// Whether the view shows a region of its own, which measures the first visible series. It comes up around the
    /// marked peak, or else over the middle third of what is in view.
    Q_PROPERTY(bool regionVisible READ regionVisible WRITE setRegionVisible NOTIFY regionVisibleChanged)
    /// How many values of the visible series have no place on a log scale: those of 0 and below in the shown part of x,
    /// and on a log scale of x those that stand there. The view says it in words, too. It follows changes after a
    /// twentieth of a second.
    Q_PROPERTY(qreal leftOutCount READ leftOutCount NOTIFY leftOutCountChanged)
    /// Another view whose x range this one shares, both ways. A link that would close a circle is said and not made.
    Q_PROPERTY(PlotView *linkedTo READ linkedTo WRITE setLinkedTo NOTIFY linkedToChanged)
    /// What is declared inside the view: series are drawn in that order, the last on top, items become children of the
    /// view, other objects are kept. Read, it lists the series alone.
    Q_PROPERTY(QQmlListProperty<QObject> seriesList READ seriesList NOTIFY seriesListChanged)
    Q_CLASSINFO("DefaultProperty", "seriesList")

public:
    enum FollowMode : int { FollowNone, FollowEnd, FollowAll };
    Q_ENUM(FollowMode)

    explicit PlotView(QQuickItem *parent = nullptr);
    ~PlotView() override;

    PlotAxis *axisX() const { return m_axisX; }
    void setAxisX(PlotAxis *axis);
    PlotAxis *axisY() const { return m_axisY; }
    void setAxisY(PlotAxis *axis);
    PlotTheme *theme() const { return m_theme; }
    void setTheme(PlotTheme *theme);
    QString title() const { return m_title; }
    void setTitle(const QString &title);
    QRectF plotArea() const { return m_plotArea; }
    FollowMode followMode() const { return m_followMode; }
    void setFollowMode(FollowMode followMode);
    bool isFollowing() const;
    bool isInteractive() const { return m_interactive; }
    void setInteractive(bool interactive);
    bool legendVisible() const { return m_legendVisible; }
    void setLegendVisible(bool legendVisible);
    bool overviewVisible() const { return m_overviewVisible; }
    void setOverviewVisible(bool overviewVisible);
    bool readoutVisible() const { return m_readoutVisible; }
    void setReadoutVisible(bool readoutVisible);
    bool regionVisible() const;
    void setRegionVisible(bool regionVisible);
    qreal leftOutCount() const;
    PlotView *linkedTo() const;
    void setLinkedTo(PlotView *view);
    QQmlListProperty<QObject> seriesList();

    /// Shows half or double the part of x, around its middle; zoomIn() around the marked peak if that's in view.
    Q_INVOKABLE void zoomIn();
    Q_INVOKABLE void zoomOut();
    /// Shows all; ends of axes that were set go back there, and following goes on.
    Q_INVOKABLE void zoomReset();
    /// Shows a part of x, whichever end is named first. NaN changes nothing, and nor does 0 or less on a log
    /// scale.
    Q_INVOKABLE void zoomTo(double from, double to);
    /// Shows what lies as many item pixels further to the right.
    Q_INVOKABLE void panBy(double pixels);
    /// Shows what was shown before the last zoom or pan.
    Q_INVOKABLE void back();
    /// Marks the highest value in view of the first visible series (0), or the next peak to the left (-1) or right (1)
    /// of the mark. A peak rises from its surroundings by a fiftieth of the view's height. If there is none, nothing
    /// changes.
    Q_INVOKABLE void markPeak(int direction = 0);
    Q_INVOKABLE void unmarkPeak();
    /// The numbers of the visible regions and cursors and of the marked peak: for each a line with its name, a tab and
    /// the number, or as CSV, a line of names and one of numbers. Empty if none is shown.
    Q_INVOKABLE QString numbers(bool asTable = false) const;
    /// Both ways between places in the view, in item pixels, and values.
    Q_INVOKABLE QPointF mapToValue(const QPointF &position) const;
    Q_INVOKABLE QPointF mapToPosition(const QPointF &value) const;

    // Files, named by a path or a URL. Each call is answered once by saved(), from the event loop, be it written or
    // not. Nothing is written by halves: what was in the file stays until all is there. A view that's destroyed before
    // gives values up and finishes a picture, unless that waits for the reader of a pipe.

    /// Writes what is shown as a PNG with `scale` pixels for an item pixel, whatever the ratio of the window: the
    /// larger, the sharper. If the file's name ends with .pdf, it's a page with that picture, at 96 item pixels to an
    /// inch. With the background, legend, cursors, regions and overview; without the read-out, the focus and items that
    /// are declared in the view. At most 32767 pixels to a side. It's laid out for `size`, in item pixels; for the
    /// view's own one if that's empty or not finite.
    Q_INVOKABLE void saveImage(const QString &file, double scale = 1.0, const QSizeF &size = QSizeF());
    /// Writes the values of the visible series that stand in the shown part of x as CSV, "-" to standard output: a
    /// head, then x and the values, in the digits that give exactly the same value of the store's type back. Gaps are
    /// empty cells. Series with the same places share a column of x, others have one of their own. It's written in the
    /// background and takes no memory for the values; the store keeps those that leave it until then.
    Q_INVOKABLE void saveValues(const QString &file);

    /// Adds a series on top of the others. It stays its maker's; a series that is null or in the view already changes
    /// nothing. A series can be in several views.
    Q_INVOKABLE void addSeries(PlotSeries *series);
    Q_INVOKABLE void removeSeries(PlotSeries *series);

    // Called by the view's parts.

    /// Takes them out from the last one on: those before it keep their places, and thereby their colors.
    void removeAllSeries();
    const QVector<PlotSeries *> &series() const { return m_series; }
    /// The clipped item under all that is drawn of the series; it covers the plot area.
    QQuickItem *seriesLayer() const { return m_seriesLayer; }
    PlotFrame *frame() const { return m_frame; }
    /// What hands do to the ranges.
    PlotZoom *zoom() const { return m_zoom.get(); }
    PlotHands *hands() const { return m_hands; }
    PlotMarks *marks() const { return m_marks; }
    PlotReadout *readout() const { return m_readout.get(); }
    PlotEars *ears() const { return m_ears.get(); }
    LeftOut &leftOut() const { return *m_leftOut; }
    /// Null while none is shown.
    OverviewStrip *overview() const { return m_overview; }
    /// Whether the focus came by Tab, so that it's to be seen.
    bool focusIsByKeys() const { return m_focusIsByKeys; }
    /// How values stand in the plot area, in item pixels of the view.
    AxisMapping mappingX() const { return m_axisX->mapping(m_plotArea.left(), m_plotArea.right()); }
    AxisMapping mappingY() const { return m_axisY->mapping(m_plotArea.bottom(), m_plotArea.top()); }
    /// In item pixels: its own one, or that of a picture while it's painted.
    QSizeF layoutSize() const;
    /// The room around the plot area for labels, titles, the overview strip.
    void setPlotMargins(const QMarginsF &margins);
    QMarginsF plotMargins() const { return m_margins; }
    /// Device pixels of one item pixel, 1 outside of a window.
    double pixelRatio() const;

signals:
    void axisXChanged();
    void axisYChanged();
    /// Another theme, or the same with other colors.
    void themeChanged();
    void titleChanged();
    void plotAreaChanged();
    void followModeChanged();
    void followingChanged();
    void interactiveChanged();
    void legendVisibleChanged();
    void overviewVisibleChanged();
    void readoutVisibleChanged();
    void regionVisibleChanged();
    void leftOutCountChanged();
    void linkedToChanged();
    void seriesListChanged();
    /// What became of a file that saveImage() or saveValues() was called with: `error` is empty if it's written, else
    /// it says in words why not. While nothing is connected, an error is a warning.
    void saved(const QString &file, const QString &error);

    /// Something that isn't a series was declared inside the view, or is added to its list from C++.
    void elementAdded(QObject *element);
    /// After either axis shows another part, whoever moved it; once for each change.
    void rangesChanged();
    /// The window's pixel ratio is another one.
    void pixelRatioChanged();

protected:
    void geometryChanged(const QRectF &now, const QRectF &before) override;
    void componentComplete() override;
    void keyPressEvent(QKeyEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;
    void itemChange(ItemChange kind, const ItemChangeData &data) override;

private:
    static void appendElement(QQmlListProperty<QObject> *list, QObject *element);
    static int countSeries(QQmlListProperty<QObject> *list);
    static QObject *seriesAt(QQmlListProperty<QObject> *list, int index);
    static void clearSeries(QQmlListProperty<QObject> *list);

    bool exchangeAxis(PlotAxis *&stored, PlotAxis *axis, PlotAxis *own);
    void forgetAxis(QObject *axis);
    void forgetTheme();
    void takeTheme(PlotTheme *theme);
    void colorSeries();
    void forgetSeries(QObject *series);
    void layOut();
    void makeOverlay();
    void layOutOverview();
    void layOutFor(const QSizeF &size);
    void tellSaved(const QString &file, const QString &error);

    QString m_title;
    PlotAxis *const m_ownAxisX;
    PlotAxis *const m_ownAxisY;
    PlotTheme *const m_ownTheme;
    PlotAxis *m_axisX = nullptr;
    PlotAxis *m_axisY = nullptr;
    PlotTheme *m_theme = nullptr;
    FollowMode m_followMode = FollowNone;
    QVector<PlotSeries *> m_series;
    QVector<SeriesItem *> m_pictures; ///< one for each series, in the same order
    PlotFrame *m_frame;
    PlotMarks *m_marks;
    PlotHands *m_hands;
    OverviewStrip *m_overview = nullptr;
    bool m_interactive = true;
    bool m_legendVisible = true;
    bool m_overviewVisible = false;
    bool m_readoutVisible = true;
    bool m_focusIsByKeys = false;
    QQuickItem *m_seriesLayer;
    QQuickItem *m_overlay = nullptr;
    QRectF m_plotArea;
    QMarginsF m_margins;
    QSizeF m_layoutSize; ///< of the picture that is being painted; else empty
    std::unique_ptr<PlotZoom> m_zoom;
    std::unique_ptr<PlotReadout> m_readout;
    std::unique_ptr<LeftOut> m_leftOut;
    std::unique_ptr<PlotEars> m_ears;
    std::unique_ptr<PlotFiles> m_files;
};
