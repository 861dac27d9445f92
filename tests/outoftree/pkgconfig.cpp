// SPDX-License-Identifier: MIT
// A filter without moc, built with the flags of the pkg-config file: doubles every number.
#include "filters/Filter1D.h"

#include <cstdio>

class Doubler : public Filter1D
{
public:
    ~Doubler() override { withdraw(); }

protected:
    bool _filter_func(const QVector<double> &data) override
    {
        QVector<double> doubled = data;
        for (double &value : doubled)
            value *= 2.0;
        return Filter1D::_filter_func(doubled);
    }
};

int main()
{
    Filter1D source;
    Doubler doubler;
    source.addFilter(&doubler);
    source.setData({1.0, -2.5, 4.0});
    const bool right = doubler.data() == QVector<double>{2.0, -5.0, 8.0};
    std::puts(right ? "doubled" : "wrong numbers");
    return right ? 0 : 1;
}
