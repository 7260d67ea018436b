#include "strings/string_lists.h"

#include <memory>
#include <sstream>
#include <vector>

#include <gtest/gtest.h>

#include "tests/strings/texts.h"

namespace {

using strings = std::list<std::string>;
using string_lists = std::list<std::list<std::string>>;

template <class List>
std::string printed(const List& list) {
    std::ostringstream out;
    EXPECT_EQ(&(out << list), &out);
    return out.str();
}

TEST(PrintedStrings, StandInParentheses) {
    const struct {
        strings list;
        std::string text;
    } cases[] = {{{}, "()"},
                 {{""}, "()"},
                 {{"a"}, "(a)"},
                 {{"a", "b"}, "(a, b)"},
                 {{"", ""}, "(, )"},
                 {{"a, b", ")"}, "(a, b, ))"},
                 {{std::string("a\0", 2)}, std::string("(a\0)", 4)}};
    for (const auto& [list, text] : cases) EXPECT_EQ(printed(list), text);
}

TEST(PrintedLists, StandInParenthesesOfTheirOwn) {
    const struct {
        string_lists lists;
        std::string text;
    } cases[] = {{{}, "()"},
                 {{{}}, "(())"},
                 {{{"a", "b"}, {"c"}}, "((a, b), (c))"},
                 {{{}, {"a"}, {}}, "((), (a), ())"}};
    for (const auto& [lists, text] : cases) EXPECT_EQ(printed(lists), text);
}

TEST(PrintedStrings, AreFlushedOneByOne) {
    flush_recorder recorder;
    std::ostream out(&recorder);
    out << strings{"a", "b"} << strings{};
    EXPECT_EQ(recorder.flushed, (std::vector<std::string>{"(a", ", b", ")", "()"}));
}

TEST(PrintedLists, AreFlushedAfterEachInnerList) {
    flush_recorder recorder;
    std::ostream out(&recorder);
    out << string_lists{{"a"}, {}};
    EXPECT_EQ(recorder.flushed, (std::vector<std::string>{"((a", ")", ", ()", ")"}));
}

TEST(ArrayConvert, CopiesTheElementsInOrder) {
    const strings words = {"b", "", "a", std::string("c\0", 2)};
    const std::unique_ptr<std::string[]> array(array_convert(words));
    EXPECT_EQ(strings(array.get(), array.get() + words.size()), words);

    const string_lists lists = {{"a", "b"}, {}, {"c"}};
    const std::unique_ptr<strings[]> list_array(array_convert(lists));
    EXPECT_EQ(string_lists(list_array.get(), list_array.get() + lists.size()), lists);
}

TEST(ArrayConvert, GivesNullForAnEmptyList) {
    EXPECT_EQ(array_convert(strings{}), nullptr);
    EXPECT_EQ(array_convert(string_lists{}), nullptr);
    EXPECT_EQ(array_convert(empty_list_String), nullptr);
}

TEST(ArrayConvert, LeavesTheListAlone) {
    strings words = {"a", "b"};
    const std::unique_ptr<std::string[]> array(array_convert(words));
    array[0] = "changed";
    EXPECT_EQ(words, (strings{"a", "b"}));
}

TEST(ItemWhere, CountsFromOne) {
    const strings item = {"a", "b"};
    const struct {
        string_lists lists;
        int place;
    } cases[] = {{{}, 0},
                 {{{"a", "b"}}, 1},
                 {{{"a", "b"}, {"c"}}, 1},
                 {{{"c"}, {"a", "b"}, {}, {"a", "b"}}, 2},
                 {{{"a"}}, 0},
                 {{{"b", "a"}}, 0},
                 {{{"a", "b", "c"}}, 0},
                 {{{"A", "b"}, {"a", "b "}, {"a,", "b"}}, 0},
                 {{{}, {}, {"a", "b"}}, 3}};
    for (const auto& [lists, place] : cases) EXPECT_EQ(item_where(lists, item), place);
    EXPECT_EQ(item_where({{"a"}, {}}, {}), 2);
    EXPECT_EQ(item_where({{std::string("a\0", 2)}}, {"a"}), 0);
}

TEST(ItemWhere, FindsTheFirstEqualList) {
    random_source random(101);
    const auto random_list = [&random] {
        strings list;
        for (int left = random.number(0, 2); left > 0; --left) list.push_back(random.text("ab", 1));
        return list;
    };
    for (int round = 0; round < 20'000; ++round) {
        string_lists lists;
        for (int left = random.number(0, 6); left > 0; --left) lists.push_back(random_list());
        const strings item = random_list();
        const int place = item_where(lists, item);
        int at = 0, first = 0;
        for (const strings& each : lists)
            if (++at; first == 0 && each == item) first = at;
        ASSERT_EQ(place, first);
        const std::unique_ptr<strings[]> array(array_convert(lists));
        if (place > 0) {
            ASSERT_EQ(array[static_cast<std::size_t>(place - 1)], item);
        }
    }
}

TEST(EmptyListString, IsEmpty) {
    EXPECT_TRUE(empty_list_String.empty());
    EXPECT_EQ(printed(empty_list_String), "()");
}

TEST(ListStringInutile, PrintsOnTheStandardErrorStreamOnly) {
    captured_output output;
    list_String_inutile();
    EXPECT_NE(output.err().find("("), std::string::npos);
    EXPECT_NE(output.err().find("(("), std::string::npos);
    EXPECT_EQ(output.out(), "");
    EXPECT_TRUE(empty_list_String.empty());
}

}  // namespace
