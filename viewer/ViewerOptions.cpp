// SPDX-License-Identifier: MIT
#include "viewer/ViewerOptions.h"

#include "viewer/Desktop.h"
#include "viewer/OptionTable.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QDir>
#include <QRegularExpression>

#include <cmath>

namespace {

constexpr int smallestSide = 64;
constexpr int largestSide = 8192;
constexpr int deepestSmoothing = 1'000'000;
constexpr double mostLines = 1e9;

/// Takes the values of options one after the other; the first that is wrong is said.
class OptionReader
{
public:
    explicit OptionReader(const QCommandLineParser &parser) : m_parser(parser) {}

    bool isSet(const char *name) const { return m_parser.isSet(QLatin1String(name)); }
    QString text(const char *name) const { return m_parser.value(QLatin1String(name)); }
    const QString &error() const { return m_error; }

    // What isn't asked for is an invalid value.

    QVariant string(const char *name) const { return isSet(name) ? text(name) : QVariant(); }
    QVariant number(const char *name, double least, const char *what)
    {
        bool isNumber = false;
        const double value = text(name).toDouble(&isNumber);
        return checked(name, isNumber && std::isfinite(value) && value >= least, QLatin1String(what), value);
    }
    QVariant wholeNumber(const char *name, int least, int most)
    {
        static const QRegularExpression digits(QStringLiteral("\\A[0-9]{1,10}\\z"));
        const qint64 value = digits.match(text(name)).hasMatch() ? text(name).toLongLong() : -1;
        return checked(name, value >= least && value <= most,
                       QStringLiteral("not a whole number from %1 to %2").arg(least).arg(most), int(value));
    }
    /// Which of these words it is.
    QVariant word(const char *name, const QStringList &words)
    {
        const int index = int(words.indexOf(text(name)));
        return checked(name, index >= 0, QStringLiteral("not one of %1").arg(words.join(QStringLiteral(", "))), index);
    }
    /// The one of two switches that is set; the first of both.
    QVariant either(const char *first, const char *second) const
    {
        const char *const set = isSet(first) ? first : isSet(second) ? second : nullptr;
        return set ? QString::fromLatin1(set) : QVariant();
    }
    QString fileName(const char *name)
    {
        if (isSet(name) && text(name).isEmpty())
            refuseAll(QStringLiteral("--%1: no file name").arg(QLatin1String(name)));
        return text(name);
    }
    QVariant checked(const char *name, bool isGood, const QString &why, const QVariant &value)
    {
        if (isSet(name) && !isGood)
            refuse(name, why);
        return isSet(name) ? value : QVariant();
    }
    void refuse(const char *name, const QString &why)
    {
        refuseAll(QStringLiteral("--%1 %2: %3").arg(QLatin1String(name), text(name), why));
    }
    void refuseAll(const QString &words)
    {
        if (m_error.isEmpty())
            m_error = words;
    }

private:
    const QCommandLineParser &m_parser;
    QString m_error;
};

SViewerOptions finish(SViewerOptions::Action action, const QString &message)
{
    SViewerOptions options;
    options.action = action;
    options.message = message;
    return options;
}

SViewerOptions refuse(const QString &words)
{
    return finish(SViewerOptions::Action::PrintAndFail,
                  QStringLiteral("%1: %2\n").arg(QCoreApplication::applicationName(), words));
}

void put(QVariantMap &map, const char *property, const QVariant &value)
{
    if (value.isValid())
        map.insert(QLatin1String(property), value);
}

QSize readSize(OptionReader &reader)
{
    static const QRegularExpression pattern(QStringLiteral("\\A([0-9]{1,5})x([0-9]{1,5})\\z"));
    const QRegularExpressionMatch match = pattern.match(reader.text("size"));
    const QSize size(match.captured(1).toInt(), match.captured(2).toInt());
    const bool isWithin =
        qMin(size.width(), size.height()) >= smallestSide && qMax(size.width(), size.height()) <= largestSide;
    const QString limits = QStringLiteral("not WIDTHxHEIGHT with sides from %1 to %2 pixels");
    return reader.checked("size", isWithin, limits.arg(smallestSide).arg(largestSide), size).toSize();
}

/// Both ends as a list; the lower one first.
QVariant readRange(OptionReader &reader)
{
    const QStringList ends = reader.text("range").split(QLatin1Char(':'));
    bool areNumbers[2] = {false, false};
    const double from = ends.value(0).toDouble(&areNumbers[0]);
    const double to = ends.value(1).toDouble(&areNumbers[1]);
    const bool isRange = ends.size() == 2 && areNumbers[0] && areNumbers[1] && std::isfinite(from) && std::isfinite(to);
    return reader.checked("range", isRange && from != to, QStringLiteral("not two numbers with a colon between"),
                          QVariantList{qMin(from, to), qMax(from, to)});
}

/// How the files are to be read: properties of their readers.
QVariantMap readHints(OptionReader &reader)
{
    static const QStringList types{"float64", "float32", "int32", "uint32", "int16", "uint16", "int8", "uint8"};
    static const QStringList formats{"auto", "text", "npy", "raw", "wav"}; // in the order of the reader's enum
    QVariantMap hints;
    put(hints, "column", reader.string("column"));
    put(hints, "xColumn", reader.string("x-column"));
    put(hints, "separator",
        reader.checked("separator", reader.text("separator").size() == 1, QStringLiteral("not one character"),
                       reader.text("separator")));
    put(hints, "decimalPoint",
        reader.word("decimal-point", {".", ","}).isValid() ? reader.text("decimal-point") : QVariant());
    put(hints, "skipLines", reader.wholeNumber("skip-lines", 0, int(mostLines)));
    put(hints, "sampleType", reader.word("sample-type", types));
    put(hints, "format", reader.isSet("sample-type") ? formats.indexOf(QStringLiteral("raw")) : QVariant());
    put(hints, "format", reader.word("format", formats));
    put(hints, "follow", reader.isSet("follow") ? true : QVariant());
    return hints;
}

/// What the window is to show, and how.
QVariantMap readScene(OptionReader &reader)
{
    QVariantMap scene{{QStringLiteral("hints"), readHints(reader)}};
    put(scene, "start", reader.number("start", -1e300, "not a number"));
    put(scene, "step", reader.number("step", 1e-300, "not a number above 0"));
    put(scene, "smoothDepth", reader.wholeNumber("smooth", 1, deepestSmoothing));
    put(scene, "range", readRange(reader));
    put(scene, "unit", reader.string("unit"));
    put(scene, "look", reader.either("area", "line"));
    put(scene, "colors", reader.either("dark", "light"));
    put(scene, "logarithmic", reader.isSet("log") ? true : QVariant());
    return scene;
}

QStringList readFiles(const QStringList &paths, OptionReader &reader)
{
    QStringList files;
    for (const QString &path : paths) {
        const QString reason = Desktop::whyUnreadable(path);
        if (!reason.isEmpty())
            reader.refuseAll(path + QStringLiteral(": ") + reason);
        files.append(path == QLatin1String("-") ? path : QDir::current().absoluteFilePath(path));
    }
    if (files.count(QStringLiteral("-")) > 1)
        reader.refuseAll(QStringLiteral("-: standard input can be read only once"));
    return files;
}

void addOptions(QCommandLineParser &parser)
{
    parser.setApplicationDescription(QStringLiteral("Shows files of numbers, and lets you zoom into them."));
    for (const SOption &option : optionTable) {
        const QStringList names = QString::fromLatin1(option.names).split(QLatin1Char(','));
        parser.addOption({names, QString::fromLatin1(option.words), QString::fromLatin1(option.value)});
    }
    parser.addPositionalArgument(
        QStringLiteral("FILE"),
        QStringLiteral("Text with numbers in columns, .npy, WAV or raw samples; - for standard "
                       "input."),
        QStringLiteral("[FILE...]"));
}

} // namespace

SViewerOptions parseViewerOptions(const QStringList &arguments)
{
    QCommandLineParser parser;
    addOptions(parser);
    if (!parser.parse(arguments))
        return refuse(parser.errorText());
    OptionReader reader(parser);
    if (reader.isSet("help"))
        return finish(SViewerOptions::Action::PrintAndSucceed, parser.helpText());
    if (reader.isSet("version"))
        return finish(
            SViewerOptions::Action::PrintAndSucceed,
            QStringLiteral("%1 %2\n").arg(QCoreApplication::applicationName(), QCoreApplication::applicationVersion()));
    SViewerOptions options;
    options.picture = reader.fileName("png");
    options.values = reader.fileName("csv");
    options.size = readSize(reader);
    options.scene = readScene(reader);
    options.keepsSettings = options.showsWindow() && !reader.isSet("no-settings");
    if (!options.showsWindow() && parser.positionalArguments().isEmpty())
        reader.refuseAll(QStringLiteral("no file given for the %1; --help tells how")
                             .arg(QLatin1String(options.picture.isEmpty() ? "values" : "picture")));
    options.scene.insert(QStringLiteral("paths"), readFiles(parser.positionalArguments(), reader));
    return reader.error().isEmpty() ? options : refuse(reader.error());
}
