// Incidents as they happen, in the window of a running session.
#include <gtest/gtest.h>

#include "tests/station_view/window_on_display.h"

namespace {

/// Commands that bring about each incident, from the start of a session; waits stand between.
struct accident {
    const char* text;
    std::vector<std::vector<std::string>> requests;
};

using words = std::vector<std::string>;
const words base_at_3 = {"set", "MT=1", "MTA=1", "BZ3=1", "--until", "p3ok=1", "--timeout", "60"};

// clang-format off
const std::vector<accident> accidents = {
    {"colle répandue", {{"set", "DEPOSE=1"}}},
    {"tiroir bloqué", {{"set", "DESV=1", "--until", "vb=1"}, {"set", "SORT=1"}}},
    {"pièce perdue : lâchée", {{"set", "SORT=1", "--until", "ts=1"}, {"set", "DESV=1", "--until", "vb=1"},
        {"set", "ASPI=1", "--until", "vide=1"}, {"set", "DESV=0", "MONV=1", "--until", "vh=1"}, {"set", "ASPI=0"}}},
    {"support retenu", {base_at_3, {"set", "DESP=1", "--until", "pb=1"}, {"set", "BZ3=0"}}},
};
// clang-format on

TEST_F(WindowOnDisplay, AnIncidentAppearsAtOnceAndCounts) {
    for (const accident& each : accidents) {
        start({"--no-panel", "--speed", "5", "--bases", "1"});
        const auto before = pixels(window_layout::incidents, 2),
                   count = pixels(window_layout::incident_count, 2);
        for (const words& request : each.requests)
            ASSERT_EQ(live->io(request).status, 0) << each.text << live->process->err();
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

}  // namespace
