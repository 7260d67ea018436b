// The rows of a recording: events as fields, fields as lines of CSV.
#include <gtest/gtest.h>

#include "recording/event_rows.h"

namespace {

std::string line_of(const station_event& event) { return csv_line(row_of_event(event)); }

TEST(EventRows, EachKindOfEventHasItsFields) {
    const struct {
        station_event event;
        std::string line;
    } rows[] = {
        {{0, event_kind::session, "format", 1, ""}, "0,session,format,1\n"},
        {{0, event_kind::session, "station", 0, "zk4"}, "0,session,station,zk4\n"},
        {{0, event_kind::fault, "te", 0, "stuck0"}, "0,panne,te,stuck0\n"},
        {{3200, event_kind::fault, "te", 0, ""}, "3200,panne,te,\n"},
        {{3100, event_kind::desk, "atu", 1, ""}, "3100,pupitre,atu,1\n"},
        {{350, event_kind::input, "b1s", 1, "", 1}, "350,entree,b1s,1\n"},
        {{40, event_kind::output, "BZ1", 1, "", 10}, "40,sortie,BZ1,1\n"},
        {{40, event_kind::output, "BZ1", INT32_MIN, "", 10}, "40,sortie,BZ1,-2147483648\n"},
        {{2007, event_kind::incident, "", 1, "colle répandue : pas de support en zone 1"},
         "2007,incident,1,colle répandue : pas de support en zone 1\n"},
        {{9000, event_kind::session, "bonnes", 1, ""}, "9000,session,bonnes,1\n"},
        {{12000, event_kind::session, "fin", 0, "panneau fermé"},
         "12000,session,fin,panneau fermé\n"},
        {{1'000'000'000'000, event_kind::session, "fin", 0, "x"}, "1000000000000,session,fin,x\n"},
    };
    for (const auto& [event, line] : rows) EXPECT_EQ(line_of(event), line);
}

TEST(EventRows, AFieldIsQuotedWhenItMustBeAndOnlyThen) {
    const struct {
        std::string text, quoted;
    } rows[] = {
        {"", ""},
        {" ", " "},
        {"poste 7", "poste 7"},
        {"a;b\tc'd", "a;b\tc'd"},
        {"répandue", "répandue"},
        {",", "\",\""},
        {"\"", "\"\"\"\""},
        {"a\"b", "\"a\"\"b\""},
        {"\"a\"", "\"\"\"a\"\"\""},
        {"a\nb", "\"a\nb\""},
        {"a\rb", "\"a\rb\""},
        {"a,\"b\"\n", "\"a,\"\"b\"\"\n\""},
    };
    for (const auto& [text, quoted] : rows) {
        EXPECT_EQ(csv_line({"0", "session", "titre", text}), "0,session,titre," + quoted + "\n");
        EXPECT_EQ(csv_line({"0", "session", text, "1"}), "0,session," + quoted + ",1\n");
    }
}

TEST(EventRows, ATitleThatLooksLikeANumberStaysAText) {
    EXPECT_EQ(line_of({0, event_kind::session, "titre", 0, "0"}), "0,session,titre,0\n");
    EXPECT_EQ(line_of({0, event_kind::session, "titre", 0, "007"}), "0,session,titre,007\n");
}

TEST(EventRows, TheCollectorKeepsTheRowsOneAfterAnother) {
    row_collector kept;
    EXPECT_EQ(kept.rows(), "");
    const station_event first[] = {{0, event_kind::output, "BZ1", 1, "", 0},
                                   {10, event_kind::input, "b1e", 0, "", 0}};
    kept.read(first);
    kept.read({});
    const station_event second[] = {{20, event_kind::input, "b1e", 1, "", 0}};
    kept.read(second);
    EXPECT_EQ(kept.rows(), "0,sortie,BZ1,1\n10,entree,b1e,0\n20,entree,b1e,1\n");
}

}  // namespace
