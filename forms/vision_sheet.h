// The drawing sheet: primitives that stay within a rectangle.
//
// Coordinates are pixels of the window being drawn, in every place: the sheet moves and scales
// nothing, it only clips. Colours are the toolkit's colour indices.
#pragma once
#include <FL/Enumerations.H>

#include <string>

/// A sheet is active, and clips, when x1 > x0 and y1 > y0; otherwise it draws anywhere. Each
/// primitive pushes the clip, sets its colour, draws, and pops the clip: the clip is after as it
/// was before, the current colour and font are not. Only within a widget's draw(). A sheet owns
/// nothing and may be copied.
///
///     OFL_vision_sheet sheet;
///     sheet.define(0, 0, 100, 50, FL_BLACK);
///     sheet.ofl_rectbound(10, 10, 200, 100, FL_YELLOW);  // cut off at 100 and at 50
class OFL_vision_sheet {
public:
    int x0 = 0;                               ///< Left edge.
    int y0 = 0;                               ///< Top edge.
    int x1 = 0;                               ///< Right edge, outside: x0 + width.
    int y1 = 0;                               ///< Bottom edge, outside: y0 + height.
    int colour = static_cast<int>(FL_BLACK);  ///< Kept for callers; no primitive uses it.

    /// Sets the four edges and the stored colour.
    void define(int x, int y, int w, int h, int new_colour);
    /// Sets the four edges.
    void resize(int x, int y, int w, int h);

    /// A line from a to b, both ends drawn.
    void ofl_line(int ax, int ay, int bx, int by, unsigned line_colour) const;
    /// A dashed line of the thinnest width. The line style is the solid one afterwards.
    void ofl_dash_line(int ax, int ay, int bx, int by, unsigned line_colour) const;
    /// A break symbol: three lines, through the points a quarter and three quarters of the way,
    /// pushed to either side by half the length of the segment. Divisions truncate toward zero.
    void ofl_break_line(int ax, int ay, int bx, int by, unsigned line_colour) const;

    /// The outline of a rectangle, then a filled one.
    void ofl_rect(int x, int y, int w, int h, unsigned line_colour) const;
    void ofl_rectf(int x, int y, int w, int h, unsigned fill_colour) const;
    /// Filled, then outlined in FL_BLACK.
    void ofl_rectbound(int x, int y, int w, int h, unsigned fill_colour) const;

    /// A circle in the square of side `r` whose top left corner is (x, y), as for fl_circf:
    /// outlined, filled, or filled and outlined in FL_BLACK.
    void ofl_circ(int x, int y, int r, unsigned line_colour) const;
    void ofl_circf(int x, int y, int r, unsigned fill_colour) const;
    void ofl_circbound(int x, int y, int r, unsigned fill_colour) const;

    /// A filled wedge of 40 degrees, its radius the length of the segment from a to b, opening back
    /// along it. Its point is not at b: b is the top left corner of the square around the wedge's
    /// whole circle. No outline; the current colour is FL_BLACK afterwards.
    void ofl_arrowbound(int ax, int ay, int bx, int by, unsigned fill_colour) const;

    /// A line from a to b with two barbs of `barb_px`
    /// pixels at b, each `barb_angle` radians off the line.
    void ofl_drw_arrow_line(int ax, int ay, int bx, int by, int barb_px, double barb_angle,
                            unsigned line_colour) const;

    /// A text in a box, with an alignment (a mask of Fl_Align) and with "@" symbols. Note the
    /// order: size, font.
    void ofl_drw_text(unsigned align, int x, int y, int w, int h, unsigned text_colour, int size,
                      int font, const char* text) const;
    /// The same for a string. Note the order: font, size,
    /// the opposite of ofl_drw_text and fl_drw_String.
    void ofl_drw_String(unsigned align, int x, int y, int w, int h, unsigned text_colour, int font,
                        int size, const std::string& text) const;
};
