// SPDX-License-Identifier: MIT
#pragma once

#include "views/items/PlaceOrder.h"
#include "views/items/RowScale.h"
#include "views/items/SeriesShape.h"
#include "views/items/SeriesSource.h"

#include <QColor>
#include <QObject>
#include <QString>
#include <QVariantMap>

/// What the bars, the line and the area of a plot have in common: where their values come from, how they are called and
/// where they stand. Value i stands at `start + i * step + xOffset` and is drawn as `yFactor` times what it is; values
/// that aren't finite are gaps. Abstract.
///
/// A series isn't an item: the view that it's added to draws it (PlotView), in the order in which the view got its
/// series. GUI thread. Bad input is said and changes nothing.
class PlotSeries : public QObject
{
    Q_OBJECT
    /// Where the values are. It stays its maker's; while there is none, `values` are drawn.
    Q_PROPERTY(SeriesStore *store READ store WRITE setStore NOTIFY storeChanged)
    /// Numbers as a list, a QVector<double> or an ArrayBuffer of doubles. They aren't copied.
    Q_PROPERTY(QVariant values READ values WRITE setValues NOTIFY valuesChanged)
    /// Where each value stands, ascending; bars may have one more, where the last one ends. What isn't a number or goes
    /// back is a gap. Without it, and without `xValues`, values are evenly spaced.
    Q_PROPERTY(SeriesStore *xStore READ xStore WRITE setXStore NOTIFY xStoreChanged)
    Q_PROPERTY(QVariant xValues READ xValues WRITE setXValues NOTIFY xValuesChanged)
    /// How many values there are, and the lowest and the highest of them times `yFactor`; NaN if there is none.
    Q_PROPERTY(qreal count READ count NOTIFY countChanged)
    Q_PROPERTY(qreal minimum READ minimum NOTIFY countChanged)
    Q_PROPERTY(qreal maximum READ maximum NOTIFY countChanged)
    /// How many places aren't numbers or go back.
    Q_PROPERTY(qreal misplacedCount READ misplacedCount NOTIFY countChanged)
    /// Empty by default: the series isn't in the legend then.
    Q_PROPERTY(QString name READ name WRITE setName NOTIFY nameChanged)
    /// The color it's drawn with. Until one is set it's the view's choice; undefined goes back to that.
    Q_PROPERTY(QColor color READ color WRITE setColor RESET resetColor NOTIFY colorChanged)
    Q_PROPERTY(bool visible READ isVisible WRITE setVisible NOTIFY visibleChanged)
    /// From 0 to 1; what lies outside is brought inside, and NaN changes nothing.
    Q_PROPERTY(double opacity READ opacity WRITE setOpacity NOTIFY opacityChanged)
    Q_PROPERTY(double start READ start WRITE setStart NOTIFY startChanged)
    /// Above 0.
    Q_PROPERTY(double step READ step WRITE setStep NOTIFY stepChanged)
    Q_PROPERTY(double xOffset READ xOffset WRITE setXOffset NOTIFY xOffsetChanged)
    /// Above 0. Read-outs, cursors, regions, peaks and saved values have the products, too.
    Q_PROPERTY(double yFactor READ yFactor WRITE setYFactor NOTIFY yFactorChanged)
    /// Whether the read-out tells its values.
    Q_PROPERTY(bool hoverable READ isHoverable WRITE setHoverable NOTIFY hoverableChanged)

public:
    ~PlotSeries() override;

    SeriesStore *store() const { return m_values.given(); }
    void setStore(SeriesStore *store);
    QVariant values() const { return m_values.values(); }
    void setValues(const QVariant &values);
    SeriesStore *xStore() const { return m_places.given(); }
    void setXStore(SeriesStore *store);
    QVariant xValues() const { return m_places.values(); }
    void setXValues(const QVariant &values);
    qreal count() const;
    qreal minimum() const;
    qreal maximum() const;
    qreal misplacedCount() const { return qreal(m_order.misplacedCount()); }
    QString name() const { return m_name; }
    void setName(const QString &name);
    QColor color() const { return m_color.isValid() ? m_color : m_viewColor; }
    void setColor(const QColor &color);
    void resetColor() { setColor(QColor()); }
    bool isVisible() const { return m_visible; }
    void setVisible(bool visible);
    double opacity() const { return m_opacity; }
    void setOpacity(double opacity);
    double start() const { return m_start; }
    void setStart(double start);
    double step() const { return m_step; }
    void setStep(double step);
    double xOffset() const { return m_xOffset; }
    void setXOffset(double xOffset);
    double yFactor() const { return m_yFactor; }
    void setYFactor(double yFactor);
    bool isHoverable() const { return m_hoverable; }
    void setHoverable(bool hoverable);

    /// The value at x: of the bar that x is in, or else the one that stands nearest. NaN if there is none.
    Q_INVOKABLE double valueAt(double x) const;
    /// The lowest and the highest value that stand from `from` to `to`, with their places: minimum, maximum, minimumAt,
    /// maximumAt, and count, the number of values there. Without a value only count, which is 0.
    Q_INVOKABLE QVariantMap extremeIn(double from, double to) const;

    // C++

    /// The values of this frame times `yFactor`.
    SeriesSnapshot scaledValues() const { return m_values.snapshot().scaled(m_yFactor); }
    /// The stores in use, be they given or made of `values`; null without numbers.
    const SeriesStore *valueStore() const { return m_values.store(); }
    const SeriesStore *placeStore() const { return m_places.store(); }
    /// Whether a value reaches from its place to the next one.
    virtual bool isBars() const { return false; }
    /// Where the values of this frame stand on an axis.
    SeriesPlaces places(bool log) const;

    // Called by the view that draws it. While the scene graph synchronizes, from the render thread, too.

    /// Writes what is to be drawn.
    void draw(const SSeriesFrame &frame, SSeriesShape &shape) const;

    /// The color that the view has for it while none is set.
    void setViewColor(const QColor &color);

signals:
    void storeChanged();
    void valuesChanged();
    void xStoreChanged();
    void xValuesChanged();
    void countChanged();
    void nameChanged();
    void colorChanged();
    void visibleChanged();
    void opacityChanged();
    void startChanged();
    void stepChanged();
    void xOffsetChanged();
    void yFactorChanged();
    void hoverableChanged();

    /// The picture is another one: the view asks for a frame if the series can be seen.
    void redrawNeeded();
    /// Values came or left; countChanged() comes with it. Whoever shows only a part asks whether it's in it.
    void dataChanged();
    /// It's being destroyed, but can still be asked for everything: several views may have it, and what one of them
    /// tells lets others look at it.
    void aboutToGo(QObject *self);

protected:
    explicit PlotSeries(QObject *parent = nullptr);

    /// Fills the shape: `grid` and `rows` are not empty, and there are values.
    virtual void drawValues(const SeriesSnapshot &values, const SeriesPlaces &places, const ColumnGrid &grid,
                            const RowScale &rows, double ratio, SSeriesShape &shape) const = 0;
    /// `baseline`, or on a log scale half the smallest value above 0; NaN if there is none.
    static double shownBaseline(double baseline, const SeriesSnapshot &values, const RowScale &rows);

    /// Says it if a property was to be set to what isn't finite.
    bool isFinite(double value, const char *name) const;
    /// The same of what isn't finite and above 0.
    bool isAbove0(double value, const char *name) const;

private:
    void lookAtPlaces();
    void tellOfData();

    SeriesSource m_values;
    SeriesSource m_places;
    PlaceOrder m_order;
    bool m_isLooking = false;
    bool m_hasSaidMisplaced = false;
    QString m_name;
    QColor m_color;
    QColor m_viewColor = QColor(0x1f, 0x77, 0xb4);
    bool m_visible = true;
    bool m_hoverable = true;
    double m_opacity = 1.0;
    double m_start = 0.0;
    double m_step = 1.0;
    double m_xOffset = 0.0;
    double m_yFactor = 1.0;
};
