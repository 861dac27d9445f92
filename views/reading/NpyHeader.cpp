// SPDX-License-Identifier: MIT
#include "views/reading/SampleLayout.h"

#include <QMap>
#include <QVector>

#include <algorithm>

namespace {

constexpr int magicSize = 6;
constexpr int mostChannels = 1000;
constexpr qint64 longestHeader = 1 << 20; // bytes; those of NumPy have 100

/// Takes the header's dictionary apart: {'descr': '<f8', 'fortran_order': False, 'shape': (3, 2), }
class Dictionary
{
public:
    explicit Dictionary(const QByteArray &text) : m_text(text) { m_isWhole = take('{') && takeEntries(); }

    bool isWhole() const { return m_isWhole; }
    QByteArray value(const QByteArray &key) const { return m_values.value(key); }

private:
    bool takeEntries()
    {
        while (!take('}')) {
            const QByteArray key = takeValue();
            if (key.isEmpty() || !take(':'))
                return false;
            const QByteArray value = takeValue();
            if (value.isEmpty())
                return false;
            m_values.insert(key.mid(1, key.size() - 2), value);
            take(',');
        }
        return true;
    }

    void skipBlanks()
    {
        while (m_at < m_text.size() && (m_text.at(m_at) == ' ' || m_text.at(m_at) == '\n'))
            ++m_at;
    }

    bool take(char c)
    {
        skipBlanks();
        if (m_at == m_text.size() || m_text.at(m_at) != c)
            return false;
        ++m_at;
        return true;
    }

    /// A word, a quoted text with its quotes, or everything between brackets.
    QByteArray takeValue()
    {
        skipBlanks();
        const int begin = m_at;
        int depth = 0;
        char quote = '\0';
        for (; m_at < m_text.size(); ++m_at) {
            const char c = m_text.at(m_at);
            if (quote) {
                quote = c == quote ? '\0' : quote;
                continue;
            }
            if (depth == 0 && (c == ',' || c == ':' || c == '}'))
                break;
            quote = c == '\'' || c == '"' ? c : '\0';
            depth += int(c == '(' || c == '[') - int(c == ')' || c == ']');
        }
        return m_text.mid(begin, m_at - begin).trimmed();
    }

    QByteArray m_text;
    int m_at = 0;
    QMap<QByteArray, QByteArray> m_values;
    bool m_isWhole = false;
};

SHeader refused(const QString &words)
{
    return {{}, 0, words};
}

/// The lengths in "(3, 2)"; none if it's something else.
QVector<qint64> lengthsIn(const QByteArray &shape, bool &isShape)
{
    QVector<qint64> lengths;
    isShape = shape.size() >= 2 && shape.startsWith('(') && shape.endsWith(')');
    for (const QByteArray &part : shape.mid(1, shape.size() - 2).split(',')) {
        const QByteArray digits = part.trimmed();
        if (digits.isEmpty())
            continue;
        bool isNumber = false;
        lengths << digits.toLongLong(&isNumber);
        isShape = isShape && isNumber && lengths.last() >= 0;
    }
    return lengths;
}

/// Reads a type like '<f8'. Returns why it can't be taken, if so.
QString readType(const QByteArray &type, SSampleLayout &layout)
{
    // Not static, since this thread may outlive what is.
    const QMap<QByteArray, FileSample> types = {
        {"f8", FileSample::Float64}, {"f4", FileSample::Float32}, {"f2", FileSample::Float16},
        {"i8", FileSample::Int64},   {"i4", FileSample::Int32},   {"i2", FileSample::Int16},
        {"i1", FileSample::Int8},    {"u8", FileSample::UInt64},  {"u4", FileSample::UInt32},
        {"u2", FileSample::UInt16},  {"u1", FileSample::UInt8},   {"b1", FileSample::UInt8}};
    if (type.startsWith('['))
        return QStringLiteral("holds records of several fields; save one of them: numpy.save(file, array['field'])");
    const QByteArray name = type.mid(1, type.size() - 2); // without quotes
    const char order = name.isEmpty() ? '\0' : name.at(0);
    const auto found = types.constFind(name.mid(1));
    if (order && QByteArray("<>=|").contains(order) && found != types.constEnd()) {
        layout.type = *found;
        layout.bigEndian = order == '>' || (order == '=' && Q_BYTE_ORDER == Q_BIG_ENDIAN);
        if (*found == FileSample::Int64 || *found == FileSample::UInt64)
            layout.remarks << QStringLiteral("kept as doubles: whole numbers beyond 2^53 are rounded");
        return {};
    }
    if (name.contains('O'))
        return QStringLiteral("holds Python objects, not numbers; convert it first: array.astype(float)");
    if (name.contains('c'))
        return QStringLiteral("holds complex numbers; save a part of them: array.real, array.imag or abs(array)");
    return QStringLiteral(
               "holds values of type %1, which aren't numbers that can be read; convert it first: "
               "array.astype(float)")
        .arg(QString::fromLatin1(type));
}

/// Sets channels and frames. Returns why the shape can't be taken, if so.
QString readShape(const QVector<qint64> &lengths, bool isFortran, SSampleLayout &layout)
{
    if (lengths.size() > 2)
        return QStringLiteral("has %1 dimensions; one or two can be read").arg(lengths.size());
    const qint64 rows = lengths.isEmpty() ? 1 : lengths.first();
    const qint64 columns = lengths.size() == 2 ? lengths.last() : 1;
    if (rows == 1 && columns > 1) {
        layout.frames = columns;
        layout.remarks << QStringLiteral("its only row is read as one series");
        return {};
    }
    if (isFortran && rows > 1 && columns > 1)
        return QStringLiteral(
            "has its columns one after the other (Fortran order), which can't be read yet; save "
            "numpy.ascontiguousarray(array)");
    if (columns > mostChannels)
        return QStringLiteral("has %1 columns; at most %2 can be read. If its rows are the series, save array.T.copy()")
            .arg(columns)
            .arg(mostChannels);
    layout.channels = int(std::max(columns, qint64(1)));
    layout.frames = columns == 0 ? 0 : rows;
    return {};
}

SHeader headerFrom(const QByteArray &text, qint64 size)
{
    const Dictionary dictionary(text);
    bool isShape = false;
    const QVector<qint64> lengths = lengthsIn(dictionary.value("shape"), isShape);
    const QByteArray order = dictionary.value("fortran_order");
    if (!dictionary.isWhole() || !isShape || (order != "True" && order != "False"))
        return refused(QStringLiteral("has a damaged header: it doesn't say what the array is"));
    SSampleLayout layout;
    layout.format = QStringLiteral("NumPy array");
    layout.headerSize = size;
    QString obstacle = readType(dictionary.value("descr"), layout);
    if (obstacle.isEmpty())
        obstacle = readShape(lengths, order == "True", layout);
    return obstacle.isEmpty() ? SHeader{layout, 0, {}} : refused(obstacle);
}

} // namespace

SHeader npyHeader(const QByteArray &front)
{
    constexpr int longestPrefix = 12;
    if (front.size() < longestPrefix)
        return {{}, longestPrefix, QStringLiteral("ends within its header")};
    if (!front.startsWith("\x93NUMPY"))
        return refused(QStringLiteral("is not a NumPy array: it doesn't begin like one"));
    const int version = quint8(front.at(magicSize));
    if (version < 1 || version > 3)
        return refused(QStringLiteral("is a NumPy array of version %1; versions 1 to 3 can be read").arg(version));
    const auto byte = [&](int i) { return qint64(quint8(front.at(i))); };
    const int prefix = version == 1 ? 10 : 12;
    const qint64 length = byte(8) + (byte(9) << 8) + (version == 1 ? 0 : (byte(10) << 16) + (byte(11) << 24));
    if (length > longestHeader)
        return refused(QStringLiteral("has a damaged header: it would be %1 bytes long").arg(length));
    if (front.size() < prefix + length)
        return {{}, prefix + length, QStringLiteral("ends within its header")};
    return headerFrom(front.mid(prefix, int(length)), prefix + length);
}
