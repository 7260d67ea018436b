// The faults that are ticked in the window while it runs, as the panel shows them.
#include <gtest/gtest.h>

#include "session/faults.h"
#include "station_view/manual_station.h"
#include "tests/station_view/window_on_display.h"

namespace {

namespace layout = window_layout;

TEST_F(WindowOnDisplay, ATickSetsAFaultAndAnotherOneEndsIt) {
    start();
    ASSERT_TRUE(panel_shows("b1e", red));
    click(fault_box(0, 0));
    EXPECT_TRUE(panel_shows("b1e", blue));
    EXPECT_EQ(live->told("pannes"), "b1e=stuck0");
    click(fault_box(0, 1));
    EXPECT_TRUE(panel_shows("b1e", red));
    EXPECT_EQ(live->told("pannes"), "b1e=stuck1") << "one fault a name";
    click(fault_box(0, 1));
    EXPECT_TRUE(told_becomes("pannes", ""));
    end();
}

TEST_F(WindowOnDisplay, TheKeyOfTheFaultsScrollsToTheFirst) {
    start({"--no-panel"});
    const area& list = window_layout::faults;
    const area names = {list.x + 4, list.y + 24, 60, list.h - 30};
    const auto first = pixels(names);
    for (int turns = 0; turns < 30; ++turns)
        display.click(window, list.x + list.w / 2, list.y + list.h / 2, 5);
    EXPECT_TRUE(wait_until([&] { return pixels(names) != first; }, seconds(5)));
    display.key(XK_f);
    display.key(XK_space);
    EXPECT_TRUE(told_becomes("pannes", "b1e=stuck0"));
    click(fault_box(0, 0));
    EXPECT_TRUE(told_becomes("pannes", "")) << "the first box is where it was";
    end();
}

TEST_F(WindowOnDisplay, ShowsFaultsThatOthersSetAndEnd) {
    start({"--no-panel"});
    const layout::area box = fault_box(6, 0);  // te
    auto empty = pixels(box, 1);
    // Until it is drawn at rest.
    wait_until([&] {
        wait_until([] { return false; }, seconds(0.3));
        return std::exchange(empty, pixels(box, 1)) == empty;
    });
    live->ask("fault te=stuck0");
    EXPECT_TRUE(wait_until([&] { return pixels(box, 1) != empty; }, seconds(5)));
    live->ask("fault te=");
    EXPECT_TRUE(wait_until([&] { return pixels(box, 1) == empty; }, seconds(5)));
    end();
}

/// What the station's faults are told by: all that moves can be slow.
class zk4_by_name : public manual_station {
public:
    zk4_by_name() : manual_station(zk4_names()) {}
    bool can_be_slow(int output) const override {
        const std::string_view name = outputs()[static_cast<std::size_t>(output)];
        return name != "DEPOSE" && name != "ASPI";
    }
};

/// Every fault that fits, in the order of the list's boxes.
std::vector<station_fault> every_fault() {
    const zk4_by_name model;
    std::vector<station_fault> all;
    const auto add = [&](name_span names) {
        for (const std::string_view name : names)
            for (int i = 0; i < static_cast<int>(fault_kind::count); ++i)
                if (const auto kind = static_cast<fault_kind>(i); fault_fits(name, kind, model))
                    all.push_back({std::string(name), kind});
    };
    add(model.inputs());
    add(model.outputs());
    return all;
}

/// What the panel shows of a fault of a sensor that is 1 at the start, or 0; nothing for what takes
/// time to be seen.
std::optional<bool> seen_value(fault_kind kind, bool real) {
    switch (kind) {
        case fault_kind::stuck0:
            return false;
        case fault_kind::stuck1:
            return true;
        case fault_kind::inverted:
            return !real;
        default:
            return std::nullopt;
    }
}

TEST_F(WindowOnDisplay, EveryFaultIsSetByTheKeyboardAloneAndSeenOnThePanel) {
    start({"--bases", "0"});
    display.key(XK_f);
    for (const station_fault& each : every_fault()) {
        const std::string text = each.name + "=" + std::string(fault_kind_word(each.kind));
        const bool is_sensor = place_of(each.kind) == fault_place::sensor;
        const bool real = is_sensor && live->value(each.name) == "1";
        display.key(XK_space);
        ASSERT_TRUE(told_becomes("pannes", text)) << live->told("pannes") << " for " << text;
        const auto seen = seen_value(each.kind, real);
        if (is_sensor && seen && each.name != "timer10_term") {
            EXPECT_TRUE(panel_shows(each.name, *seen ? red : blue)) << text;
        }
        display.key(XK_space);
        ASSERT_TRUE(told_becomes("pannes", "")) << text;
        display.key(XK_Tab);
    }
    end();
}

}  // namespace
