// SPDX-License-Identifier: MIT
#include "viewer/LineChecks.h"

#include <QByteArray>
#include <QIODevice>
#include <QRegularExpression>
#include <QStringList>

#include <algorithm>

namespace {

constexpr int enoughLines = 100'000; // a tenth of a second
constexpr int enoughBytes = 4096;    // of a line

enum class Kind { Blank, Number, DecimalComma, Columns, OldLineEnds, Words };

/// A line that isn't a number, and where it stands.
struct SFound
{
    int line = 0; ///< counts from 1; 0: there is none
    QString text;
};

bool isNumber(const QString &text)
{
    bool ok = false;
    text.toDouble(&ok);
    return ok;
}

bool hasDecimalComma(const QString &text)
{
    return text.count(QLatin1Char(',')) == 1 && isNumber(QString(text).replace(QLatin1Char(','), QLatin1Char('.')));
}

bool isAnyNumber(const QString &text)
{
    return isNumber(text) || hasDecimalComma(text);
}

/// A line as columns: those between the separator that makes numbers of most of them.
struct SColumns
{
    char separator = 0; ///< a blank stands for any white space; 0 for no columns with a number
    QStringList fields;
    int lastNumber = -1; ///< index of the last field that is one

    explicit SColumns(const QString &text)
    {
        double best = 0.0;
        for (const char candidate : {';', '\t', ',', ' '})
            tryOut(candidate, text, best);
    }

private:
    void tryOut(char candidate, const QString &text, double &best)
    {
        static const QRegularExpression blanks(QStringLiteral("\\s+"));
        const QStringList parts = candidate == ' ' ? text.split(blanks) : text.split(QLatin1Char(candidate));
        const auto numbers = std::count_if(parts.cbegin(), parts.cend(), isAnyNumber);
        const double share = double(numbers) / parts.size();
        if (parts.size() < 2 || !(share > best))
            return;
        best = share;
        separator = candidate;
        fields = parts;
        lastNumber = parts.size() - 1;
        while (!isAnyNumber(fields[lastNumber]))
            --lastNumber;
    }
};

Kind kindOf(const QByteArray &line)
{
    const QString raw = QString::fromUtf8(line);
    const QString text = raw.trimmed();
    if (text.isEmpty())
        return Kind::Blank;
    if (text.contains(QLatin1Char('\r')))
        return Kind::OldLineEnds;
    if (isNumber(text))
        return Kind::Number;
    if (hasDecimalComma(text))
        return Kind::DecimalComma;
    return SColumns(text).separator ? Kind::Columns : Kind::Words;
}

/// For a shell.
QString quoted(const QString &name)
{
    static const QRegularExpression plain(QStringLiteral("\\A[A-Za-z0-9_./+-]+\\z"));
    return plain.match(name).hasMatch()
        ? name
        : QLatin1Char('\'') + QString(name).replace(QLatin1Char('\''), QLatin1String("'\\''")) + QLatin1Char('\'');
}

/// "Line 3 is …", with the line as people can read it.
QString lineIs(const SFound &found)
{
    constexpr int mostLetters = 40;
    QString text;
    for (const QChar letter : found.text.trimmed().left(mostLetters + 1))
        text += letter == QLatin1Char('\t') || letter.isPrint() ? letter : QChar(QChar::ReplacementCharacter);
    text.replace(QLatin1Char('\t'), QLatin1Char(' '));
    if (text.size() > mostLetters)
        text = text.left(mostLetters) + QChar(0x2026);
    return QStringLiteral("line %1 is \"%2\", which isn't a single number").arg(QString::number(found.line), text);
}

/// A command that makes the numbers of one column.
QString columnCommand(const QString &text, const QString &name)
{
    const SColumns columns(text);
    const QString column = QString::number(columns.lastNumber + 1);
    QString command;
    if (columns.separator == ' ')
        command = QStringLiteral("awk '{print $%1}' <%2").arg(column, quoted(name));
    else if (columns.separator == '\t')
        command = QStringLiteral("cut -f %1 <%2").arg(column, quoted(name));
    else
        command =
            QStringLiteral("cut -d '%1' -f %2 <%3").arg(QString(QLatin1Char(columns.separator)), column, quoted(name));
    if (hasDecimalComma(columns.fields[columns.lastNumber]))
        command += QLatin1String(" | tr , .");
    return QStringLiteral("column %1 alone: %2 >numbers.txt").arg(column, command);
}

/// Collects what the lines of a text are.
class LineCount
{
public:
    void add(const QByteArray &line)
    {
        const Kind kind = kindOf(line);
        ++m_lines;
        ++m_count[int(kind)];
        SFound &first = m_first[int(kind)];
        if (first.line == 0)
            first = {m_lines, QString::fromUtf8(line)};
    }

    bool isEnough() const { return m_lines >= enoughLines; }
    bool hasNumbers() const { return of(Kind::Number) > 0; }

    QString problem(const QString &name) const
    {
        if (isUsual(Kind::OldLineEnds))
            return QStringLiteral("its lines end in carriage returns. With line feeds: tr '\\r' '\\n' <%1 >numbers.txt")
                .arg(quoted(name));
        const bool inColumns = isUsual(Kind::Columns);
        if (of(Kind::DecimalComma) > 0 && !inColumns)
            return decimalCommas(name);
        if (inColumns || (of(Kind::Columns) > 0 && !hasNumbers()))
            return lineIs(first(Kind::Columns)) + QStringLiteral(". Its ")
                + columnCommand(first(Kind::Columns).text.trimmed(), name);
        if (of(Kind::Words) > 0 && !hasNumbers())
            return lineIs(first(Kind::Words)) + QStringLiteral("; expected one number per line");
        return {};
    }

private:
    int of(Kind kind) const { return m_count[int(kind)]; }
    bool isUsual(Kind kind) const { return of(kind) > 0 && 2 * of(kind) >= m_lines - of(Kind::Blank); }
    const SFound &first(Kind kind) const { return m_first[int(kind)]; }

    QString decimalCommas(const QString &name) const
    {
        return lineIs(first(Kind::DecimalComma))
            + QStringLiteral(
                  ". With points for decimal commas: tr , . <%1 >numbers.txt; the second of two columns: "
                  "cut -d , -f 2 <%1 >numbers.txt")
                  .arg(quoted(name));
    }

    int m_lines = 0;
    int m_count[int(Kind::Words) + 1] = {};
    SFound m_first[int(Kind::Words) + 1];
};

} // namespace

SLineChecks checkLines(QIODevice &device, const QString &name)
{
    LineCount lines;
    bool isLineBegin = true;
    while (!lines.isEnough() && !device.atEnd()) {
        const QByteArray text = device.readLine(enoughBytes);
        if (text.isEmpty())
            break;
        if (isLineBegin)
            lines.add(text);
        isLineBegin = text.endsWith('\n');
    }
    return {lines.hasNumbers(), lines.problem(name)};
}
