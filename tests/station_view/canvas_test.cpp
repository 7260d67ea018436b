// The drawing as a widget, in a window on a real display.

// Before the toolkit's headers, which bring the X server's macros.
#include <gtest/gtest.h>

#include <FL/Fl.H>
#include <FL/Fl_Double_Window.H>
#include <FL/Fl_Tooltip.H>
#include <FL/x.H>

#include <chrono>
#include <functional>

#include "station_view/station_canvas.h"
#include "tests/forms/screen_picture.h"
#include "tests/station_view/looking.h"
#include "tests/station_view/scenes.h"

namespace {

bool tooltip_is_up() {
    for (Fl_Window* each = Fl::first_window(); each; each = Fl::next_window(each))
        if (each->tooltip_window()) return true;
    return false;
}

class Canvas : public testing::Test {
protected:
    Canvas() {
        window.resizable(canvas);
        window.end();
        window.show();
        window.wait_for_expose();
        settle();
    }

    /// Lets the toolkit do all that it has to do.
    void settle() {
        for (int i = 0; i < 5; ++i) Fl::wait(0.02);
        XSync(fl_display, False);
    }

    bool wait_until(const std::function<bool()>& done) {
        const auto start = std::chrono::steady_clock::now();
        while (!done() && std::chrono::steady_clock::now() - start < std::chrono::seconds(20))
            Fl::wait(0.02);
        return done();
    }

    /// Whether the screen has the lamp of b1s, lit, in its place.
    bool shows_a_lamp() {
        const screen_picture seen(area(display, window));
        const picture_box lamp = shapes_of(canvas.picture(), "b1s").front().box;
        return seen.at(50 + lamp.x + lamp.w / 2, 50 + lamp.y + lamp.h / 2) == 0xFF0000UL;
    }

    /// Moves the pointer into the middle of a shape of that thing.
    void point_at(std::string_view thing) {
        const picture_box box = shapes_of(canvas.picture(), thing).front().box;
        XWarpPointer(fl_display, None, fl_xid(&window), 0, 0, 0, 0, canvas.x() + box.x + box.w / 2,
                     canvas.y() + box.y + box.h / 2);
        XSync(fl_display, False);
    }

    screen display;
    Fl_Double_Window window{1100, 400, "station"};
    station_canvas canvas{50, 50, 1000, 300};
};

TEST_F(Canvas, PaintsItsSceneAtItsPlace) {
    canvas.show(scene_at_work());
    settle();
    ASSERT_TRUE(wait_until([this] { return shows_a_lamp(); }));
    const screen_picture seen(area(display, window));
    EXPECT_EQ(seen.at(51, 51), rgb_of(ink::paper));
    EXPECT_EQ(seen.at(1048, 348), rgb_of(ink::paper));
    EXPECT_NE(seen.at(20, 20), rgb_of(ink::paper));
}

TEST_F(Canvas, PaintsAgainOnlyWhenThePictureDiffers) {
    station_scene scene = scene_at_work();
    canvas.show(scene);
    settle();
    // What the display still had to tell of the window's coming up has been told.
    for (int painted = -1; painted != canvas.paintings(); settle()) painted = canvas.paintings();
    const int before = canvas.paintings();
    for (int i = 0; i < 20; ++i) {
        scene.state.time_s += 0.01;
        canvas.show(scene);
        settle();
    }
    scene.state.bases[0].front_mm += 0.001;  // less than a pixel
    canvas.show(scene);
    settle();
    EXPECT_EQ(canvas.paintings(), before);
    scene.state.bases[1].front_mm += 20;
    canvas.show(scene);
    settle();
    EXPECT_EQ(canvas.paintings(), before + 1);
}

TEST_F(Canvas, AResizeScalesItAndItsTexts) {
    canvas.show(scene_at_work());
    const int before = shapes_of(canvas.picture(), "te").back().text_px;
    window.size(1300, 700);
    ASSERT_TRUE(wait_until([this] { return canvas.w() == 1200 && canvas.h() == 600; }));
    settle();
    EXPECT_EQ(canvas.picture(), draw_station(scene_at_work(), 1200, 600));
    EXPECT_EQ(before, 10);
    EXPECT_EQ(shapes_of(canvas.picture(), "te").back().text_px, 12);
    EXPECT_TRUE(wait_until([this] { return shows_a_lamp(); }));
}

TEST_F(Canvas, TellsWhatIsPointedAt) {
    canvas.show(scene_at_work());
    settle();
    for (const char* thing : {"te", "MONP", "magazine"}) {
        point_at(thing);
        ASSERT_TRUE(wait_until([&] {
            const picture_thing* const at = canvas.pointed_at();
            return at && at->name == thing;
        })) << thing;
        EXPECT_TRUE(wait_until(tooltip_is_up)) << thing;
    }
    XWarpPointer(fl_display, None, fl_xid(&window), 0, 0, 0, 0, 10, 10);
    EXPECT_TRUE(wait_until([this] { return !canvas.pointed_at(); }));
    EXPECT_TRUE(wait_until([] { return !tooltip_is_up(); }));
}

TEST_F(Canvas, TellsAnewWhatChangesBelowARestingPointer) {
    station_scene scene = scene_at_work();
    canvas.show(scene);
    settle();
    // The toolkit keeps the text's address, and says whose tooltip it has.
    const auto told = [this] {
        return Fl_Tooltip::current() == &canvas ? canvas.told() : std::string();
    };
    point_at("te");
    ASSERT_TRUE(wait_until([&] { return told().starts_with("te"); }));
    ASSERT_TRUE(wait_until(tooltip_is_up));
    const std::string before = told();
    scene.sensors[static_cast<std::size_t>(station_input::te)] = 7;
    canvas.show(scene);
    EXPECT_NE(told(), before);
    EXPECT_NE(told().find("7"), std::string::npos) << told();
    EXPECT_TRUE(wait_until(tooltip_is_up)) << "it comes up again by itself";
    scene.state.bases[1].front_mm += 1;
    canvas.show(scene);
    settle();
    EXPECT_TRUE(tooltip_is_up()) << "what moves elsewhere leaves it alone";
    scene.english = true;
    canvas.show(scene);
    EXPECT_NE(told().find("Value received: 7"), std::string::npos) << told();
    EXPECT_TRUE(wait_until(tooltip_is_up));
}

TEST_F(Canvas, TooltipsGrowWithTheNames) {
    window.resize(0, 0, 1850, 1000);
    ASSERT_TRUE(wait_until([this] { return canvas.w() == 1750; }));
    settle();
    ASSERT_EQ(canvas.picture().name_px, 17);
    point_at("te");
    ASSERT_TRUE(wait_until([this] { return canvas.pointed_at() != nullptr; }));
    EXPECT_EQ(Fl_Tooltip::size(), 17);
}

TEST_F(Canvas, CanGoWhileItsTooltipIsUp) {
    auto* const other = new station_canvas(0, 0, 1000, 40);
    window.add(other);
    canvas.show(scene_at_work());
    settle();
    point_at("te");
    ASSERT_TRUE(wait_until([this] { return canvas.pointed_at() != nullptr; }));
    delete other;
    settle();
    EXPECT_GT(canvas.paintings(), 0);
}

}  // namespace
