// SPDX-License-Identifier: MIT
#include "views/reading/TextPreview.h"

#include "views/reading/TextDecoder.h"
#include "views/reading/TextFields.h"

#include <QFile>
#include <QFileInfo>

namespace {

constexpr int longestLine = 400; // letters

QStringList cellsOf(const QByteArray &line, char separator)
{
    const char *const end = line.constData() + line.size();
    if (separator == 0)
        return {QString::fromUtf8(line).trimmed()};
    Fields fields;
    splitFields(line.constData(), end, separator, fields);
    QStringList cells;
    for (const SField &field : fields)
        cells.append(QString::fromUtf8(textOf(field)));
    return cells;
}

} // namespace

QVector<QStringList> previewOf(const QString &path, int lines, char separator)
{
    QVector<QStringList> rows;
    QFile file(path);
    if (lines < 1 || !QFileInfo(path).isFile() || !file.open(QIODevice::ReadOnly))
        return rows;
    const QByteArray raw = file.read(qint64(lines) * longestLine);
    TextDecoder decoder(raw);
    QByteArray text;
    decoder.decode(raw.constData() + decoder.markSize(), raw.size() - decoder.markSize(), text);
    for (int begin = 0; begin < text.size() && rows.size() < lines;) {
        const int end = text.indexOf('\n', begin);
        const QByteArray line = text.mid(begin, end < 0 ? -1 : end - begin);
        rows.append(cellsOf(line.left(longestLine), separator));
        begin = end < 0 ? text.size() : end + 1;
    }
    return rows;
}
