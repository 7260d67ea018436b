#include "tests/support/robot.h"
// First, as the toolkit's headers bring the X server's macros.
#include "forms/dialogs.h"

#include <FL/Fl.H>
#include <FL/fl_ask.H>

#include <cfloat>
#include <climits>
#include <clocale>
#include <cmath>
#include <functional>

#include "tests/forms/texts.h"

namespace {

using answer = std::function<void(robot&)>;

void press_return(robot& user) { user.press(XK_Return); }
void press_escape(robot& user) { user.press(XK_Escape); }
void close_window(robot& user) { user.close(); }
answer click(const std::string& label) {
    return [=](robot& user) { user.click(label); };
}
/// Types over what the field holds.
answer type(const std::string& text) {
    return [=](robot& user) {
        user.press(XK_a, XK_Control_L)
            .press(XK_BackSpace)
            .until_value("")
            .type(text)
            .until_value(text);
        user.press(XK_Return);
    };
}

/// A dialog is a window that comes, is answered, and goes.
template <typename dialog>
auto answered(const answer& act, dialog show) {
    robot user;
    act(user);
    return show();
}

TEST(Question, IsOneForYesOnly) {
    const struct {
        const char* what;
        answer act;
        int result;
    } cases[] = {{"Enter", press_return, 1},
                 {"Escape", press_escape, 0},
                 {"the window's button", close_window, 0},
                 {"a click on yes", click("Yes"), 1},
                 {"a click on no", click("No"), 0}};
    for (const auto& [what, act, result] : cases) {
        EXPECT_EQ(answered(act, [] { return fl_show_Squestion("Vider le tiroir ?"); }), result)
            << what;
    }
    EXPECT_EQ(Fl::modal(), nullptr);
}

TEST(Question, IgnoresItsSecondArgument) {
    for (const int ignored : {0, 1, -1, INT_MAX}) {
        EXPECT_EQ(answered(press_return, [=] { return fl_show_Squestion("Vider ?", ignored); }), 1);
        EXPECT_EQ(answered(press_escape, [=] { return fl_show_Squestion("Vider ?", ignored); }), 0);
    }
}

TEST(Question, HasTheToolkitsNoAndYesTexts) {
    const char *no = fl_no, *yes = fl_yes;
    fl_no = "Non";
    fl_yes = "Oui";
    EXPECT_EQ(answered(click("Oui"), [] { return fl_show_Squestion("Vider ?"); }), 1);
    EXPECT_EQ(answered(click("Non"), [] { return fl_show_Squestion("Vider ?"); }), 0);
    fl_no = no;
    fl_yes = yes;
}

// Each dialog that shows a text, closed by Enter.
const struct {
    const char* what;
    std::function<void(const std::string&)> show;
} text_dialogs[] = {
    {"question", [](const std::string& text) { fl_show_Squestion(text); }},
    {"messages", [](const std::string& text) { fl_show_Smessages(text); }},
    {"alert", [](const std::string& text) { fl_show_Salert(text); }},
    {"double", [](const std::string& text) { fl_show_double(text, 1); }},
    {"double, array", [](const std::string& text) { fl_show_double(text.c_str(), 1); }},
    {"int", [](const std::string& text) { fl_show_int(text.c_str(), 1); }},
    {"Sinput", [](const std::string& text) { fl_show_Sinput(text, ""); }},
};

TEST(Dialogs, ShowATextAsItStands) {
    for (const auto& [what, show] : text_dialogs) {
        for (const std::string& text : awkward_texts) {
            SCOPED_TRACE(std::string(what) + ": " + text.substr(0, 20));
            answered([&](robot& user) { user.until_label(text).press(XK_Return); },
                     [&, show = show] { show(std::string(text)); });
        }
    }
}

TEST(Dialogs, EndTheShownTextAtANulByte) {
    for (const auto& [what, show] : text_dialogs) {
        SCOPED_TRACE(what);
        answered([](robot& user) { user.until_label("avant").press(XK_Return); },
                 [show = show] { show(std::string("avant\0apres", 11)); });
    }
}

// The toolkit's dialog window outlives the dialog: the text it showed does not.
TEST(Dialogs, LeaveNoPointerToTheTextBehind) {
    for (const auto& [what, show] : text_dialogs) {
        answered(press_return, [show = show] { show("Vider le tiroir ?"); });
        Fl_Group* dialog = fl_message_icon()->parent();
        const auto has_label = [](Fl_Widget& each) { return each.label() != nullptr; };
        ASSERT_NE(find_widget(*dialog, has_label), nullptr) << "the buttons have theirs";
        EXPECT_EQ(find_widget(*dialog,
                              [&](Fl_Widget& each) {
                                  return has_label(each) &&
                                         std::string(each.label()) == "Vider le tiroir ?";
                              }),
                  nullptr)
            << what;
    }
}

TEST(Messages, CloseByKeysAndByClick) {
    for (const auto& act :
         {answer(press_return), answer(press_escape), answer(close_window), click("Close")}) {
        answered(act, [] { fl_show_Smessages("Terminaison"); });
        answered(act, [] { fl_show_Salert("Panne"); });
        answered(act, fl_show_ms);
        EXPECT_EQ(Fl::modal(), nullptr);
    }
}

TEST(Messages, AlertHasTheExclamationMark) {
    answered([](robot& user) { user.until_label("!").press(XK_Return); },
             [] { fl_show_Salert("Panne"); });
    answered([](robot& user) { user.until_label("i").press(XK_Return); },
             [] { fl_show_Smessages("Note"); });
}

TEST(Messages, CreditNamesTheAuthorsAndTheProgram) {
    answered(
        [](robot& user) {
            user.until_label("Les auteurs de quorin\n\nPanneau de commande du ZK4").click("Close");
        },
        [] { fl_show_ms(); });
}

/// A number as this test's locale writes it: with its own mark in the place of the point.
std::string localised(std::string number) {
    const std::size_t point = number.find('.');
    return point == std::string::npos ? number
                                      : number.replace(point, 1, std::localeconv()->decimal_point);
}

TEST(Double, ReadsTheReply) {
    const struct {
        double given;
        const char* field;
        answer act;
        double result;
    } cases[] = {
        {1.5, "1.500000", press_return, 1.5},
        {1.5, "1.500000", click("OK"), 1.5},
        {1.5, "1.500000", type(localised("2.75")), 2.75},
        {1.5, "1.500000", type(localised("-0.125")), -0.125},
        {1.5, "1.500000", type("3e2"), 300},
        {1.5, "1.500000", type("12 mm"), 12},
        {1.5, "1.500000", type("rien"), 1.5},
        {0, "0.000000", type("7"), 7},
        {-2, "-2.000000", press_return, -2},
        // Six decimals go through the field; a cancelled dialog gives the value itself.
        {1.23456789, "1.234568", press_return, 1.234568},
        {1.23456789, "1.234568", press_escape, 1.23456789},
        {1.23456789, "1.234568", click("Cancel"), 1.23456789},
        {1.23456789, "1.234568", close_window, 1.23456789},
        {HUGE_VAL, "inf", press_return, HUGE_VAL},
    };
    for (const auto& [given, field, act, result] : cases) {
        const auto shown = [&, field = field, act = act](robot& user) {
            user.until_value(localised(field));
            act(user);
        };
        const auto as_bytes = [given = given] { return fl_show_double("Vitesse", given); };
        const auto as_string = [given = given] {
            return fl_show_double(std::string("Vitesse"), given);
        };
        EXPECT_EQ(answered(shown, as_bytes), result) << given;
        EXPECT_EQ(answered(shown, as_string), result) << given;
    }
}

TEST(Double, PrintsAtMost80Bytes) {
    char printed[400];
    std::snprintf(printed, sizeof printed, "%lf", DBL_MAX);
    const std::string field(printed, 80);
    EXPECT_EQ(answered([&](robot& user) { user.until_value(field).press(XK_Escape); },
                       [] { return fl_show_double("Vitesse", DBL_MAX); }),
              DBL_MAX);
    EXPECT_EQ(answered([&](robot& user) { user.until_value(field).press(XK_Return); },
                       [] { return fl_show_double("Vitesse", DBL_MAX); }),
              std::stod(field));
}

TEST(Double, UsesTheDecimalMarkOfTheLocaleBothWays) {
    const std::string before = std::setlocale(LC_NUMERIC, nullptr);
    ASSERT_NE(std::setlocale(LC_NUMERIC, "fr_FR.UTF-8"), nullptr);
    EXPECT_EQ(answered([](robot& user) { user.until_value("1,500000").press(XK_Return); },
                       [] { return fl_show_double("Vitesse", 1.5); }),
              1.5);
    EXPECT_EQ(answered(type("2,25"), [] { return fl_show_double("Vitesse", 1.5); }), 2.25);
    std::setlocale(LC_NUMERIC, before.c_str());
}

TEST(Int, ReadsTheReply) {
    const struct {
        int given;
        const char* field;
        answer act;
        int result;
    } cases[] = {
        {5, "5", press_return, 5},
        {5, "5", click("OK"), 5},
        {5, "5", type("12"), 12},
        {5, "5", type("-7"), -7},
        {5, "5", type("12.9"), 12},
        {5, "5", type("rien"), 5},
        {5, "5", press_escape, 5},
        {5, "5", click("Cancel"), 5},
        {5, "5", close_window, 5},
        {INT_MIN, "-2147483648", press_return, INT_MIN},
        {INT_MAX, "2147483647", press_return, INT_MAX},
    };
    for (const auto& [given, field, act, result] : cases) {
        const auto shown = [&, field = field, act = act](robot& user) {
            user.until_value(field);
            act(user);
        };
        EXPECT_EQ(answered(shown, [given = given] { return fl_show_int("Nombre", given); }), result)
            << given;
    }
}

TEST(Sinput, ReturnsTheReplyAndNothingWhenCancelled) {
    const struct {
        const char* what;
        std::string given;
        answer act;
        std::string result;
    } cases[] = {
        {"Enter", "poste 4", press_return, "poste 4"},
        {"OK", "poste 4", click("OK"), "poste 4"},
        {"typed", "poste 4", type("zone 3"), "zone 3"},
        {"from nothing", "", type("zone 3"), "zone 3"},
        {"emptied", "poste 4", type(""), ""},
        {"Escape", "poste 4", press_escape, ""},
        {"Cancel", "poste 4", click("Cancel"), ""},
        {"closed", "poste 4", close_window, ""},
        {"typed, then Escape", "poste 4", [](robot& user) { user.type("x").press(XK_Escape); }, ""},
    };
    for (const auto& [what, given, act, result] : cases) {
        const auto shown = [&, given = given, act = act](robot& user) {
            user.until_value(given);
            act(user);
        };
        EXPECT_EQ(answered(shown, [given = given] { return fl_show_Sinput("Nom", given); }), result)
            << what;
    }
}

TEST(Sinput, ReturnsTheDefaultByteForByte) {
    for (const std::string& text : awkward_texts) {
        EXPECT_EQ(answered([&](robot& user) { user.until_value(text).press(XK_Return); },
                           [&] { return fl_show_Sinput("Nom", text); }),
                  text);
    }
}

TEST(Dialogs, GiveWayToTheOneThatIsOpen) {
    int inner = -1;
    std::string inner_text = "unset";
    robot user;
    user.until("asked within",
               [&](Fl_Window&) {
                   inner = fl_show_Squestion("Encore ?");
                   inner_text = fl_show_Sinput("Nom", "poste");
                   return true;
               })
        .press(XK_Return);
    EXPECT_EQ(fl_show_Squestion("Vider ?"), 1);
    EXPECT_EQ(inner, 0);
    EXPECT_EQ(inner_text, "");
}

}  // namespace
