// Incidents as they happen, in the window of a running session.
#include <gtest/gtest.h>

#include "tests/station_view/window_on_display.h"

namespace {

/// Commands that bring about an incident, from the start of a session; waits stand between.
struct accident {
    const char* text;
    std::vector<std::vector<std::string>> requests;
};

using words = std::vector<std::string>;
using requests = std::vector<words>;

/// Steps of a pause, one by one until a sensor has that value.
constexpr char step_until[] = "step until";

const words base_at_3 = {"set", "MT=1", "MTA=1", "BZ3=1", "--until", "p3ok=1", "--timeout", "60"};

/// A base that has just gone past the stop of a zone, in a pause that leaves time for a command;
/// then that command, with which the station goes on.
requests base_past(const std::string& zone, const requests& commands) {
    const std::string blocker = "BZ" + zone, there = "p" + zone + "ok";
    requests all = {
        {"set", "MT=1", "MTA=1", blocker + "=1", "--until", there + "=1", "--timeout", "30"},
        {"pause"},
        {"set", blocker + "=0"},
        {step_until, there + "=0"}};
    all.insert(all.end(), commands.begin(), commands.end());
    all.push_back({"resume"});
    return all;
}

/// What follows one after another.
requests operator+(requests first, const requests& then) {
    first.insert(first.end(), then.begin(), then.end());
    return first;
}

// clang-format off
const requests take_a_part = {
    {"wait", "pp=1", "--timeout", "60"},
    {"set", "SORT=1", "--until", "ts=1"}, {"set", "SORT=0", "DESV=1", "--until", "vb=1"},
    {"set", "ASPI=1", "--until", "vide=1"}, {"set", "DESV=0", "MONV=1", "--until", "vh=1"}};
const requests lay_it_down = {
    {"set", "MONV=0", "RENT=1", "--until", "te=1"}, {"set", "RENT=0", "DESV=1", "--until", "vb=1"},
    {"set", "ASPI=0", "--until", "vide=0"}, {"set", "DESV=0", "MONV=1", "--until", "vh=1"}, {"set", "MONV=0"}};

const std::vector<accident> accidents = {
    {"colle répandue", {{"set", "DEPOSE=1"}}},
    {"tiroir bloqué", {{"set", "DESV=1", "--until", "vb=1"}, {"set", "SORT=1"}}},
    {"pièce perdue : lâchée", take_a_part + requests{{"set", "ASPI=0"}}},
    {"pièce perdue : le support", requests{{"set", "MT=1", "MTA=1", "BZ2=1", "--until", "p2ok=1", "--timeout", "60"}} +
        take_a_part + lay_it_down + take_a_part + lay_it_down},
    {"presse arrêtée", base_past("3", {{"set", "MT=0", "DESP=1"}})},
    {"support retenu", {base_at_3, {"set", "DESP=1", "--until", "pb=1"}, {"set", "BZ3=0"}}},
    {"bloqueur 1 arrêté", base_past("1", {{"set", "BZ1=1"}})},
    {"bloqueur 2 arrêté", base_past("2", {{"set", "BZ2=1"}})},
    {"bloqueur 3 arrêté", base_past("3", {{"set", "BZ3=1"}})},
};
// clang-format on

class IncidentsOnDisplay : public WindowOnDisplay {
protected:
    bool done(const words& request) {
        if (request[0] != step_until) return live->io(request).status == 0;
        return wait_until([&] {
            return live->ask("step 0.02") == "0\n" && live->io({"expect", request[1]}).status == 0;
        });
    }
};

TEST_F(IncidentsOnDisplay, AnIncidentAppearsAtOnceAndCounts) {
    for (const accident& each : accidents) {
        start({"--no-panel", "--speed", "5", "--bases", "1"});
        const auto before = pixels(window_layout::incidents, 2),
                   count = pixels(window_layout::incident_count, 2);
        for (const words& request : each.requests)
            ASSERT_TRUE(done(request)) << each.text << live->process->err();
        EXPECT_TRUE(wait_until(
            [&] {
                return pixels(window_layout::incidents, 2) != before &&
                       pixels(window_layout::incident_count, 2) != count;
            },
            seconds(5)))
            << each.text;
        EXPECT_TRUE(wait_until(
            [&] { return live->told("dernier_incident").starts_with(each.text); }, seconds(5)))
            << each.text << " is not " << live->told("dernier_incident");
        end();
    }
}

/// The list while it has more incidents than it shows.
class IncidentsByKeyboard : public IncidentsOnDisplay {
protected:
    using look = std::vector<std::uint32_t>;

    /// The column of their times.
    look shown() {
        const area& list = window_layout::incidents;
        return pixels({list.x, list.y, 90, list.h}, 2);
    }
    /// Where the mark of the keyboard is.
    look frame() {
        look edge;
        const area& list = window_layout::incidents;
        for (int x = list.x + 2; x < list.x + 200; ++x)
            edge.push_back(display.pixel(window, x, list.y + 1));
        return edge;
    }
    void rest() {
        wait_until([] { return false; }, seconds(0.3));
    }

    void spill_glue(int times) {
        for (int i = 1; i <= times; ++i) {
            live->io({"set", "DEPOSE=1"});
            ASSERT_TRUE(told_becomes("incidents", std::to_string(i)));
            live->io({"set", "DEPOSE=0"});
            wait_until([] { return false; }, seconds(0.1));
        }
        display.key(XK_p);
        ASSERT_TRUE(told_becomes("etat", "pause"));
        wait_until([] { return false; }, seconds(1));
    }
    /// Presses a key: the list then looks as it did the `which`-th time, or else as never before.
    void expect_look(std::vector<look>& looks, x_key key, std::size_t which) {
        display.key(key);
        if (which < looks.size()) {
            EXPECT_TRUE(wait_until([&] { return shown() == looks[which]; }, seconds(5))) << which;
            return;
        }
        EXPECT_TRUE(wait_until([&] { return shown() != looks.back(); }, seconds(5))) << which;
        rest();
        for (const look& before : looks) EXPECT_NE(before, shown()) << which;
        looks.push_back(shown());
    }
};

TEST_F(IncidentsByKeyboard, TabComesByAndArrowsScroll) {
    start({"--no-panel", "--speed", "5"});
    const look unmarked = frame();
    display.key(XK_Tab, XK_Shift_L);
    rest();
    EXPECT_EQ(frame(), unmarked) << "an empty list has nothing to scroll";
    click(window_layout::start_cycle);
    spill_glue(12);
    display.key(XK_Tab, XK_Shift_L);
    ASSERT_TRUE(wait_until([&] { return frame() != unmarked; }, seconds(5))) << "a mark shows it";
    rest();
    std::vector<look> looks = {shown()};
    const struct {
        x_key key;
        std::size_t look;
    } strokes[] = {{XK_Down, 1}, {XK_Down, 2},  {XK_Up, 1},  {XK_Up, 0},   {XK_Up, 0},
                   {XK_Next, 3}, {XK_Prior, 0}, {XK_End, 4}, {XK_Down, 4}, {XK_Home, 0}};
    for (const auto& [key, look] : strokes) expect_look(looks, key, look);
    display.key(XK_Tab);
    EXPECT_TRUE(wait_until([&] { return frame() == unmarked; }, seconds(5))) << "Tab goes on";
    end();
}

TEST_F(IncidentsByKeyboard, TheWindowsKeysStayItsOwn) {
    start({"--no-panel", "--speed", "5"});
    const look unmarked = frame();
    spill_glue(6);
    display.key(XK_Tab, XK_Shift_L);
    ASSERT_TRUE(wait_until([&] { return frame() != unmarked; }, seconds(5)));
    display.key(XK_p);
    EXPECT_TRUE(told_becomes("etat", "marche"));
    display.key(XK_plus, XK_Shift_L);
    EXPECT_TRUE(told_becomes("vitesse", "10"));
    display.hold_key(XK_d, true);
    EXPECT_TRUE(becomes("dc", "1"));
    display.hold_key(XK_d, false);
    EXPECT_TRUE(becomes("dc", "0"));
    display.key(XK_Escape);
    EXPECT_TRUE(becomes("atu", "1"));
    EXPECT_NE(frame(), unmarked) << "and the list keeps the keyboard";
    end();
}

}  // namespace
