// SPDX-License-Identifier: MIT
#pragma once

#include <QColor>
#include <QPointer>
#include <QQuickItem>
#include <QVector>

class PlotView;

/// The whole of a view's series in small, and the part that the view shows: to be moved by a drag, stretched at its
/// edges, put somewhere by a click, zoomed by the wheel; with the focus, it takes the keys that the view takes.
/// Declared by itself, or shown in a view by `overviewVisible`. GUI thread.
class OverviewStrip : public QQuickItem
{
    Q_OBJECT
    /// The view whose series and part it shows.
    Q_PROPERTY(PlotView *view READ view WRITE setView NOTIFY viewChanged)

public:
    explicit OverviewStrip(QQuickItem *parent = nullptr);
    ~OverviewStrip() override;

    PlotView *view() const { return m_view; }
    void setView(PlotView *view);
    /// Where the part that's shown lies, in item pixels; never too narrow to take hold of.
    QRectF shownPart() const;
    /// What lies left and right of it, and the color that it's dimmed with.
    QVector<QRectF> dimmed() const;
    QColor dimColor() const;
    /// Shows all, without a frame.
    const PlotView &smallView() const { return *m_small; }

signals:
    void viewChanged();

protected:
    bool event(QEvent *event) override;
    void geometryChanged(const QRectF &now, const QRectF &before) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void mouseUngrabEvent() override;
    void wheelEvent(QWheelEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    enum class Hold { None, From, To, All };

    void takeSeries();
    void watch();
    void letGo();
    void drag(double x);

    // OverviewStrip_ears.cpp: what a screen reader gets

    void makeEars();
    void tellValue();
    void takeValue();

    QPointer<PlotView> m_view;
    PlotView *m_small; ///< shows all, and takes no events
    QQuickItem *m_veil;
    QObject *m_ears = nullptr; ///< for screen readers; none where there's no QML
    Hold m_hold = Hold::None;
    double m_grip = 0.0; ///< pixels from the hand to the held edge, or to the left one
    int m_gesture = 0;
    bool m_isTelling = false; ///< the value
};
