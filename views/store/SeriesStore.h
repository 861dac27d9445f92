// SPDX-License-Identifier: MIT
#pragma once

#include "views/store/SeriesData.h"

#include <QObject>
#include <QString>
#include <QVariant>

#include <limits>
#include <memory>

class StoreState;

/// Appends to a store from a thread of its own: a value that may be copied, and that may outlive the store, whereupon
/// it refuses everything. One that is default-constructed refuses everything, too.
class VORLIX_EXPORT SeriesWriter
{
public:
    SeriesWriter() = default;

    /// As SeriesStore::append().
    template <class T>
    bool append(const T *values, qint64 count)
    {
        return appendValues(sampleTypeOf<T>(), values, count);
    }
    bool append(double value) { return append(&value, 1); }
    bool appendValues(SampleType type, const void *values, qint64 count);

private:
    friend class SeriesStore;
    explicit SeriesWriter(std::shared_ptr<StoreState> state);

    std::shared_ptr<StoreState> m_state;
};

/// Keeps a series of numbers that may grow without end, for any number of plots. What a frame costs doesn't depend on
/// how many there are.
///
/// The object lives in one thread, as every QObject does. Functions under "any thread" may be called from others while
/// it lives; a thread that may outlive it appends by a writer().
class VORLIX_EXPORT SeriesStore : public QObject
{
    Q_OBJECT
    /// How many values are kept.
    Q_PROPERTY(qreal count READ count NOTIFY countChanged)
    /// What a value is stored as. Changed only while the store is empty.
    Q_PROPERTY(ValueType valueType READ valueType WRITE setValueType NOTIFY valueTypeChanged)
    /// The lowest and the highest value; NaN if there is none.
    Q_PROPERTY(qreal minimum READ minimum NOTIFY countChanged)
    Q_PROPERTY(qreal maximum READ maximum NOTIFY countChanged)
    /// How many values are NaN or infinite.
    Q_PROPERTY(qreal gapCount READ gapCount NOTIFY countChanged)
    /// False while a reader still fills this store, or while a mapped file is still being looked through.
    Q_PROPERTY(bool complete READ isComplete NOTIFY completeChanged)
    /// 0 keeps all values. Otherwise the oldest leave when there are more, in whole chunks of 262144; indices go on.
    Q_PROPERTY(qreal maximumCount READ maximumCount WRITE setMaximumCount NOTIFY maximumCountChanged)
    /// The time of x = 0 for axes that show times, in seconds since 1970; NaN if values have none.
    Q_PROPERTY(qreal startTime READ startTime WRITE setStartTime NOTIFY startTimeChanged)

public:
    enum ValueType : int { // of a fixed type, because a script may set any number
        Float64 = int(SampleType::Float64),
        Float32 = int(SampleType::Float32),
        Int32 = int(SampleType::Int32),
        UInt32 = int(SampleType::UInt32),
        Int16 = int(SampleType::Int16),
        UInt16 = int(SampleType::UInt16),
        Int8 = int(SampleType::Int8),
        UInt8 = int(SampleType::UInt8)
    };
    Q_ENUM(ValueType)

    explicit SeriesStore(QObject *parent = nullptr);
    ~SeriesStore() override;

    // QML

    /// Appends a number, or a list of numbers. Refuses anything else with an error, and also a list with an entry that
    /// isn't a number or doesn't fit into the value type. Fractions are rounded for types of whole numbers.
    Q_INVOKABLE void append(const QVariant &values);
    /// Appends the values in an ArrayBuffer: as many of `type`, in the byte order of this machine, as it has. That of a
    /// typed array is its `buffer`.
    Q_INVOKABLE void appendBuffer(const QVariant &buffer, ValueType type = Float64);
    /// Removes all values. The first one after it has index 0.
    Q_INVOKABLE void clear();

    qreal count() const;
    ValueType valueType() const;
    void setValueType(ValueType type);
    qreal minimum() const;
    qreal maximum() const;
    qreal gapCount() const;
    bool isComplete() const;
    qreal maximumCount() const;
    void setMaximumCount(qreal count);
    qreal startTime() const { return m_startTime; }
    void setStartTime(qreal seconds);

    // C++, any thread

    /// Appends values of one of the types of SampleType. False, and nothing is appended, if one of them doesn't fit
    /// into the value type, or if another thread fills the store; false after a part if memory ran out. Calls from
    /// several threads take turns.
    template <class T>
    bool append(const T *values, qint64 count)
    {
        return appendValues(sampleTypeOf<T>(), values, count);
    }
    bool append(double value) { return append(&value, 1); }
    bool appendValues(SampleType type, const void *values, qint64 count);
    /// For a thread that may outlive this.
    SeriesWriter writer() const;
    /// What is in the store now.
    SeriesSnapshot snapshot() const;
    /// The series itself, to fill it without a copy: see SeriesData::room(). Call announce() afterwards.
    std::shared_ptr<SeriesData> data() const;
    /// Has changed() emitted soon; cheap, so call it after every portion.
    void announce();

    // C++, the object's own thread

    /// What was in the store when changed() was emitted last: all views of one frame get the same.
    SeriesSnapshot frameSnapshot() const { return m_frame; }
    /// Puts another series in place. Cells of external memory are built now if they are few, else in the background.
    void setData(const std::shared_ptr<SeriesData> &data);
    void setComplete(bool complete);
    /// Whether something else fills data() itself, such as another thread. Until it has ended, append(),
    /// appendBuffer(), clear(), another value type and writers are refused, and what fills it lets older values go.
    /// `words` tell a script who that is and what to do instead.
    void setFilledElsewhere(bool isFilledElsewhere, const QString &words = {});
    /// How many times all values were replaced.
    int revision() const { return m_revision; }

    /// What happens when a call from QML is refused: a warning, unless another function is set. The QML module sets one
    /// that throws an exception.
    using Refusal = void (*)(const QObject *store, const QString &words);
    static void setRefusal(Refusal refusal);

signals:
    /// Values came or left, or cells were built. Emitted at most once between two events of this thread, not for each
    /// append.
    void changed();
    void countChanged(); ///< of minimum, maximum and gapCount, too
    void valueTypeChanged();
    void completeChanged();
    void maximumCountChanged();
    void startTimeChanged();

private:
    friend class StoreState;
    void showChanges();
    void refuse(const QString &words) const;
    QString whyNotTaken() const;

    const std::shared_ptr<StoreState> m_state;
    QString m_whyNotTaken; ///< while it's filled elsewhere
    SeriesSnapshot m_frame;
    qreal m_startTime = std::numeric_limits<qreal>::quiet_NaN();
    int m_revision = 0;
    bool m_isFilled = true; ///< no reader is still filling it
    bool m_wasComplete = true;
};
