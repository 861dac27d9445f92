// SPDX-License-Identifier: MIT
#include "viewer/ViewerOptions.h"

#include "viewer/FileChecks.h"

#include <QCommandLineOption>
#include <QCommandLineParser>
#include <QCoreApplication>
#include <QDir>
#include <QRegularExpression>

#include <cmath>

namespace {

constexpr int smallestSide = 64;
constexpr int largestSide = 8192;
constexpr int deepestSmoothing = 1'000'000;

SViewerOptions refuse(const QString &message)
{
    SViewerOptions options;
    options.action = SViewerOptions::Action::PrintAndFail;
    options.message = QStringLiteral("%1: %2\n").arg(QCoreApplication::applicationName(), message);
    return options;
}

SViewerOptions print(const QString &message)
{
    SViewerOptions options;
    options.action = SViewerOptions::Action::PrintAndSucceed;
    options.message = message;
    return options;
}

/// A null size for anything but WIDTHxHEIGHT within the limits.
QSize sizeFrom(const QString &text)
{
    static const QRegularExpression pattern(QStringLiteral("\\A([0-9]{1,5})x([0-9]{1,5})\\z"));
    const QRegularExpressionMatch match = pattern.match(text);
    const QSize size(match.captured(1).toInt(), match.captured(2).toInt());
    const bool withinLimits =
        qMin(size.width(), size.height()) >= smallestSide && qMax(size.width(), size.height()) <= largestSide;
    return withinLimits ? size : QSize(0, 0);
}

/// 0 for anything but a finite number above 0.
double binWidthFrom(const QString &text)
{
    const double binWidth = text.toDouble();
    return std::isfinite(binWidth) && binWidth > 0.0 ? binWidth : 0.0;
}

/// 0 for anything but a whole number within the limits.
int smoothDepthFrom(const QString &text)
{
    static const QRegularExpression pattern(QStringLiteral("\\A[0-9]{1,7}\\z"));
    const int depth = pattern.match(text).hasMatch() ? text.toInt() : 0;
    return depth <= deepestSmoothing ? depth : 0;
}

QString refusedSize(const QString &text)
{
    return QStringLiteral("--size %1: not WIDTHxHEIGHT with sides from %2 to %3 pixels")
        .arg(text, QString::number(smallestSide), QString::number(largestSide));
}

} // namespace

SViewerOptions parseViewerOptions(const QStringList &arguments)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral("Shows files of numbers, one number per line."));
    const QCommandLineOption png(QStringLiteral("png"), QStringLiteral("Write a picture and exit."),
                                 QStringLiteral("OUT"));
    const QCommandLineOption size(QStringLiteral("size"), QStringLiteral("Size of the picture or the window."),
                                  QStringLiteral("WxH"), QStringLiteral("1280x720"));
    const QCommandLineOption binWidth(QStringLiteral("bin-width"), QStringLiteral("Width of one value along x."),
                                      QStringLiteral("W"), QStringLiteral("1"));
    const QCommandLineOption unit(QStringLiteral("unit"), QStringLiteral("Unit of x, such as keV, V or s."),
                                  QStringLiteral("UNIT"));
    const QCommandLineOption area(QStringLiteral("area"), QStringLiteral("Draw filled areas instead of bars."));
    const QCommandLineOption smooth(QStringLiteral("smooth"),
                                    QStringLiteral("Show a running average over DEPTH values."),
                                    QStringLiteral("DEPTH"), QStringLiteral("1"));
    const QCommandLineOption logarithmic(QStringLiteral("log"),
                                         QStringLiteral("Use a logarithmic scale for the values."));
    const QCommandLineOption dark(QStringLiteral("dark"), QStringLiteral("Use dark colors."));
    // Not Qt's own, which promise options of Qt's that are not taken here.
    const QCommandLineOption help({QStringLiteral("h"), QStringLiteral("help")},
                                  QStringLiteral("Print this and exit."));
    const QCommandLineOption version({QStringLiteral("v"), QStringLiteral("version")},
                                     QStringLiteral("Print the version and exit."));
    parser.addOptions({png, size, binWidth, unit, area, smooth, logarithmic, dark, help, version});
    parser.addPositionalArgument(QStringLiteral("FILE"), QStringLiteral("Text file with one number per line."),
                                 QStringLiteral("[FILE...]"));

    if (!parser.parse(arguments))
        return refuse(parser.errorText());
    if (parser.isSet(help))
        return print(parser.helpText());
    if (parser.isSet(version))
        return print(
            QStringLiteral("%1 %2\n").arg(QCoreApplication::applicationName(), QCoreApplication::applicationVersion()));

    SViewerOptions options;
    options.picture = parser.value(png);
    options.size = sizeFrom(parser.value(size));
    options.binWidth = binWidthFrom(parser.value(binWidth));
    options.unit = parser.value(unit);
    options.area = parser.isSet(area);
    options.smoothDepth = smoothDepthFrom(parser.value(smooth));
    options.logarithmic = parser.isSet(logarithmic);
    options.darkGround = parser.isSet(dark);
    if (parser.isSet(png) && options.picture.isEmpty())
        return refuse(QStringLiteral("--png: no file name"));
    if (options.size.isEmpty())
        return refuse(refusedSize(parser.value(size)));
    if (options.binWidth == 0.0)
        return refuse(QStringLiteral("--bin-width %1: not a number above 0").arg(parser.value(binWidth)));
    if (options.smoothDepth == 0)
        return refuse(QStringLiteral("--smooth %1: not a whole number from 1 to %2")
                          .arg(parser.value(smooth), QString::number(deepestSmoothing)));
    if (parser.isSet(png) && parser.positionalArguments().isEmpty())
        return refuse(QStringLiteral("no file given for the picture; --help tells how"));
    for (const QString &path : parser.positionalArguments()) {
        const QString reason = FileChecks::whyUnreadable(path);
        if (!reason.isEmpty())
            return refuse(path + QStringLiteral(": ") + reason);
        options.files.append(QDir::current().absoluteFilePath(path));
    }
    return options;
}
