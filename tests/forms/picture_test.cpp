// One picture with every drawing operation, on a real display, read back pixel by pixel.

// Before the toolkit's headers, which bring the X server's macros.
#include <gtest/gtest.h>

#include <FL/Fl.H>
#include <FL/Fl_Double_Window.H>
#include <FL/Fl_Window.H>

#include <memory>

#include "forms/drawing.h"
#include "forms/vision_sheet.h"
#include "forms/widget_shortcuts.h"
#include "tests/forms/screen_picture.h"

namespace {

constexpr int window_px = 400;

/// The left half is drawn without a sheet, the right half on a sheet from (200, 0) to (400, 300).
class picture : public Fl_Window {
public:
    picture() : Fl_Window(window_px, window_px, "picture") { end(); }

    void draw() override {
        fl_rectf(0, 0, w(), h(), FL_WHITE);
        fl_ovalf(10, 10, 80, 40, FL_RED);
        fl_circf(100, 10, 40, FL_GREEN);
        fl_rectbound(10, 60, 80, 30, FL_YELLOW);
        fl_line(10, 100, 190, 100, FL_BLUE);
        fl_drw_String(FL_ALIGN_CENTER, 10, 110, 100, 40, FL_RED, 24, FL_HELVETICA_BOLD, "HHHH");

        OFL_vision_sheet sheet;
        sheet.define(200, 0, 200, 300, FL_BLACK);
        sheet.ofl_line(150, 20, 390, 20, FL_BLUE);
        sheet.ofl_dash_line(210, 30, 390, 30, FL_BLUE);
        sheet.ofl_break_line(220, 60, 260, 60, FL_RED);
        sheet.ofl_rect(290, 40, 40, 40, FL_RED);
        sheet.ofl_rectf(340, 40, 40, 40, FL_GREEN);
        sheet.ofl_rectbound(210, 100, 40, 40, FL_YELLOW);
        sheet.ofl_circ(260, 100, 40, FL_RED);
        sheet.ofl_circf(310, 100, 40, FL_GREEN);
        sheet.ofl_circbound(355, 100, 40, FL_YELLOW);
        sheet.ofl_arrowbound(220, 150, 250, 150, FL_RED);
        sheet.ofl_drw_arrow_line(320, 170, 390, 170, 20, 0.5, FL_BLUE);
        sheet.ofl_drw_text(FL_ALIGN_CENTER, 210, 220, 80, 30, FL_RED, 24, FL_HELVETICA_BOLD, "HHH");
        sheet.ofl_drw_String(FL_ALIGN_CENTER, 310, 220, 80, 30, FL_BLUE, FL_HELVETICA_BOLD, 24,
                             "HHH");
        sheet.ofl_rectf(150, 280, 300, 80, FL_MAGENTA);  // most of it beyond the sheet
        sheet.resize(0, 0, 0, 0);
        sheet.ofl_rectf(20, 320, 40, 40, FL_CYAN);  // no longer clipped
    }
};

class Picture : public testing::Test {
protected:
    Picture() {
        window.show();
        window.wait_for_expose();
        Fl::check();
        XSync(fl_display, False);
        seen = std::make_unique<screen_picture>(area(display, window));
    }

    screen display;
    picture window;
    std::unique_ptr<screen_picture> seen;
};

const struct {
    const char* what;
    int x, y;
    Fl_Color colour;
} points[] = {
    {"inside the oval", 50, 30, FL_RED},
    {"near the oval's left end", 13, 30, FL_RED},
    {"the corner of the oval's box", 12, 12, FL_WHITE},
    {"inside the disc", 120, 30, FL_GREEN},
    {"the disc's left", 102, 30, FL_GREEN},
    {"the disc's right", 137, 30, FL_GREEN},
    {"the corner of the disc's square", 102, 12, FL_WHITE},
    {"right of the disc", 143, 30, FL_WHITE},
    {"inside the bound rectangle", 50, 75, FL_YELLOW},
    {"its first corner", 10, 60, FL_BLACK},
    {"its last corner", 89, 89, FL_BLACK},
    {"outside it", 90, 90, FL_WHITE},
    {"the line's start", 10, 100, FL_BLUE},
    {"the line's end", 190, 100, FL_BLUE},

    {"the sheet's line, outside the sheet", 199, 20, FL_WHITE},
    {"the sheet's line, at its edge", 200, 20, FL_BLUE},
    {"the sheet's line, inside", 390, 20, FL_BLUE},
    {"the break's first corner", 230, 80, FL_RED},
    {"the break's second corner", 250, 40, FL_RED},
    {"the break's middle", 240, 60, FL_RED},
    {"the outline's corner", 290, 40, FL_RED},
    {"inside the outline", 310, 60, FL_WHITE},
    {"the full rectangle", 340, 40, FL_GREEN},
    {"the full rectangle's end", 379, 79, FL_GREEN},
    {"past the full rectangle", 380, 80, FL_WHITE},
    {"the sheet's bound rectangle", 230, 120, FL_YELLOW},
    {"its corner", 210, 100, FL_BLACK},
    {"inside the circle", 280, 120, FL_WHITE},
    {"inside the sheet's disc", 330, 120, FL_GREEN},
    {"inside the bound circle", 375, 120, FL_YELLOW},
    // The wedge opens to the left of the centre of the square from (250, 150) to (310, 210).
    {"inside the wedge", 260, 180, FL_RED},
    {"the other side of its circle", 300, 180, FL_WHITE},
    {"above the wedge", 280, 160, FL_WHITE},
    {"the arrow's shaft", 330, 170, FL_BLUE},
    {"the arrow's first barb", 373, 161, FL_BLUE},
    {"the arrow's second barb", 373, 179, FL_BLUE},

    {"the large rectangle, inside the sheet", 300, 290, FL_MAGENTA},
    {"the large rectangle, at the sheet's edge", 200, 299, FL_MAGENTA},
    {"left of the sheet", 199, 290, FL_WHITE},
    {"below the sheet", 300, 300, FL_WHITE},
    {"without a sheet again", 40, 340, FL_CYAN},
    {"nothing drawn", 100, 250, FL_WHITE},
};

TEST_F(Picture, HasEachPrimitiveInItsPlace) {
    for (const auto& [what, x, y, colour] : points) {
        EXPECT_EQ(seen->at(x, y), screen_colour(colour)) << what << " at " << x << ", " << y;
    }
}

TEST_F(Picture, HasTheLinesAndTextsThatNoSinglePixelShows) {
    const int dashes = seen->count(210, 30, 181, 1, screen_colour(FL_BLUE));
    EXPECT_GT(dashes, 60) << "the dashes";
    EXPECT_LT(dashes, 170) << "and the gaps between them";
    EXPECT_GT(seen->count(259, 99, 43, 43, screen_colour(FL_RED)), 60) << "the circle";
    EXPECT_GT(seen->count(354, 99, 43, 43, screen_colour(FL_BLACK)), 60)
        << "the bound circle's outline";
    EXPECT_GT(seen->count(10, 110, 100, 40, screen_colour(FL_RED)), 150)
        << "the text without a sheet";
    EXPECT_GT(seen->count(210, 220, 80, 30, screen_colour(FL_RED)), 100) << "the sheet's text";
    EXPECT_GT(seen->count(310, 220, 80, 30, screen_colour(FL_BLUE)), 100) << "the sheet's string";
    EXPECT_EQ(seen->count(210, 260, 190, 20, screen_colour(FL_WHITE)), 190 * 20) << "nothing there";
}

}  // namespace
