// A whole good base by hand, as a class makes one: commands by clicks on the panel, and meanwhile a
// pause, a fault and an emergency stop by clicks in the window.
#include <gtest/gtest.h>

#include "tests/station_view/window_on_display.h"

namespace {

namespace layout = window_layout;

class BaseByHand : public WindowOnDisplay {
public:
    void pause_and_go_on() {
        click(layout::pause);
        EXPECT_TRUE(told_becomes("etat", "pause"));
        click(layout::pause);
        EXPECT_TRUE(told_becomes("etat", "marche"));
    }
    void tick_and_untick_a_fault() {
        click(fault_box(0, 0));
        EXPECT_TRUE(told_becomes("pannes", "b1e=stuck0"));
        click(fault_box(0, 0));
        EXPECT_TRUE(told_becomes("pannes", ""));
    }
    void stop_and_unlock() {
        click(layout::emergency);
        EXPECT_TRUE(becomes("atu", "1"));
        EXPECT_TRUE(panel_shows("atu", red)) << "the panel tells it, too";
        click(layout::unlock);
        EXPECT_TRUE(becomes("atu", "0"));
    }
};

struct step_row {
    std::vector<const char*> clicks;  // on the panel
    const char* sensor;               // that tells when it is done
    const char* value;
    void (BaseByHand::*meanwhile)();  // by the window
};

TEST_F(BaseByHand, ByClicksOnPanelAndWindowAtOnce) {
    // clang-format off
    const step_row steps[] = {
        {{"BZ1", "BZ2", "BZ3"},   "b3s",   "1", nullptr},
        {{"MT", "MTA"},           "p1ok",  "1", &BaseByHand::pause_and_go_on},
        {{"MTA", "DEPOSE"},       "colle", "1", nullptr},
        {{"DEPOSE", "SORT"},      "ts",    "1", &BaseByHand::tick_and_untick_a_fault},
        {{"DESV"},                "vb",    "1", &BaseByHand::stop_and_unlock},
        {{"ASPI"},                "vide",  "1", nullptr},
        {{"DESV", "MONV"},        "vh",    "1", &BaseByHand::stop_and_unlock},
        {{"MONV", "SORT", "RENT"}, "te",   "1", nullptr},
        {{"RENT", "BZ1"},         "p2ok",  "1", &BaseByHand::pause_and_go_on},
        {{"DESV"},                "vb",    "1", nullptr},
        {{"ASPI"},                "vide",  "0", nullptr},
        {{"DESV", "MONV"},        "vh",    "1", &BaseByHand::tick_and_untick_a_fault},
        {{"MONV", "BZ2"},         "p3ok",  "1", nullptr},
        {{"DESP"},                "pb",    "1", &BaseByHand::stop_and_unlock},
        {{},             "timer10_term",   "1", &BaseByHand::pause_and_go_on},
        {{"DESP", "MONP"},        "ph",    "1", nullptr},
        {{"MONP", "BZ3"},         "p3ok",  "0", nullptr},
    };
    // clang-format on
    start({"--speed", "4", "--bases", "1"});
    for (const auto& [clicks, sensor, value, meanwhile] : steps) {
        SCOPED_TRACE(sensor);
        for (const char* const button : clicks) {
            const std::string before = live->value(button);
            click_panel(button);
            ASSERT_TRUE(becomes(button, before == "0" ? "1" : "0")) << button;
        }
        if (meanwhile) (this->*meanwhile)();
        ASSERT_EQ(live->io({"wait", std::string(sensor) + "=" + value, "--timeout", "30"}).status,
                  0);
    }
    EXPECT_TRUE(told_becomes("bonnes", "1"));
    end();
    EXPECT_TRUE(live->process->err().ends_with("bilan: bonnes=1 mauvaises=0 incidents=0\n"))
        << live->process->err();
}

}  // namespace
