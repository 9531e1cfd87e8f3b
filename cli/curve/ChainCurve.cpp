#include "cli/curve/ChainCurve.h"

#include <algorithm>
#include <cmath>

namespace zel {

float ValueAt(const std::array<float, kCurveCodes>& table, float code) {
    if (std::isnan(code)) return code;
    const float at = std::clamp(code, 0.0f, 1023.0f);
    const auto below = static_cast<std::size_t>(at);
    const float part = at - static_cast<float>(below);
    if (part == 0.0f) return table[below];
    return table[below] + (table[below + 1] - table[below]) * part;
}

Curve Composed(const Curve& first, const Curve& then) {
    Curve curve;
    curve.exact = first.exact && then.exact;
    for (std::size_t c = 0; c < curve.channel.size(); ++c)
        for (std::size_t i = 0; i < kCurveCodes; ++i)
            curve.channel[c][i] = ValueAt(then.channel[c], first.channel[c][i]);
    return curve;
}

Curve CurveOf(const Chain& chain, bool exact) {
    const auto curveOf = [=](const ChainLink& link) {
        return exact ? ExactCurve(link.session, link.values)
                     : FloatCurve(link.session, link.values);
    };
    Curve curve = curveOf(chain.front());
    for (std::size_t i = 1; i < chain.size(); ++i) curve = Composed(curve, curveOf(chain[i]));
    return curve;
}

}  // namespace zel
