// Puts a picture together: places on the station become pixels, and nothing lies outside.
//
// Horizontally a place is in millimetres along the belts, to scale, and an offset from it in
// units: a unit is the height of the names. Vertically a place is in rows, of which there are 30; a
// row is at least a unit high. So names that do not touch on the smallest picture touch on none.
#pragma once
#include <string>

#include "station_view/station_picture.h"

class picture_builder {
public:
    picture_builder(int w, int h);

    /// What is added from here on shows this thing.
    void begin(std::string name, std::string sentence);
    /// What is added from here on shows nothing that can be pointed at.
    void begin_nothing() { thing_ = -1; }
    void background(ink colour) { picture_.background = colour; }

    int w() const { return picture_.w; }
    int h() const { return picture_.h; }
    /// The pixel of a place along the belts, from -400 to 1280 mm, beyond them at the nearest one;
    /// and so many units further right.
    int x(double mm, double units = 0) const;
    /// The pixel of a row.
    int y(double row) const;
    /// So many units in whole pixels, at least one.
    int px(double units) const;
    /// The size of a text that is so many units high: whole pixels, never more than that.
    int text_px(double units) const;

    /// Rectangles and arrow heads, from edge to edge; what lies outside the picture is cut off.
    void bar(shape_kind kind, ink colour, int x0, int y0, int x1, int y1);
    /// A disc or ring around a centre.
    void disc(shape_kind kind, ink colour, int centre_x, int centre_y, int side);
    /// A line from point to point, both drawn; dashed if asked for.
    void line(ink colour, int x0, int y0, int x1, int y1, bool dashed = false);
    /// One line of text, its middle at a height; `at_x` is its left end, its middle or its right
    /// end. Cut to `most_px` where it would be longer; 0 for no such limit.
    void text(const std::string& text, int at_x, int middle_y, text_side side = text_side::left,
              ink colour = ink::black, double units = 1, bool bold = false, int most_px = 0);

    /// The picture; the builder is empty afterwards.
    station_picture take() { return std::move(picture_); }

private:
    void add(const picture_shape& shape);

    station_picture picture_;
    int thing_ = -1;
    double unit_, row_;
};

/// How wide a text is at most in the drawing's typeface, in pixels: by its characters, since a
/// picture knows no display.
int text_width_px(const std::string& text, int size_px, bool bold = false);

/// The text, or as much of its beginning as there is room for, with an ellipsis.
std::string fitted(const std::string& text, int size_px, bool bold, int most_px);

/// A fraction as a drawing can take it: 0 to 1, 0 for what is no number.
double fraction_of(double value);
