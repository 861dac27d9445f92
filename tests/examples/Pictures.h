// SPDX-License-Identifier: MIT
#pragma once

#include <QImage>

/// The share (0 to 1) of the 8 x 8 pixel blocks whose mean colours differ visibly, in any channel by more than 24 of
/// 255. What differs from machine to machine, such as the edges of letters, lies below that. Pictures of different
/// sizes, and a picture that could not be read, differ altogether.
double differingBlocks(const QImage &a, const QImage &b);
