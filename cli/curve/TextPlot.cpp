/// Curves as characters and numbers.

#include "cli/curve/Plot.h"
#include "headless/Text.h"

#include <cmath>
#include <iomanip>

namespace zel {

namespace {

constexpr int kColumns = 65, kRows = 25;  // odd, so that the middle has a place

int RowOf(float code) {
    return kRows - 1 - static_cast<int>(std::lround(code / 1023.0f * (kRows - 1)));
}

/// What stands where several curves meet.
char Mark(char before, char channel) { return before == ' ' || before == '.' ? channel : '*'; }

void WriteRow(const Curve& curve, std::size_t i, const char* separator, int width,
              std::ostream& out) {
    out << std::setw(width) << i;
    for (const auto& channel : curve.channel)
        out << separator << std::setw(width * 2) << Number(channel[i]);
    out << '\n';
}

}  // namespace

void PrintPlot(const Plot& plot, std::ostream& out) {
    std::vector<std::string> canvas(kRows, std::string(kColumns, ' '));
    for (int x = 0; x < kColumns; ++x) {
        const auto code = static_cast<std::size_t>(std::lround(x * 1023.0 / (kColumns - 1)));
        const auto at = [&](float v) -> char& {
            return canvas[static_cast<std::size_t>(RowOf(v))][static_cast<std::size_t>(x)];
        };
        at(static_cast<float>(code)) = '.';
        for (std::size_t c = 0; c < 3; ++c) {
            const float v = plot.curve.channel[c][code];
            if (!std::isnan(v)) at(v) = Mark(at(v), "rgb"[c]);
        }
    }
    out << plot.title << '\n' << plot.subtitle << "\n\n";
    for (int y = 0; y < kRows; ++y) {
        const bool labelled = y % 6 == 0;
        if (labelled)
            out << std::setw(5) << std::lround((kRows - 1 - y) * 1023.0 / (kRows - 1)) << " +";
        else
            out << "      |";
        out << canvas[static_cast<std::size_t>(y)] << '\n';
    }
    out << "      +" << std::string(kColumns, '-') << '\n'
        << "       0               256             512             767          1023\n"
        << "r g b: red, green, blue; *: several; .: unchanged\n\n"
        << "   in          red        green         blue\n";
    for (const std::size_t code :
         {0u, 64u, 128u, 256u, 384u, 512u, 640u, 767u, 895u, 959u, 1023u}) {
        out << std::setw(5) << code;
        for (const auto& channel : plot.curve.channel) {
            char text[32];
            std::snprintf(text, sizeof text, plot.curve.exact ? "%13.0f" : "%13.3f",
                          static_cast<double>(channel[code]));
            out << text;
        }
        out << '\n';
    }
    const auto line = [&](const char* what, const std::string& runs) {
        if (!runs.empty()) out << what << runs << '\n';
    };
    line("clipped at 0:     ", Describe(plot.curve, ClippedLow));
    line("clipped at 1023:  ", Describe(plot.curve, ClippedHigh));
    line("no number (NaN):  ", Describe(plot.curve, NaNRuns));
}

void WriteCsv(const Curve& curve, std::ostream& out) {
    out << "code,red,green,blue\n";
    for (std::size_t i = 0; i < kCurveCodes; ++i) {
        out << i;
        for (const auto& channel : curve.channel) out << ',' << Number(channel[i]);
        out << '\n';
    }
}

void WriteColumns(const Curve& curve, std::ostream& out) {
    for (std::size_t i = 0; i < kCurveCodes; ++i) WriteRow(curve, i, " ", 5, out);
}

}  // namespace zel
