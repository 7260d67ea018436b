#include <gtest/gtest.h>

#include <string>

#include "workcell/station_names.h"

namespace {

template <typename Names>
std::string joined(const Names& names) {
    std::string all;
    for (const char* name : names) all += std::string(name) + ' ';
    return all;
}

TEST(StationNames, AreThePanelsInItsOrderThenTheTimer) {
    EXPECT_EQ(joined(station_inputs),
              "b1e b1s b2e b2s b3e b3s te ts vh vb ph pb pp p1ok p2ok p3ok init vide colle dc ac "
              "atu timer10_term ");
    EXPECT_EQ(joined(station_outputs),
              "DEPOSE MTA MT ASPI RENT SORT DESV MONV DESP MONP BZ1 BZ2 BZ3 ");
}

TEST(StationNames, AreFoundByTheirExactSpelling) {
    for (std::size_t i = 0; i < station_inputs.size(); ++i)
        EXPECT_EQ(input_index(station_inputs[i]), static_cast<int>(i));
    for (std::size_t i = 0; i < station_outputs.size(); ++i)
        EXPECT_EQ(output_index(station_outputs[i]), static_cast<int>(i));
    for (const char* unknown : {"", "TE", "te ", "t", "tee", "MT", "timer10"})
        EXPECT_EQ(input_index(unknown), -1) << unknown;
    for (const char* unknown : {"", "mt", "MT ", "M", "MTAA", "te"})
        EXPECT_EQ(output_index(unknown), -1) << unknown;
}

}  // namespace
