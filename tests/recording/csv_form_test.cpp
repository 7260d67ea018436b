// A session as CSV: the head row once, and each name once.
#include <gtest/gtest.h>

#include <vector>

#include "recording/csv_form.h"

namespace {

using events = std::vector<station_event>;

TEST(CsvForm, TheHeadRowStandsAboveTheFirstBlockOnly) {
    csv_form form;
    EXPECT_EQ(form.text_of(events{{0, event_kind::session, "format", 1, ""}}),
              "ms,genre,nom,valeur\n0,session,format,1\n");
    EXPECT_EQ(form.text_of(events{{10, event_kind::session, "fin", 0, "a,b"}}),
              "10,session,fin,\"a,b\"\n");
}

TEST(CsvForm, OfSeveralAlikeTheLastOneCounts) {
    csv_form form;
    const std::string text = form.text_of(events{{0, event_kind::input, "a", 1, "", 0},
                                                 {0, event_kind::input, "a", 0, "", 1},
                                                 {0, event_kind::output, "a", 5, "", 0}});
    EXPECT_EQ(text, "ms,genre,nom,valeur\n0,entree,a,0\n0,sortie,a,5\n");
    EXPECT_EQ(form.text_of(events{{5, event_kind::input, "a", 0, "", 0}}), "");
    EXPECT_EQ(form.text_of(events{{5, event_kind::input, "a", 7, "", 1}}), "5,entree,a,7\n");
    EXPECT_EQ(form.text_of(events{{6, event_kind::output, "a", 6, "", 0}}), "6,sortie,a,6\n");
}

TEST(CsvForm, NamesThatLookAlikeOnceEscapedAreAlike) {
    csv_form form;
    const std::string text = form.text_of(events{{0, event_kind::input, "a\t", 1, "", 0},
                                                 {0, event_kind::input, "a\\x09", 0, "", 1}});
    EXPECT_EQ(text, "ms,genre,nom,valeur\n0,entree,a\\x09,0\n");
}

}  // namespace
