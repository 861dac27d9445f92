// SPDX-License-Identifier: MIT
#include "viewer/ViewerOptions.h"

#include "viewer/Desktop.h"
#include "viewer/OptionTable.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QDir>
#include <QRegularExpression>
#include <QSizeF>

#include <cmath>

namespace {

constexpr int smallestSide = 64;
constexpr int largestSide = 8192;
constexpr int rawFormat = 3; // of the reader's enum

QString firstName(const SOption &option)
{
    return QString::fromLatin1(option.names).section(QLatin1Char(','), 0, 0);
}

QVariant numberFrom(const QString &text, const SOption &option)
{
    bool isNumber = false;
    const double value = text.toDouble(&isNumber);
    return isNumber && std::isfinite(value) && value >= option.least && value <= option.most ? value : QVariant();
}

QVariant wholeNumberFrom(const QString &text, const SOption &option)
{
    static const QRegularExpression digits(QStringLiteral("\\A[0-9]{1,10}\\z"));
    const QVariant value = digits.match(text).hasMatch() ? numberFrom(text, option) : QVariant();
    return value.isValid() ? value.toInt() : value;
}

QVariant wordIndex(const QString &text, const SOption &option)
{
    const QString words = QString::fromLatin1(option.expected).section(QStringLiteral(" of "), 1);
    const int index = int(words.split(QStringLiteral(", ")).indexOf(text));
    return index >= 0 ? index : QVariant();
}

/// Both ends as a list; the lower one first.
QVariant rangeFrom(const QString &text, const SOption &option)
{
    const QStringList ends = text.split(QLatin1Char(':'));
    const QVariant from = numberFrom(ends.first(), option);
    const QVariant to = numberFrom(ends.last(), option);
    if (ends.size() != 2 || !from.isValid() || !to.isValid() || from == to)
        return {};
    return QVariantList{qMin(from.toDouble(), to.toDouble()), qMax(from.toDouble(), to.toDouble())};
}

QVariant sizeFrom(const QString &text)
{
    static const QRegularExpression pattern(QStringLiteral("\\A([0-9]{1,5})x([0-9]{1,5})\\z"));
    const QRegularExpressionMatch match = pattern.match(text);
    const QSizeF size(match.captured(1).toInt(), match.captured(2).toInt());
    const bool isWithin =
        qMin(size.width(), size.height()) >= smallestSide && qMax(size.width(), size.height()) <= largestSide;
    return isWithin ? size : QVariant();
}

/// An invalid value for what isn't expected.
QVariant valueOf(const QString &text, const SOption &option)
{
    switch (option.kind) {
    case OptionKind::Switch:
        return true;
    case OptionKind::OwnName:
        return firstName(option);
    case OptionKind::Text:
        return text;
    case OptionKind::Character:
        return text.size() == 1 ? text : QVariant();
    case OptionKind::Number:
        return numberFrom(text, option);
    case OptionKind::Whole:
        return wholeNumberFrom(text, option);
    case OptionKind::Word:
        return wordIndex(text, option).isValid() ? text : QVariant();
    case OptionKind::WordIndex:
        return wordIndex(text, option);
    case OptionKind::Range:
        return rangeFrom(text, option);
    case OptionKind::Size:
        return sizeFrom(text);
    }
    return {};
}

SViewerOptions refuse(const QString &words)
{
    return {SViewerOptions::Action::PrintAndFail,
            QStringLiteral("%1: %2\n").arg(QCoreApplication::applicationName(), words),
            true,
            {}};
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
        QStringLiteral("Text with numbers in columns, .npy, WAV or raw samples; - for standard input."),
        QStringLiteral("[FILE...]"));
}

/// Takes the value of an option that is set; what is wrong with it is returned.
QString take(const SOption &option, const QString &text, QVariantMap &scene, QVariantMap &hints)
{
    const QVariant value = valueOf(text, option);
    const QString name = firstName(option);
    const QString expected = QString::fromLatin1(option.expected);
    if (*option.value && text.isEmpty())
        return QStringLiteral("--%1 needs %2").arg(name, expected);
    if (!value.isValid())
        return QStringLiteral("--%1 %2: not %3").arg(name, text, expected);
    const QString property = QString::fromLatin1(option.property).section(QLatin1Char('.'), -1);
    QVariantMap &owner = QByteArray(option.property).startsWith("hints.") ? hints : scene;
    if (!owner.contains(property)) // of two switches for it the first counts
        owner.insert(property, value);
    return {};
}

/// What is wrong first.
QString takeAll(const QCommandLineParser &parser, QVariantMap &scene)
{
    QVariantMap hints;
    QString error;
    for (const SOption &option : optionTable) {
        if (option.property && parser.isSet(firstName(option)) && error.isEmpty())
            error = take(option, parser.value(firstName(option)), scene, hints);
    }
    if (hints.contains(QStringLiteral("sampleType")) && !hints.contains(QStringLiteral("format")))
        hints.insert(QStringLiteral("format"), rawFormat);
    scene.insert(QStringLiteral("hints"), hints);
    return error;
}

QString takeFiles(const QStringList &paths, QVariantMap &scene)
{
    QStringList files;
    for (const QString &path : paths) {
        const QString reason = Desktop::whyUnreadable(path);
        if (!reason.isEmpty())
            return path + QStringLiteral(": ") + reason;
        files.append(path == QLatin1String("-") ? path : QDir::current().absoluteFilePath(path));
    }
    scene.insert(QStringLiteral("paths"), files);
    return files.count(QStringLiteral("-")) > 1 ? QStringLiteral("-: standard input can be read only once") : QString();
}

} // namespace

SViewerOptions parseViewerOptions(const QStringList &arguments)
{
    QCommandLineParser parser;
    addOptions(parser);
    if (!parser.parse(arguments))
        return refuse(parser.errorText());
    if (parser.isSet(QStringLiteral("help")))
        return {SViewerOptions::Action::PrintAndSucceed, parser.helpText(), true, {}};
    if (parser.isSet(QStringLiteral("version")))
        return {
            SViewerOptions::Action::PrintAndSucceed,
            QStringLiteral("%1 %2\n").arg(QCoreApplication::applicationName(), QCoreApplication::applicationVersion()),
            true,
            {}};
    SViewerOptions options;
    QString error = takeAll(parser, options.scene);
    options.keepsSettings = options.showsWindow() && !parser.isSet(QStringLiteral("no-settings"));
    const QStringList paths = parser.positionalArguments();
    if (error.isEmpty() && !options.showsWindow() && paths.isEmpty())
        error = QStringLiteral("no file given; --help tells how");
    if (error.isEmpty())
        error = takeFiles(paths, options.scene);
    return error.isEmpty() ? options : refuse(error);
}
