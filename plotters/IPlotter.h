// SPDX-License-Identifier: MIT
#pragma once

#include "common/Link.h"
#include "common/RenderHandle.h"
#include "plotters/RenderRecords.h"
#include "plotters/SInfoPoint.h"

#include <QColor>
#include <QHash>
#include <QMutex>
#include <QObject>
#include <QOpenGLBuffer>
#include <QRectF>
#include <QString>
#include <QVector>

class IChartArea;
class QOpenGLContext;
class QOpenGLFunctions;
class QOpenGLShaderProgram;

/// What draw() may know of a plotter: copied from the properties while the GUI thread is blocked, right after the
/// upload, so that a frame always shows what was uploaded for it. Read on the render thread without a lock.
struct SPlotterFrame
{
    const QOpenGLContext *context = nullptr; ///< where the buffers live; null before the first synchronisation
    bool visible = false;
    bool attached = false; ///< the plotter has a chart area of its own
    QColor color;
    QRectF plotterArea;
    QRectF modArea;
    double xOffset = 0.0;
    int dataSize = 0; ///< numbers in the series, not points
};

/// The base of everything that draws in a chart area: the common properties, the series and the render pipeline.
///
/// Subclasses declare attributes, fill them, choose render layers and set uniforms. Properties, data and queries belong
/// to the GUI thread. sync_buffers() runs on the render thread with the GUI thread blocked, draw() on the render thread
/// with the GUI thread running; draw() reads frame() and uploaded buffers, never a property.
class IPlotter : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QString name READ name WRITE setName NOTIFY nameChanged)
    Q_PROPERTY(QColor color READ color WRITE setColor NOTIFY colorChanged)
    Q_PROPERTY(bool visible READ visible WRITE setVisible NOTIFY visibleChanged)
    Q_PROPERTY(double zOrder READ zOrder WRITE setZOrder NOTIFY zOrderChanged)
    Q_PROPERTY(QVector<double> data READ data WRITE setData NOTIFY dataChanged)
    Q_PROPERTY(uchar vectorDim READ vectorDim WRITE setVectorDim NOTIFY vectorDimChanged)
    Q_PROPERTY(QRectF plotterArea READ plotterArea WRITE setPlotterArea NOTIFY plotterAreaChanged)
    Q_PROPERTY(QRectF modArea READ modArea NOTIFY modAreaChanged)
    Q_PROPERTY(uint drawLayer READ drawLayer WRITE setDrawLayer NOTIFY drawLayerChanged)
    Q_PROPERTY(bool showLegend READ showLegend WRITE setShowLegend NOTIFY showLegendChanged)
    Q_PROPERTY(IChartArea *chartArea READ chartArea WRITE setChartArea NOTIFY chartAreaChanged)
    Q_PROPERTY(double xOffset READ xOffset WRITE setXOffset NOTIFY xOffsetChanged)

public:
    explicit IPlotter(QObject *parent = nullptr);
    ~IPlotter() override;

    // properties: GUI thread

    const QString &name() const { return m_name; }
    void setName(const QString &name);
    const QColor &color() const { return m_color; }
    void setColor(const QColor &color);
    bool visible() const { return m_visible; }
    void setVisible(bool visible);
    double zOrder() const { return m_zOrder; }
    void setZOrder(double zOrder);
    uchar vectorDim() const { return m_vectorDim; }
    void setVectorDim(uchar vectorDim);
    const QRectF &plotterArea() const { return m_plotterArea; }
    /// plotterArea moved by xOffset: to the left, or to the right where the subclass says so.
    QRectF modArea() const;
    uint drawLayer() const { return m_drawLayer; }
    void setDrawLayer(uint drawLayer);
    bool showLegend() const { return m_showLegend; }
    void setShowLegend(bool showLegend);
    IChartArea *chartArea() const { return m_chartArea.get(); }
    /// Leaves the old area and joins the new one. Setting the same area again does nothing, even after removePlotter().
    void setChartArea(IChartArea *chartArea);
    double xOffset() const { return m_xOffset; }
    void setXOffset(double xOffset);

    // the virtual interface; its order is fixed

    /// Uploads what changed. Render thread, GUI thread blocked.
    virtual void sync_buffers();
    /// Draws against `viewArea`, the part of data space that the item shows. Render thread, current context.
    virtual void draw(const QRectF &viewArea);
    /// The largest value inside `area` (data coordinates), at least 0.0.
    virtual double max_in(const QRectF &area) const;
    virtual double query_in(const QRectF &area) const;
    /// The rectangle of the element under `point` (data coordinates); null if there is none.
    virtual const QRectF area_at(const QPointF &point) const;
    virtual void setPlotterArea(const QRectF &area);
    /// The element under `point` (data coordinates).
    virtual SInfoPoint mouse_hovering(const QPointF &point) const;
    virtual const QVector<double> &data() const;
    /// Ignores an unchanged series, and every series while there is no chart area.
    virtual void setData(const QVector<double> &data);
    virtual const QVector<SAttributeDefinition> declareArributeArray();
    virtual void report_no_attributes();
    virtual bool __update_vertex();
    virtual bool __update_index();
    virtual void render_hook();
    virtual void _update_uniforms(QOpenGLShaderProgram &program, const SRenderLayerDefinition &layer);
    virtual const SAttributePointer _fetch_attribute_data(const int &attribute) const;
    virtual void _fetch_render_layers(QVector<SRenderLayerDefinition> &layers, const QRectF &viewArea);

    // called by the chart area

    /// Where links to this plotter are tied. GUI thread.
    Anchor &anchor() { return m_anchor; }
    /// The render thread's way in.
    const std::shared_ptr<RenderHandle<IPlotter>> &renderHandle() const { return m_renderHandle; }
    /// sync_buffers() and the copy of the properties for the coming frames. Render thread, GUI thread blocked.
    void synchronize();
    /// draw(), if this plotter was synchronised in the current context, with lines so many times as wide as usual.
    /// Render thread.
    void drawFrame(const QRectF &viewArea, double lineScale = 1.0);

signals:
    void colorChanged();
    void visibleChanged();
    void zOrderChanged();
    void plotterAreaChanged();
    void initChanged();
    void chartAreaChanged();
    void drawLayerChanged();
    void showLegendChanged();
    void nameChanged();
    void dataChanged();
    void vectorDimChanged();
    void xOffsetChanged();
    void modAreaChanged();

protected:
    using Signal = void (IPlotter::*)();

    /// Takes the plotter out of everybody's reach, the render thread's too. First statement of every derived
    /// destructor.
    void withdraw();
    /// Asks the chart area, if any, for a frame.
    void requestUpdate();
    /// Emits `changed`, then asks for a frame unless a handler destroyed the plotter.
    void emitAndRequestUpdate(Signal changed);
    /// Stores the area as the setter does.
    void storePlotterArea(const QRectF &area);
    /// Whether setting `data` would change nothing.
    bool isSameData(const QVector<double> &data) const;
    /// What the frame being drawn may read. Render thread.
    const SPlotterFrame &frame() const { return m_frame; }
    /// One-time set-up of attributes, arrays and buffers. Render thread, GUI thread blocked.
    void initialize();
    /// Whether the last synchronisation took place in the current context.
    bool wasSynchronizedHere() const;
    /// Logs the OpenGL error, if there is one. Once per draw(); the same error in draw after draw is logged once.
    void reportGLError(QOpenGLFunctions &gl);

    QString m_name;
    QColor m_color{7, 203, 242, 255};
    bool m_visible = true;
    double m_zOrder = 0.0;
    double m_xOffset = 0.0;
    QVector<double> m_data;
    uchar m_vectorDim = 1;
    QRectF m_plotterArea;
    uint m_drawLayer = 1;
    bool m_showLegend = true;
    Link<IChartArea> m_chartArea;
    /// Held while the vertex and index arrays are rebuilt (GUI thread) and uploaded (render thread). The module's
    /// threads never wait for it, because the GUI thread is blocked during the upload.
    QMutex m_dataMutex;
    QVector<quint32> m_spareVectors[2]; ///< for subclasses; the base never reads them
    bool m_initialized = false;
    uint m_dirtyFlags = 0;
    QString m_programName;
    bool m_offsetSubtracts = true;
    QMutex m_spareMutexes[2]; ///< for subclasses; the base never locks them
    QVector<SAttributeDefinition> m_attributes;
    QVector<QOpenGLBuffer> m_buffers;               ///< one per attribute
    QVector<SRenderLayerDefinition> m_renderLayers; ///< render thread only
    QHash<QString, QOpenGLBuffer> m_namedBuffers;   ///< for subclasses; the base only destroys it

private:
    void replaceData(const QVector<double> &data);
    void createBuffers();
    void uploadAttribute(int number);
    void drawLayerDefinition(const SRenderLayerDefinition &layer, QOpenGLFunctions &gl);
    void drawBuffers(const SRenderLayerDefinition &layer, QOpenGLShaderProgram &program, QOpenGLFunctions &gl);
    bool hasBuffer(int number) const;
    /// Attributes that were not declared are left out.
    void bindAttributes(QOpenGLShaderProgram &program, const QVector<int> &numbers);
    void releaseAttributes(QOpenGLShaderProgram &program, const QVector<int> &numbers);

    GLenum m_reportedGLError = 0;
    double m_lineScale = 1.0; ///< render thread: of the lines of the frame that is being drawn
    SPlotterFrame m_frame;    ///< written by synchronize(), read by draw()
    std::shared_ptr<RenderHandle<IPlotter>> m_renderHandle;
    Anchor m_anchor;
};
