// SPDX-License-Identifier: MIT
#include "Pictures.h"

#include <algorithm>
#include <cstdlib>

namespace {

constexpr int blockSize = 8;
constexpr int visible = 24;

struct Mean
{
    int red = 0;
    int green = 0;
    int blue = 0;
};

Mean meanColor(const QImage &image, const QRect &block)
{
    Mean sum;
    for (int y = block.top(); y <= block.bottom(); ++y) {
        for (int x = block.left(); x <= block.right(); ++x) {
            const QRgb pixel = image.pixel(x, y);
            sum.red += qRed(pixel);
            sum.green += qGreen(pixel);
            sum.blue += qBlue(pixel);
        }
    }
    const int pixels = block.width() * block.height();
    return {sum.red / pixels, sum.green / pixels, sum.blue / pixels};
}

bool differs(const Mean &a, const Mean &b)
{
    return std::max({std::abs(a.red - b.red), std::abs(a.green - b.green), std::abs(a.blue - b.blue)}) > visible;
}

} // namespace

double differingBlocks(const QImage &a, const QImage &b)
{
    if (a.isNull() || a.size() != b.size())
        return 1.0;
    int blocks = 0;
    int different = 0;
    for (int y = 0; y < a.height(); y += blockSize) {
        for (int x = 0; x < a.width(); x += blockSize) {
            const QRect block = QRect(x, y, blockSize, blockSize) & a.rect();
            ++blocks;
            different += differs(meanColor(a, block), meanColor(b, block));
        }
    }
    return double(different) / blocks;
}
