// The names, in the order in which the link carries them.
#include <gtest/gtest.h>

#include <string>

#include "session/station_model.h"
#include "workcell/workcell_model.h"

namespace {

std::string joined(name_span names) {
    std::string all;
    for (const std::string_view name : names) all.append(name) += ' ';
    return all;
}

TEST(StationNames, AreThePanelsInItsOrderThenTheTimer) {
    EXPECT_EQ(joined(station_inputs),
              "b1e b1s b2e b2s b3e b3s te ts vh vb ph pb pp p1ok p2ok p3ok init vide colle dc ac "
              "atu timer10_term ");
    EXPECT_EQ(joined(station_outputs),
              "DEPOSE MTA MT ASPI RENT SORT DESV MONV DESP MONP BZ1 BZ2 BZ3 ");
}

TEST(StationNames, StandAtTheirEnumeratorsPlace) {
    EXPECT_EQ(index_of(station_inputs, "b1e"), place_of(station_input::b1e));
    EXPECT_EQ(index_of(station_inputs, "te"), place_of(station_input::te));
    EXPECT_EQ(index_of(station_inputs, "timer10_term"), place_of(station_input::timer10_term));
    EXPECT_EQ(index_of(station_outputs, "DEPOSE"), place_of(station_output::DEPOSE));
    EXPECT_EQ(index_of(station_outputs, "BZ3"), place_of(station_output::BZ3));
}

TEST(StationModel, TellsItsNamesAndWithWhatItWasSetUp) {
    const workcell_model model(29, {12, -5});
    EXPECT_EQ(model.name(), "zk4");
    EXPECT_EQ(joined(model.inputs()), joined(station_inputs));
    EXPECT_EQ(joined(model.outputs()), joined(station_outputs));
    const std::vector<station_fact> facts = model.facts();
    ASSERT_EQ(facts.size(), 3u);
    const char* expected[][2] = {{"graine", "29"}, {"bases", "12"}, {"pieces", "0"}};
    for (std::size_t i = 0; i < facts.size(); ++i) {
        EXPECT_EQ(facts[i].name, expected[i][0]);
        EXPECT_EQ(facts[i].value, expected[i][1]);
    }
}

}  // namespace
