#include "cli/lutfile/Cube3d.h"

#include "cli/curve/ChainCurve.h"
#include "cli/lutfile/LutFile.h"

#include <algorithm>
#include <cmath>

namespace zel {

double UnitOf(float code) {
    return std::isnan(code) ? 0.0 : static_cast<double>(std::clamp(code, 0.0f, 1023.0f)) / 1023.0;
}

double CubePoint(const Curve& curve, int channel, int point, int size) {
    const auto& table = curve.channel[static_cast<std::size_t>(channel)];
    const int scaled = point * (kCurveCodes - 1);
    const int whole = scaled / (size - 1);  // truncated, as the modules do
    if (curve.exact || whole * (size - 1) == scaled)
        return UnitOf(table[static_cast<std::size_t>(whole)]);
    return UnitOf(ValueAt(table, static_cast<float>(scaled) / static_cast<float>(size - 1)));
}

CubeError ErrorOfCube(const Curve& curve, int size3d) {
    CubeError error{-1.0, 0, 0};
    for (int c = 0; c < 3; ++c) {
        std::vector<double> points;
        for (int i = 0; i < size3d; ++i) points.push_back(CubePoint(curve, c, i, size3d));
        for (int code = 0; code < kCurveCodes; ++code) {
            const double at = static_cast<double>(code) * (size3d - 1) / (kCurveCodes - 1);
            const int below = std::min(code * (size3d - 1) / (kCurveCodes - 1), size3d - 2);
            const auto i = static_cast<std::size_t>(below);
            const double read = points[i] + (points[i + 1] - points[i]) * (at - below);
            const auto& table = curve.channel[static_cast<std::size_t>(c)];
            const double off = std::abs(read - UnitOf(table[static_cast<std::size_t>(code)]));
            if (off > error.largest) error = {off, c, code};
        }
    }
    return error;
}

}  // namespace zel
