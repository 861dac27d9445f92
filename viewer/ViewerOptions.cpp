// SPDX-License-Identifier: MIT
#include "viewer/ViewerOptions.h"

#include <QCommandLineOption>
#include <QCommandLineParser>
#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QRegularExpression>

#include <cmath>

namespace {

constexpr int smallestSide = 64;
constexpr int largestSide = 8192;

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

/// An empty string for a file that can be read.
QString whyUnreadable(const QString &path)
{
    const QFileInfo file(path);
    if (!file.exists())
        return QStringLiteral("no such file");
    if (file.isDir())
        return QStringLiteral("is a directory, not a file of numbers");
    if (!file.isFile())
        return QStringLiteral("is no regular file"); // a pipe, say: the reader wants to know where it ends
    if (!file.isReadable())
        return QStringLiteral("may not be read");
    return {};
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

QString refusedSize(const QString &text)
{
    return QStringLiteral("--size %1: not WIDTHxHEIGHT with sides from %2 to %3 pixels")
        .arg(text, QString::number(smallestSide), QString::number(largestSide));
}

} // namespace

SViewerOptions parseViewerOptions(const QStringList &arguments)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral("Shows files of numbers, one number a line, as bars."));
    const QCommandLineOption png(QStringLiteral("png"), QStringLiteral("Write a picture and exit."),
                                 QStringLiteral("OUT"));
    const QCommandLineOption size(QStringLiteral("size"), QStringLiteral("Size of the picture or the window."),
                                  QStringLiteral("WxH"), QStringLiteral("1280x720"));
    const QCommandLineOption binWidth(QStringLiteral("bin-width"), QStringLiteral("Width of one value along x."),
                                      QStringLiteral("W"), QStringLiteral("1"));
    const QCommandLineOption dark(QStringLiteral("dark"), QStringLiteral("Draw on a dark ground."));
    parser.addOptions({png, size, binWidth, dark});
    const QCommandLineOption help = parser.addHelpOption();
    const QCommandLineOption version = parser.addVersionOption();
    parser.addPositionalArgument(QStringLiteral("FILE"), QStringLiteral("Text with one number a line."),
                                 QStringLiteral("FILE..."));

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
    options.darkGround = parser.isSet(dark);
    if (parser.isSet(png) && options.picture.isEmpty())
        return refuse(QStringLiteral("--png: no file name"));
    if (options.size.isEmpty())
        return refuse(refusedSize(parser.value(size)));
    if (options.binWidth == 0.0)
        return refuse(QStringLiteral("--bin-width %1: not a number above 0").arg(parser.value(binWidth)));
    if (parser.positionalArguments().isEmpty())
        return refuse(QStringLiteral("no file given; --help tells how"));
    for (const QString &path : parser.positionalArguments()) {
        const QString reason = whyUnreadable(path);
        if (!reason.isEmpty())
            return refuse(path + QStringLiteral(": ") + reason);
        options.files.append(QDir::current().absoluteFilePath(path));
    }
    return options;
}
