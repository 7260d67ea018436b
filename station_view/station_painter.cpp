#include "station_view/station_painter.h"

#include <FL/fl_draw.H>

#include <utility>

#include "session/keyed_rows.h"

namespace {

// What a shape is painted with: its box is moved to the sheet's corner already.
struct stroke {
    const OFL_vision_sheet& sheet;
    const picture_shape& shape;
    picture_box at;
    unsigned colour;

    int right() const { return at.x + at.w - 1; }
    int bottom() const { return at.y + at.h - 1; }
};

/// The sheet's arrow is a wedge of a circle that it puts right and down of its second point: its
/// tip here is (x, y), and it opens back from the direction (dx, dy) over the length.
void head(const stroke& s, int x, int y, int dx, int dy, int length) {
    const int corner_x = x - length, corner_y = y - length;
    s.sheet.ofl_arrowbound(corner_x - dx * length, corner_y - dy * length, corner_x, corner_y,
                           s.colour);
}

// The toolkit would take "@" for the beginning of a symbol.
std::string plain(const std::string& text) {
    std::string doubled;
    for (const char byte : text) doubled += byte == '@' ? "@@" : std::string(1, byte);
    return doubled;
}

void write(const stroke& s) {
    constexpr unsigned sides[] = {FL_ALIGN_LEFT, FL_ALIGN_CENTER, FL_ALIGN_RIGHT};
    const unsigned side = sides[static_cast<int>(s.shape.side)];
    s.sheet.ofl_drw_String(side | FL_ALIGN_INSIDE, s.at.x, s.at.y, s.at.w, s.at.h, s.colour,
                           s.shape.bold ? FL_HELVETICA_BOLD : FL_HELVETICA, s.shape.text_px,
                           plain(s.shape.text));
}

struct painter_row {
    shape_kind key;
    void (*paint)(const stroke&);
};

// clang-format off
constexpr painter_row painters[] = {
    {shape_kind::fill, [](const stroke& s) { s.sheet.ofl_rectf(s.at.x, s.at.y, s.at.w, s.at.h, s.colour); }},
    {shape_kind::outline, [](const stroke& s) { s.sheet.ofl_rect(s.at.x, s.at.y, s.at.w, s.at.h, s.colour); }},
    {shape_kind::bound, [](const stroke& s) { s.sheet.ofl_rectbound(s.at.x, s.at.y, s.at.w, s.at.h, s.colour); }},
    {shape_kind::line_down, [](const stroke& s) { s.sheet.ofl_line(s.at.x, s.at.y, s.right(), s.bottom(), s.colour); }},
    {shape_kind::line_up, [](const stroke& s) { s.sheet.ofl_line(s.at.x, s.bottom(), s.right(), s.at.y, s.colour); }},
    {shape_kind::dashes_down, [](const stroke& s) { s.sheet.ofl_dash_line(s.at.x, s.at.y, s.right(), s.bottom(), s.colour); }},
    {shape_kind::dashes_up, [](const stroke& s) { s.sheet.ofl_dash_line(s.at.x, s.bottom(), s.right(), s.at.y, s.colour); }},
    {shape_kind::disc, [](const stroke& s) { s.sheet.ofl_circf(s.at.x, s.at.y, s.at.w, s.colour); }},
    {shape_kind::ring, [](const stroke& s) { s.sheet.ofl_circ(s.at.x, s.at.y, s.at.w, s.colour); }},
    {shape_kind::bound_disc, [](const stroke& s) { s.sheet.ofl_circbound(s.at.x, s.at.y, s.at.w, s.colour); }},
    {shape_kind::head_right, [](const stroke& s) { head(s, s.right(), s.at.y + s.at.h / 2, 1, 0, s.at.w); }},
    {shape_kind::head_left, [](const stroke& s) { head(s, s.at.x, s.at.y + s.at.h / 2, -1, 0, s.at.w); }},
    {shape_kind::head_up, [](const stroke& s) { head(s, s.at.x + s.at.w / 2, s.at.y, 0, -1, s.at.h); }},
    {shape_kind::head_down, [](const stroke& s) { head(s, s.at.x + s.at.w / 2, s.bottom(), 0, 1, s.at.h); }},
    {shape_kind::text, write},
};
// clang-format on
static_assert(one_row_each(painters));

}  // namespace

void paint(const station_picture& picture, const OFL_vision_sheet& sheet) {
    const auto colour = [](ink each) { return static_cast<unsigned>(rgb_of(each) << 8); };
    sheet.ofl_rectf(sheet.x0, sheet.y0, picture.w, picture.h, colour(picture.background));
    for (const picture_shape& shape : picture.shapes) {
        picture_box at = shape.box;
        at.x += sheet.x0;
        at.y += sheet.y0;
        row_of(painters, shape.kind).paint({sheet, shape, at, colour(shape.colour)});
    }
}
