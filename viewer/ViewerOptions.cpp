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

    double number(const char *name, double least, const char *what)
    {
        bool isNumber = false;
        const double value = text(name).toDouble(&isNumber);
        if (!isNumber || !std::isfinite(value) || value < least)
            refuse(name, QLatin1String(what));
        return value;
    }
    int wholeNumber(const char *name, int least, int most)
    {
        static const QRegularExpression digits(QStringLiteral("\\A[0-9]{1,10}\\z"));
        const qint64 value = digits.match(text(name)).hasMatch() ? text(name).toLongLong() : -1;
        if (value < least || value > most)
            refuse(name, QStringLiteral("not a whole number from %1 to %2").arg(least).arg(most));
        return int(value);
    }
    /// The text if it's one of these words.
    QString word(const char *name, const QStringList &words)
    {
        if (!words.contains(text(name)))
            refuse(name, QStringLiteral("not one of %1").arg(words.join(QStringLiteral(", "))));
        return text(name);
    }
    QString fileName(const char *name)
    {
        if (text(name).isEmpty())
            refuseAll(QStringLiteral("--%1: no file name").arg(QLatin1String(name)));
        return text(name);
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

QSize readSize(OptionReader &reader)
{
    static const QRegularExpression pattern(QStringLiteral("\\A([0-9]{1,5})x([0-9]{1,5})\\z"));
    const QRegularExpressionMatch match = pattern.match(reader.text("size"));
    const QSize size(match.captured(1).toInt(), match.captured(2).toInt());
    if (qMin(size.width(), size.height()) < smallestSide || qMax(size.width(), size.height()) > largestSide)
        reader.refuse(
            "size",
            QStringLiteral("not WIDTHxHEIGHT with sides from %1 to %2 pixels").arg(smallestSide).arg(largestSide));
    return size;
}

/// Both ends as a list; the lower one first.
QVariantList readRange(OptionReader &reader)
{
    const QStringList ends = reader.text("range").split(QLatin1Char(':'));
    bool areNumbers[2] = {false, false};
    const double from = ends.value(0).toDouble(&areNumbers[0]);
    const double to = ends.value(1).toDouble(&areNumbers[1]);
    const bool isRange = ends.size() == 2 && areNumbers[0] && areNumbers[1] && std::isfinite(from) && std::isfinite(to);
    if (!isRange || from == to)
        reader.refuse("range", QStringLiteral("not two numbers with a colon between"));
    return {qMin(from, to), qMax(from, to)};
}

/// How the files are to be read: properties of their readers.
QVariantMap readHints(OptionReader &reader)
{
    static const QStringList types{"float64", "float32", "int32", "uint32", "int16", "uint16", "int8", "uint8"};
    static const QStringList formats{"auto", "text", "npy", "raw", "wav"}; // in the order of the reader's enum
    QVariantMap hints;
    for (const char *name : {"column", "x-column", "separator"}) {
        if (reader.isSet(name))
            hints.insert(QLatin1String(name[0] == 'x' ? "xColumn" : name), reader.text(name));
    }
    if (reader.isSet("decimal-point"))
        hints.insert(QStringLiteral("decimalPoint"), reader.word("decimal-point", {".", ","}));
    if (reader.text("separator").size() > 1)
        reader.refuse("separator", QStringLiteral("not one character"));
    if (reader.isSet("skip-lines"))
        hints.insert(QStringLiteral("skipLines"), reader.wholeNumber("skip-lines", 0, int(mostLines)));
    if (reader.isSet("sample-type")) {
        hints.insert(QStringLiteral("sampleType"), types.indexOf(reader.word("sample-type", types)));
        hints.insert(QStringLiteral("format"), formats.indexOf(QStringLiteral("raw")));
    }
    if (reader.isSet("format"))
        hints.insert(QStringLiteral("format"), formats.indexOf(reader.word("format", formats)));
    if (reader.isSet("follow"))
        hints.insert(QStringLiteral("follow"), true);
    return hints;
}

/// What the window is to show, and how.
QVariantMap readScene(OptionReader &reader)
{
    QVariantMap scene{{QStringLiteral("hints"), readHints(reader)}};
    if (reader.isSet("start"))
        scene.insert(QStringLiteral("start"), reader.number("start", -1e300, "not a number"));
    if (reader.isSet("step"))
        scene.insert(QStringLiteral("step"), reader.number("step", 1e-300, "not a number above 0"));
    if (reader.isSet("smooth"))
        scene.insert(QStringLiteral("smoothDepth"), reader.wholeNumber("smooth", 1, deepestSmoothing));
    if (reader.isSet("range"))
        scene.insert(QStringLiteral("range"), readRange(reader));
    if (reader.isSet("unit"))
        scene.insert(QStringLiteral("unit"), reader.text("unit"));
    if (reader.isSet("area") || reader.isSet("line"))
        scene.insert(QStringLiteral("look"), QLatin1String(reader.isSet("area") ? "area" : "line"));
    if (reader.isSet("dark") || reader.isSet("light"))
        scene.insert(QStringLiteral("colors"), QLatin1String(reader.isSet("dark") ? "dark" : "light"));
    if (reader.isSet("log"))
        scene.insert(QStringLiteral("logarithmic"), true);
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
    if (reader.isSet("png"))
        options.picture = reader.fileName("png");
    if (reader.isSet("csv"))
        options.values = reader.fileName("csv");
    if (reader.isSet("size"))
        options.size = readSize(reader);
    options.scene = readScene(reader);
    options.keepsSettings = options.showsWindow() && !reader.isSet("no-settings");
    if (!options.showsWindow() && parser.positionalArguments().isEmpty())
        reader.refuseAll(QStringLiteral("no file given for the %1; --help tells how")
                             .arg(QLatin1String(options.picture.isEmpty() ? "values" : "picture")));
    options.scene.insert(QStringLiteral("paths"), readFiles(parser.positionalArguments(), reader));
    return reader.error().isEmpty() ? options : refuse(reader.error());
}
