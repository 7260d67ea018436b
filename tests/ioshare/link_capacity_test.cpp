// What zk4sim makes sure of before it builds a server.
#include "ioshare/link_capacity.h"

#include <gtest/gtest.h>

#include "workcell/station_names.h"

namespace {

using names = std::vector<std::string>;

TEST(LinkCapacity, TheStationsOwnNamesFit) {
    EXPECT_EQ(link_capacity_problem({station_inputs.begin(), station_inputs.end()},
                                    {station_outputs.begin(), station_outputs.end()}),
              "");
}

TEST(LinkCapacity, FortyOneNamesOfFortyNineBytesFit) {
    EXPECT_EQ(
        link_capacity_problem(names(41, std::string(49, 'n')), names(41, std::string(49, 'n'))),
        "");
    EXPECT_EQ(link_capacity_problem({}, {}), "");
}

TEST(LinkCapacity, SaysWhichNameIsTooLongInEitherDirection) {
    const std::string long_name = std::string(49, 'n') + "!";
    for (const auto& [inputs, outputs] :
         {std::pair<names, names>{{"te", long_name}, {}}, {{"te"}, {"RENT", long_name}}}) {
        const std::string problem = link_capacity_problem(inputs, outputs);
        EXPECT_NE(problem.find(long_name), std::string::npos) << problem;
        EXPECT_EQ(problem.find('\n'), std::string::npos);
    }
}

TEST(LinkCapacity, RefusesMoreNamesThanThereAreSlots) {
    EXPECT_NE(link_capacity_problem(names(42, "a"), {}), "");
    EXPECT_NE(link_capacity_problem({}, names(42, "a")), "");
}

}  // namespace
