/// Curves as drawings, through cairo: one set of strokes for SVG and PNG.

#include "cli/curve/Plot.h"
#include "cli/draw/Pen.h"
#include "cli/picture/TemporaryFile.h"
#include "headless/Error.h"
#include "headless/Text.h"

#include <cairo-svg.h>

#include <algorithm>
#include <cmath>
#include <fstream>

namespace zel {

namespace {

constexpr double kWidth = 700, kHeight = 776;
constexpr double kLeft = 70, kTop = 84, kSide = 600;  // the square of the codes
constexpr double kRight = kLeft + kSide, kBottom = kTop + kSide;

// They multiply where curves meet: all three make a dark grey.
constexpr Colour kChannel[3] = {{0.90, 0.22, 0.20}, {0.20, 0.68, 0.28}, {0.22, 0.42, 0.92}};
constexpr Colour kInk{0.20, 0.20, 0.22}, kGrid{0.88, 0.88, 0.88}, kFaint{0.55, 0.55, 0.55};

double X(double code) { return kLeft + code / 1023.0 * kSide; }
double Y(double code) { return kBottom - code / 1023.0 * kSide; }

void DrawAxes(const Pen& pen) {
    for (const int code : {0, 128, 256, 384, 512, 640, 768, 896, 1023}) {
        pen.Set(kGrid, 1.0);
        pen.Line(X(code), kTop, X(code), kBottom);
        pen.Line(kLeft, Y(code), kRight, Y(code));
        pen.Set(kInk, 1.0);
        pen.Text(X(code), kBottom + 26, 11, std::to_string(code), 0.5);
        pen.Text(kLeft - 8, Y(code) + 4, 11, std::to_string(code), 1.0);
    }
    pen.Text(kLeft + kSide / 2, kBottom + 44, 12, "input code", 0.5);
    cairo_save(pen.c());
    cairo_translate(pen.c(), 20, kTop + kSide / 2);
    cairo_rotate(pen.c(), -M_PI / 2);
    pen.Text(0, 0, 12, "output code", 0.5);
    cairo_restore(pen.c());
    pen.Set(kFaint, 1.2, 6.0);
    pen.Line(X(0), Y(0), X(1023), Y(1023));
}

/// Reference codes: lines across the axis that carries the log codes.
void DrawReferences(const Pen& pen, const LogReferences& references) {
    const auto line = [&](float code, const char* name, std::size_t c, bool all) {
        pen.Set(all ? kInk : kChannel[c], 1.0, 3.0);
        const std::string text = std::string(name) + " " + Number(code);
        const double offset = all ? 0.0 : 14.0 * static_cast<double>(c);
        if (references.onOutput) {
            pen.Line(kLeft, Y(code), kRight, Y(code));
            pen.Text(kRight - 6, Y(code) - 5 - offset, 11, text, 1.0);
        } else {
            pen.Line(X(code), kTop, X(code), kBottom);
            pen.Text(X(code) + 5, kTop + 16 + offset, 11, text);
        }
    };
    const auto lines = [&](const std::array<float, 3>& codes, const char* name) {
        const bool all = codes[0] == codes[1] && codes[0] == codes[2];
        for (std::size_t c = 0; c < (all ? 1u : 3u); ++c) line(codes[c], name, c, all);
    };
    lines(references.black, "black reference");
    lines(references.white, "white reference");
}

void DrawCurve(const Pen& pen, const Curve& curve, std::size_t c) {
    pen.Set(kChannel[c], 2.0);
    bool drawing = false;
    for (int i = 0; i < kCurveCodes; ++i) {
        const float v = curve.channel[c][static_cast<std::size_t>(i)];
        if (std::isnan(v)) {
            drawing = false;
            continue;
        }
        if (drawing)
            cairo_line_to(pen.c(), X(i), Y(v));
        else
            cairo_move_to(pen.c(), X(i), Y(v));
        drawing = true;
    }
    cairo_stroke(pen.c());
}

/// Clipped runs as thick strokes outside of the square, one lane per channel; codes
/// without a result as crosses below it.
void DrawLosses(const Pen& pen, const Curve& curve, int c) {
    const double lane = 3.5 + 4.0 * c;
    pen.Set(kChannel[static_cast<std::size_t>(c)], 3.0);
    for (const CodeRun& run : ClippedLow(curve, c))
        pen.Line(X(run.first), kBottom + lane, X(run.last), kBottom + lane);
    for (const CodeRun& run : ClippedHigh(curve, c))
        pen.Line(X(run.first), kTop - lane, X(run.last), kTop - lane);
    pen.Set(kChannel[static_cast<std::size_t>(c)], 1.2);
    for (const CodeRun& run : NaNRuns(curve, c))
        for (double x = X(run.first); x <= X(run.last); x += 12) {
            const double y = kBottom - 8 - 9.0 * c;
            pen.Line(x - 3, y - 3, x + 3, y + 3);
            pen.Line(x - 3, y + 3, x + 3, y - 3);
        }
}

void DrawLegend(const Pen& pen, const Plot& plot) {
    pen.Set(kInk, 1.0);
    pen.Text(kLeft, 26, 16, plot.title);
    pen.Paragraph(kLeft, 45, 11.5, kSide, plot.subtitle);
    std::string losses;
    const auto add = [&](const char* what, const std::string& runs) {
        if (!runs.empty()) losses += (losses.empty() ? "" : "    ") + (what + runs);
    };
    add("clipped at 0: ", Describe(plot.curve, ClippedLow));
    add("clipped at 1023: ", Describe(plot.curve, ClippedHigh));
    add("no number (crosses): ", Describe(plot.curve, NaNRuns));
    pen.Text(kLeft, kBottom + 68, 11.5, losses);
}

void Draw(const Plot& plot, cairo_surface_t* surface) {
    const Pen pen(surface);
    cairo_set_source_rgb(pen.c(), 1, 1, 1);
    cairo_paint(pen.c());
    DrawAxes(pen);
    if (plot.references) DrawReferences(pen, *plot.references);
    DrawLegend(pen, plot);
    cairo_set_operator(pen.c(), CAIRO_OPERATOR_MULTIPLY);
    for (int c = 0; c < 3; ++c) {
        DrawCurve(pen, plot.curve, static_cast<std::size_t>(c));
        DrawLosses(pen, plot.curve, c);
    }
}

cairo_status_t Append(void* stream, const unsigned char* data, unsigned length) {
    auto& out = *static_cast<std::ofstream*>(stream);
    out.write(reinterpret_cast<const char*>(data), static_cast<std::streamsize>(length));
    return out ? CAIRO_STATUS_SUCCESS : CAIRO_STATUS_WRITE_ERROR;
}

}  // namespace

void DrawPlot(const Plot& plot, const std::filesystem::path& file) {
    TemporaryFile temporary(file);
    const std::string path = temporary.Path().string();
    cairo_status_t status;
    if (Lower(file.extension().string()) == ".svg") {
        // The library does not look at what closing a file of its own comes to.
        std::ofstream out(path, std::ios::binary);
        const Surface surface(cairo_svg_surface_create_for_stream(Append, &out, kWidth, kHeight),
                              cairo_surface_destroy);
        Draw(plot, surface.get());
        cairo_surface_finish(surface.get());
        status = cairo_surface_status(surface.get());
        out.close();
        if (!out) status = CAIRO_STATUS_WRITE_ERROR;
    } else {
        const Surface surface(
            cairo_image_surface_create(CAIRO_FORMAT_RGB24, static_cast<int>(kWidth),
                                       static_cast<int>(kHeight)),
            cairo_surface_destroy);
        Draw(plot, surface.get());
        status = cairo_surface_write_to_png(surface.get(), path.c_str());
    }
    if (status != CAIRO_STATUS_SUCCESS)
        throw Error(ErrorKind::Other,
                    "cannot write '" + file.string() + "': " + cairo_status_to_string(status));
    temporary.Commit();
}

}  // namespace zel
