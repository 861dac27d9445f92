// SPDX-License-Identifier: MIT
#include "Envelope.h"

#include <algorithm>

//! [destructor]
Envelope::~Envelope()
{
    withdraw(); // first thing in every node's destructor: no other object reaches it from here on
}
//! [destructor]

//! [setter]
void Envelope::setDecay(double decay)
{
    if (decay == m_decay)
        return;
    m_decay = decay;
    filterAgain(); // the input that came last, not the result: that would be filtered twice
    emit decayChanged();
}
//! [setter]

//! [filter]
bool Envelope::_filter_func(const QVector<double> &data)
{
    QVector<double> envelope = data;
    double peak = 0.0;
    for (double &value : envelope) {
        peak = std::max(value, peak * m_decay);
        value = peak;
    }
    return Filter1D::_filter_func(envelope); // stores it and says whether it differs from before
}
//! [filter]
