/// The scopes as a drawing, through cairo.

#include "cli/curve/Curve.h"
#include "cli/draw/Pen.h"
#include "cli/picture/TemporaryFile.h"
#include "cli/scope/Scope.h"
#include "headless/Error.h"
#include "headless/Text.h"

#include <cmath>
#include <cstdio>
#include <cstring>

namespace zel {

namespace {

constexpr double kLeft = 64, kPanel = kScopeColumns, kGap = 18;
constexpr double kRight = kLeft + 3 * kPanel + 2 * kGap, kWidth = kRight + 34;
constexpr double kHistogramTop = 92, kHistogramBottom = 352;
constexpr double kParadeTop = 420, kParadeBottom = kParadeTop + 2.0 * kScopeLevels;
constexpr double kHeight = kParadeBottom + 34;

constexpr Colour kBackground{0.07, 0.07, 0.08}, kPlate{0.11, 0.11, 0.12};
constexpr Colour kGrid{0.24, 0.24, 0.26}, kInk{0.84, 0.84, 0.86}, kFaint{0.60, 0.60, 0.63};
constexpr Colour kChannel[3] = {{0.90, 0.26, 0.22}, {0.22, 0.72, 0.30}, {0.28, 0.45, 0.98}};
// Of these lie several on each other: all three add up to a light grey.
constexpr Colour kFilled[3] = {{0.62, 0.11, 0.10}, {0.09, 0.50, 0.13}, {0.11, 0.19, 0.70}};
constexpr int kCodes[] = {0, 256, 512, 768, 1023};

double X(double code) { return kLeft + code / 1023.0 * (kRight - kLeft); }
double Y(double code) { return kParadeBottom - code / 1023.0 * (kParadeBottom - kParadeTop); }

void Plate(const Pen& pen, double left, double top, double right, double bottom) {
    pen.Set(kPlate, 1.0);
    cairo_rectangle(pen.c(), left, top, right - left, bottom - top);
    cairo_fill(pen.c());
}

/// Filled outlines. The ends of the scale, where clipped samples pile up, do not set the
/// height; what is higher is cut off.
void DrawHistogram(const Pen& pen, const Scope& scope) {
    Plate(pen, kLeft, kHistogramTop, kRight, kHistogramBottom);
    for (const int code : kCodes) {
        pen.Set(kGrid, 1.0);
        pen.Line(X(code), kHistogramTop, X(code), kHistogramBottom);
        pen.Set(kFaint, 1.0);
        pen.Text(X(code), kHistogramBottom + 18, 11, std::to_string(code), 0.5);
    }
    std::uint64_t highest = 1;
    for (const ChannelScope& channel : scope.channel)
        for (std::size_t i = 1; i + 1 < kScopeLevels; ++i)
            highest = std::max(highest, channel.histogram[i]);

    cairo_save(pen.c());
    cairo_rectangle(pen.c(), kLeft, kHistogramTop, kRight - kLeft,
                    kHistogramBottom - kHistogramTop);
    cairo_clip(pen.c());
    cairo_set_operator(pen.c(), CAIRO_OPERATOR_ADD);
    const double step = (kRight - kLeft) / static_cast<double>(kScopeLevels);
    const double scale = (kHistogramBottom - kHistogramTop) * 0.96 / static_cast<double>(highest);
    for (std::size_t c = 0; c < 3; ++c) {
        pen.Set(kFilled[c], 1.0);
        cairo_move_to(pen.c(), kLeft, kHistogramBottom);
        for (std::size_t i = 0; i < kScopeLevels; ++i) {
            const double y =
                kHistogramBottom - scale * static_cast<double>(scope.channel[c].histogram[i]);
            cairo_line_to(pen.c(), kLeft + step * static_cast<double>(i), y);
            cairo_line_to(pen.c(), kLeft + step * static_cast<double>(i + 1), y);
        }
        cairo_line_to(pen.c(), kRight, kHistogramBottom);
        cairo_fill(pen.c());
    }
    cairo_restore(pen.c());
}

/// How bright a point of the parade is: the more samples, in steps of doubling, against
/// a column whose samples spread evenly over all levels.
double Brightness(std::uint32_t samples, double even) {
    return samples == 0 ? 0.0 : std::min(1.0, 0.3 + 0.14 * std::log2(1.0 + samples / even));
}

Surface PanelOf(const ChannelScope& channel, int columns, double even, Colour colour) {
    constexpr int levels = static_cast<int>(kScopeLevels);
    Surface panel(cairo_image_surface_create(CAIRO_FORMAT_RGB24, columns, levels),
                  cairo_surface_destroy);
    cairo_surface_flush(panel.get());
    unsigned char* const pixels = cairo_image_surface_get_data(panel.get());
    if (!pixels) throw Error(ErrorKind::Other, "no memory for the scopes");
    const int rowBytes = cairo_image_surface_get_stride(panel.get());
    for (int x = 0; x < columns; ++x)
        for (int level = 0; level < levels; ++level) {
            const double light =
                Brightness(channel.parade[static_cast<std::size_t>(x) * kScopeLevels +
                                          static_cast<std::size_t>(level)],
                           even);
            const auto part = [&](double dark, double full) {  // towards white when dense
                const double tinted = full + (1.0 - full) * 0.45 * light * light;
                return static_cast<std::uint32_t>(
                    std::lround(255.0 * (dark + (tinted - dark) * light)));
            };
            const std::uint32_t word = part(kPlate.r, colour.r) << 16 |
                                       part(kPlate.g, colour.g) << 8 | part(kPlate.b, colour.b);
            std::memcpy(pixels + std::ptrdiff_t{levels - 1 - level} * rowBytes + 4 * x, &word,
                        sizeof word);
        }
    cairo_surface_mark_dirty(panel.get());
    return panel;
}

void DrawParade(const Pen& pen, const Scope& scope) {
    const double even = static_cast<double>(scope.pixels) / scope.columns / double{kScopeLevels};
    for (std::size_t c = 0; c < 3; ++c) {
        const double left = kLeft + static_cast<double>(c) * (kPanel + kGap);
        const Surface panel = PanelOf(scope.channel[c], scope.columns, even, kChannel[c]);
        cairo_save(pen.c());
        cairo_translate(pen.c(), left, kParadeTop);
        cairo_scale(pen.c(), kPanel / scope.columns, 2.0);
        cairo_set_source_surface(pen.c(), panel.get(), 0, 0);
        cairo_pattern_set_filter(cairo_get_source(pen.c()), CAIRO_FILTER_NEAREST);
        cairo_rectangle(pen.c(), 0, 0, scope.columns, static_cast<double>(kScopeLevels));
        cairo_fill(pen.c());
        cairo_restore(pen.c());
        cairo_save(pen.c());
        cairo_set_operator(pen.c(), CAIRO_OPERATOR_LIGHTEN);
        pen.Set(kGrid, 1.0);
        for (const int code : kCodes) pen.Line(left, Y(code), left + kPanel, Y(code));
        cairo_restore(pen.c());
    }
    pen.Set(kFaint, 1.0);
    for (const int code : kCodes) pen.Text(kLeft - 8, Y(code) + 4, 11, std::to_string(code), 1.0);
}

/// What of the channel lies at the ends of the scale, and its middle.
std::string FiguresOf(const ChannelScope& channel, std::uint64_t pixels) {
    const auto all = static_cast<double>(pixels);
    char text[128];
    std::snprintf(text, sizeof text, "mean %.0f, at 0: %.2f %%, at 1023: %.2f %%",
                  channel.sum / all * 1023.0, 100.0 * static_cast<double>(channel.atBlack) / all,
                  100.0 * static_cast<double>(channel.atWhite) / all);
    return text;
}

void Draw(const Scope& scope, const std::string& title, cairo_surface_t* surface) {
    const Pen pen(surface);
    pen.Set(kBackground, 1.0);
    cairo_paint(pen.c());
    pen.Set(kInk, 1.0);
    pen.Text(kLeft, 32, 16, title);
    for (std::size_t c = 0; c < 3; ++c) {
        const double left = kLeft + static_cast<double>(c) * (kPanel + kGap);
        pen.Set(kChannel[c], 1.0);
        pen.Text(left, 62, 12.5, kChannelNames[c]);
        pen.Set(kFaint, 1.0);
        pen.Text(left, 80, 11, FiguresOf(scope.channel[c], scope.pixels));
    }
    DrawHistogram(pen, scope);
    pen.Set(kFaint, 1.0);
    pen.Text(kLeft, kParadeTop - 14, 11, "codes by column of the picture");
    DrawParade(pen, scope);
}

}  // namespace

void DrawScope(const Scope& scope, const std::string& title, const std::filesystem::path& file) {
    if (Lower(file.extension().string()) != ".png")
        throw Error(ErrorKind::Usage,
                    "cannot write '" + file.string() + "': the suffix must be .png");
    TemporaryFile temporary(file);
    const Surface surface(cairo_image_surface_create(CAIRO_FORMAT_RGB24, static_cast<int>(kWidth),
                                                     static_cast<int>(kHeight)),
                          cairo_surface_destroy);
    Draw(scope, title, surface.get());
    const cairo_status_t status =
        cairo_surface_write_to_png(surface.get(), temporary.Path().string().c_str());
    if (status != CAIRO_STATUS_SUCCESS)
        throw Error(ErrorKind::Other,
                    "cannot write '" + file.string() + "': " + cairo_status_to_string(status));
    temporary.Commit();
}

}  // namespace zel
