// SPDX-License-Identifier: MIT
#pragma once

#include "views/items/LinePath.h"

#include <QtGlobal>

/// How a path is drawn. Lengths in device pixels.
struct SPen
{
    double width = 1.0;
    bool isSmooth = true;
};

/// A corner of the triangles of a stroke: its place, and how much of the color it has, from 0 to 1.
struct SStrokePoint
{
    float x = 0.0f;
    float y = 0.0f;
    float coverage = 0.0f;
};

/// A part of a stroke, small enough for indices of 16 bits: triangles of points.
struct SStrokePart
{
    std::vector<SStrokePoint> points;
    std::vector<quint16> corners;
};

/// The triangles of a line along a path. Smoothing is a seam of one pixel around it, from full to no coverage, so that
/// no shader is needed. Bends are mitred unless they are sharp; sharp ones and ends are square. Any thread.
std::vector<SStrokePart> strokeOf(const LinePath &path, const SPen &pen);
