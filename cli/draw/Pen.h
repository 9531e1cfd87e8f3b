#pragma once

/// Drawing with cairo: colours, lines and text.

#include <cairo.h>

#include <algorithm>
#include <memory>
#include <string>

namespace zel {

using Surface = std::unique_ptr<cairo_surface_t, void (*)(cairo_surface_t*)>;

struct Colour {
    double r, g, b;
};

class Pen {
public:
    explicit Pen(cairo_surface_t* surface) : m_cairo(cairo_create(surface), cairo_destroy) {
        cairo_select_font_face(c(), "DejaVu Sans", CAIRO_FONT_SLANT_NORMAL,
                               CAIRO_FONT_WEIGHT_NORMAL);
    }

    cairo_t* c() const { return m_cairo.get(); }

    void Set(Colour colour, double width, double dash = 0.0) const {
        cairo_set_source_rgb(c(), colour.r, colour.g, colour.b);
        cairo_set_line_width(c(), width);
        cairo_set_dash(c(), &dash, dash > 0.0 ? 1 : 0, 0.0);
    }

    void Line(double x0, double y0, double x1, double y1) const {
        cairo_move_to(c(), x0, y0);
        cairo_line_to(c(), x1, y1);
        cairo_stroke(c());
    }

    /// `anchor` 0: text starts at x, 0.5: centred, 1: ends at x.
    void Text(double x, double y, double size, const std::string& text, double anchor = 0.0) const {
        cairo_move_to(c(), x - anchor * Advance(size, text), y);
        cairo_show_text(c(), text.c_str());
    }

    /// Text in lines of at most `width`, broken behind commas.
    void Paragraph(double x, double y, double size, double width, const std::string& text) const {
        std::string line;
        for (std::size_t begin = 0; begin < text.size();) {
            const std::size_t comma = std::min(text.find(", ", begin), text.size() - 1);
            const std::string piece = text.substr(begin, comma + 1 - begin);
            if (!line.empty() && Advance(size, line + piece) > width) {
                Text(x, y, size, line);
                y += 1.25 * size;
                line.clear();
            }
            line += line.empty() && piece.starts_with(' ') ? piece.substr(1) : piece;
            begin = comma + 1;
        }
        Text(x, y, size, line);
    }

private:
    double Advance(double size, const std::string& text) const {
        cairo_set_font_size(c(), size);
        cairo_text_extents_t extents;
        cairo_text_extents(c(), text.c_str(), &extents);
        return extents.x_advance;
    }

    std::unique_ptr<cairo_t, void (*)(cairo_t*)> m_cairo;
};

}  // namespace zel
