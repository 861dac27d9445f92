// SPDX-License-Identifier: MIT
#pragma once

#include "views/items/FrameLook.h"

#include <QPointer>
#include <QQuickItem>
#include <QVariantList>
#include <QVector>

class PlotCursor;
class PlotRegion;
class PlotSeries;
class PlotView;

/// Where cursors and regions stand, in item pixels of the view.
struct SMarksLook
{
    QVector<QRectF> lines;
    QVector<QRectF> fills;
    QVector<SLabel> letters; ///< of the cursors
    QColor color;            ///< of lines and letters
    QColor fillColor;
};

/// The cursors and regions of a view: those declared in it, and its own, which the keys C, M and P bring. It draws them
/// over the series, keeps what they tell up to date, and moves the one that a hand took. A child of the view. GUI
/// thread.
class PlotMarks : public QQuickItem
{
    Q_OBJECT
    /// What they tell, for a panel: a list of {title, rows}, whose rows are {name, color, text}.
    Q_PROPERTY(QVariantList panels READ panels NOTIFY panelsChanged)

public:
    explicit PlotMarks(PlotView &view);

    QVariantList panels() const { return m_panels; }
    const QVector<PlotCursor *> &cursors() const { return m_cursors; }
    /// Shows one of its own cursors, both, or none.
    void cycleCursors();
    /// Moves the cursor that was moved last by a pixel, or by a value where values are further apart. Brings one if
    /// there is none.
    void walk(int direction);
    /// What the cursor that was moved last tells, in one line; empty if there is none.
    QString spoken() const;

    /// What is to be drawn of them as things are now.
    SMarksLook lookOn(const SPlotGround &ground) const;

    // Measuring: of the first visible series.

    bool isRegionShown() const;
    /// Shows a region of its own: around the marked peak, or else the middle third of what is in view.
    void showRegion(bool shown);
    /// Marks the highest peak in view (0), or the next one to the left (-1) or the right (1) of the mark.
    void markPeak(int direction);
    void unmarkPeak();
    /// Where the marked peak stands; NaN if none is marked, or if it's out of view.
    double peakInView() const;
    /// The numbers of regions, cursors and the marked peak, each a line with its name; or as CSV: a line of names and
    /// one of numbers. Empty if nothing is shown.
    QString numbers(bool asTable) const;

    // Hands

    /// Takes what is at a place of the view: a cursor, an edge of a region, or a region. False if nothing is.
    bool take(const QPointF &position);
    void drag(const QPointF &position);
    void drop() { m_taken = {}; }

signals:
    void panelsChanged();
    void regionShownChanged();

protected:
    void updatePolish() override;
    QSGNode *updatePaintNode(QSGNode *node, UpdatePaintNodeData *) override;

private:
    /// What a hand holds, and how far from its place.
    struct STaken
    {
        QPointer<PlotCursor> cursor;
        QPointer<PlotRegion> region;
        bool holdsFrom = false;
        bool holdsTo = false;
        double fromGrip = 0.0; ///< pixels from the hand to the ends
        double toGrip = 0.0;
    };

    void add(QObject *element);
    void addCursor(PlotCursor &cursor);
    void addRegion(PlotRegion &region);
    void forget(QObject *mark);
    void watchSeries();
    void watchAxes();
    void look();
    void tell();
    PlotCursor *walker();
    QVector<PlotCursor *> shownCursors() const;
    PlotSeries *firstSeries() const;
    PlotRegion &ownRegion();
    void placeRegion(PlotRegion &region) const;
    QVariantList panelsNow() const;
    QVariantMap cursorPanel(const QVector<PlotCursor *> &shown) const;
    QVariantMap regionPanel(const PlotRegion &region) const;

    PlotView &m_view;
    QVector<PlotCursor *> m_cursors;
    QVector<PlotRegion *> m_regions;
    PlotCursor *m_own[2];
    PlotCursor *m_peak = nullptr;      ///< a child; made when it's needed
    PlotRegion *m_ownRegion = nullptr; ///< likewise
    QPointer<PlotCursor> m_walker;
    STaken m_taken;
    QVariantList m_panels;
    LabelPool m_labels;
    SMarksLook m_look;
    bool m_hasMarks = false; ///< when it looked last
};
