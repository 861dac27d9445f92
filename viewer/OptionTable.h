// SPDX-License-Identifier: MIT
#pragma once

/// What is made of the text of a value. A number lies from `least` on, a whole one up to `most`; a word is one of those
/// that are expected; a switch is true, or its own name where it's one of several for a property.
enum class OptionKind { Switch, OwnName, Text, Character, Number, Whole, Word, WordIndex, Range, Size };

/// An option: as --help, the man page and the completion of shells tell it, and what becomes of its value.
struct SOption
{
    const char *names; ///< "size", or several: "step,bin-width"
    const char *value; ///< what stands for its value; empty for a switch
    const char *words;
    const char *property = nullptr; ///< of the window, or of the files' readers behind "hints."; null: neither's
    OptionKind kind = OptionKind::Switch;
    const char *expected = "";
    double least = -1e300;
    double most = 1e300;
};

// clang-format off
constexpr SOption optionTable[] = {
    {"column", "COLUMN", "Column of numbers to show: its number from 1, or its name.",
     "hints.column", OptionKind::Text, "a column"},
    {"x-column", "COLUMN", "Column that says where the values stand.", "hints.xColumn", OptionKind::Text, "a column"},
    {"format", "FORMAT", "What the files are: text, npy, wav or raw; found out by default.",
     "hints.format", OptionKind::WordIndex, "one of auto, text, npy, raw, wav"}, // in the order of the reader's enum
    {"sample-type", "TYPE", "What raw samples are: float64, float32, int32, uint32, int16, uint16, int8 or uint8.",
     "hints.sampleType", OptionKind::WordIndex, "one of float64, float32, int32, uint32, int16, uint16, int8, uint8"},
    {"separator", "CHAR", "What is between the columns of a text; found out by default.",
     "hints.separator", OptionKind::Character, "one character"},
    {"decimal-point", "CHAR", "A point or a comma; found out by default.",
     "hints.decimalPoint", OptionKind::Word, "one of ., ,"},
    {"skip-lines", "N", "Lines at the beginning of a text that aren't looked at.",
     "hints.skipLines", OptionKind::Whole, "a whole number from 0 to 1000000000", 0, 1e9},
    {"follow", "", "Go on reading while other programs write the files.", "hints.follow"},
    {"start", "X", "Where the first value stands; 0 by default.", "start", OptionKind::Number, "a number"},
    {"step,bin-width", "W", "Width of one value along x, above 0; 1 by default.",
     "step", OptionKind::Number, "a number above 0", 1e-300},
    {"unit", "UNIT", "Unit of x, such as keV, V or s.", "unit", OptionKind::Text, "a unit"},
    {"line", "", "Draw lines. By default bars are drawn unless a value is negative.", "look", OptionKind::OwnName},
    {"area", "", "Draw filled areas.", "look", OptionKind::OwnName},
    {"smooth", "DEPTH", "Show a running average over DEPTH values, 1 to 1000000.",
     "smoothDepth", OptionKind::Whole, "a whole number from 1 to 1000000", 1, 1e6},
    {"beneath", "", "Draw each file in a plot of its own, one beneath the other, over the same part of x.", "beneath"},
    {"difference", "", "Show the difference of two files, too: the first less the second.", "difference"},
    {"log", "", "Use a logarithmic scale for the values.", "logarithmic"},
    {"dark", "", "Use dark colors.", "colors", OptionKind::OwnName},
    {"light", "", "Use light colors. By default those of the desktop are used, in a picture light ones.",
     "colors", OptionKind::OwnName},
    {"range", "FROM:TO", "Show this part of x.", "range", OptionKind::Range, "two numbers with a colon between"},
    {"png", "OUT", "Write a picture of the plot to the file OUT and exit; as a page of PDF if OUT ends with .pdf.",
     "picture", OptionKind::Text, "a file name"},
    {"csv", "OUT", "Write the values in view to the file OUT, or to standard output for -, and exit.",
     "values", OptionKind::Text, "a file name"},
    {"size", "WxH", "Size of the picture or the window in pixels, from 64x64 to 8192x8192; 1280x720 by default.",
     "pixels", OptionKind::Size, "WIDTHxHEIGHT with sides from 64 to 8192 pixels"},
    {"no-settings", "", "Neither use nor change what the window remembers."},
    // Not Qt's own, which promise options of Qt's that are not taken here.
    {"h,help", "", "Print this and exit."},
    {"v,version", "", "Print the version and exit."},
};
// clang-format on
