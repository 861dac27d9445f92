// SPDX-License-Identifier: MIT

// Any bytes as a text of numbers: what is guessed must fit the text, and rows may not depend on where it is cut.

#include "fuzz/Bytes.h"
#include "fuzz/Check.h"
#include "views/reading/TextDecoder.h"
#include "views/reading/TextRows.h"

#include <cstdlib>

namespace {

STextHints hintsFrom(Bytes &bytes)
{
    static constexpr char separators[] = {0, 0, 0, ';', ',', '\t', ' ', '|'};
    STextHints hints;
    hints.separator = separators[bytes.below(8)];
    const int sign = bytes.below(6);
    if (sign < 2)
        hints.decimalSign = sign == 0 ? DecimalSign::Point : DecimalSign::Comma;
    hints.skipLines = bytes.below(4) == 0 ? bytes.below(5) : 0;
    return hints;
}

/// The text of a file, decoded at once and byte by byte.
QByteArray decoded(const QByteArray &raw)
{
    TextDecoder whole(raw.left(64));
    TextDecoder pieces(raw.left(64));
    QByteArray text;
    QByteArray other;
    const int mark = whole.markSize();
    whole.decode(raw.constData() + mark, raw.size() - mark, text);
    for (int i = mark; i < raw.size(); ++i)
        pieces.decode(raw.constData() + i, 1, other);
    if (text != other)
        fail("decoder", "depends on where the text is cut");
    return text;
}

struct SConverted
{
    QVector<double> values; ///< column after column of each row
    qint64 badLines = 0;
    qint64 openLines = 0; ///< at the end
    bool ended = false;
};

void append(SConverted &to, const TextRows &rows, const STextLayout &layout)
{
    int columns = 0;
    for (const STextColumn &column : layout.columns)
        columns += int(column.isRead());
    if (rows.rows > 0) {
        to.values += QVector<double>(int(to.openLines) * columns, std::nan(""));
        to.badLines += to.openLines;
        to.openLines = 0;
    }
    for (qint64 row = 0; row < rows.rows; ++row) {
        for (int column = 0; column < int(layout.columns.size()); ++column) {
            if (rows.column(column))
                to.values << rows.column(column)[row];
        }
    }
    to.badLines += rows.badLines;
    to.openLines += rows.openLines;
    to.ended = rows.ended;
}

SConverted convert(const QByteArray &text, const STextLayout &layout, int pieceSize)
{
    SConverted converted;
    TextRows rows;
    for (int begin = 0; begin < text.size() && !converted.ended;) {
        const int end = text.indexOf('\n', std::min(begin + pieceSize, int(text.size()) - 1)) + 1;
        const QByteArray piece = text.mid(begin, end - begin) + QByteArray(textMargin, '7');
        convertText(piece.constData(), piece.constData() + (end - begin), layout, rows);
        const bool skips = layout.skipsBlankLines;
        if (rows.lines != text.mid(begin, end - begin).count('\n')
            || (!skips && rows.rows + rows.openLines + rows.comments != rows.lines))
            fail("rows", "lines are lost");
        append(converted, rows, layout);
        begin = end;
    }
    return converted;
}

/// A comment that begins like a number forbids the fast way.
constexpr char carefulPrefix[] = "-\1\2\3\4\5\6\7";

/// The same with a closer look at every line.
SConverted convertWithCare(const QByteArray &text, STextLayout layout)
{
    layout.commentPrefixes.append(carefulPrefix);
    return convert(text, layout, int(text.size()));
}

/// Whether a line may be cut in two ways. Between blanks, the closer look takes a date and the time behind it for one
/// field, and the fast way skips them as two texts.
bool isAmbiguous(const STextLayout &layout)
{
    const auto isRead = [](const STextColumn &column) { return column.isRead(); };
    return layout.separator == blankSeparator && !std::all_of(layout.columns.begin(), layout.columns.end(), isRead);
}

/// A text of one column of plain numbers is what strtod() says.
void checkPlainLines(const QByteArray &text, const STextLayout &layout, const SConverted &converted)
{
    if (layout.columns.size() != 1 || layout.decimalSign == DecimalSign::Comma || layout.columns[0].isTime())
        return;
    QVector<double> expected;
    for (const QByteArray &line : text.left(text.size() - 1).split('\n')) {
        const bool isPlain = !line.isEmpty() && line.size() < 300
            && std::all_of(line.begin(), line.end(), [](char c) { return c >= '0' && c <= '9'; });
        if (!isPlain)
            return; // a blank line is a gap, or left out
        expected << std::strtod(line.constData(), nullptr);
        if (std::isinf(expected.last()))
            return;
    }
    compare("plain lines", converted.values, expected);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    constexpr size_t decisions = 5;
    Bytes bytes(data, std::min(size, decisions));
    const STextHints hints = hintsFrom(bytes);
    const int pieceSize = 1 + bytes.below(200);
    const size_t used = std::min(size, decisions);
    QByteArray text = decoded(QByteArray(reinterpret_cast<const char *>(data) + used, int(size - used)));
    if (!text.endsWith('\n'))
        text += '\n';
    const SDetection detection = detectLayout(text.constData(), text.constData() + text.size(), hints);
    if (!detection.layout) {
        if (detection.obstacle.isEmpty())
            fail("detection", "neither a layout nor words");
        return 0;
    }
    const STextLayout &layout = *detection.layout;
    describe(layout);
    const QByteArray head = text.left(int(layout.headSize));
    if (layout.headSize >= text.size() || head.count('\n') != layout.headLines
        || (!head.isEmpty() && !head.endsWith('\n')))
        fail("detection", "the head is not whole lines");
    if (layout.columns.isEmpty() || layout.columns.size() > mostColumns)
        fail("detection", "columns");
    const QByteArray body = text.mid(int(layout.headSize));
    const SConverted whole = convert(body, layout, int(body.size()));
    const SConverted pieces = convert(body, layout, pieceSize);
    compare("rows in pieces", pieces.values, whole.values);
    if (pieces.badLines != whole.badLines)
        fail("rows in pieces", "other bad lines");
    if (!isAmbiguous(layout) && !body.contains(carefulPrefix)) {
        const SConverted careful = convertWithCare(body, layout);
        compare("rows one by one", whole.values, careful.values);
        if (careful.badLines != whole.badLines)
            fail("rows one by one", "other bad lines");
    }
    checkPlainLines(body, layout, whole);
    return 0;
}
