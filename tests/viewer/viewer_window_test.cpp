// The viewer's window on a real display: what it is made of, what its user sees and does, how it
// ends.
#include "tests/forms/robot.h"

#include <FL/Fl.H>
#include <FL/Fl_Box.H>
#include <FL/Fl_Button.H>
#include <FL/x.H>
#include <FL/forms.H>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <optional>
#include <random>
#include <sstream>
#include <type_traits>

#include "viewer/viewer_window.h"

namespace {

namespace files = std::filesystem;
using strings = std::vector<std::string>;

std::string bytes_of(const files::path& file) {
    std::ifstream in(file, std::ios::binary);
    std::ostringstream bytes;
    bytes << in.rdbuf();
    return bytes.str();
}

void write(const files::path& file, const std::string& bytes) { std::ofstream(file) << bytes; }

std::string label_of(const Fl_Widget* widget) {
    return widget->label() ? widget->label() : "(none)";
}

/// A column for whole lines, then `count` lines "l1", "l2" ...
strings numbered(int count) {
    strings lines = {"#C 600 "};
    for (int i = 1; i <= count; ++i) lines.push_back("l" + std::to_string(i));
    return lines;
}

/// What the browser of the window shows.
strings shown(const OFD_afficheur& viewer) {
    strings lines;
    for (int i = 1; i <= viewer.browser->size(); ++i) lines.push_back(viewer.browser->text(i));
    return lines;
}

/// What it shows of numbered() from `first` to `last`.
strings page_of(int first, int last) {
    strings lines;
    if (first == 1) lines.push_back("");
    for (int i = first; i <= last; ++i) lines.push_back("@f@S14 l" + std::to_string(i));
    return lines;
}

/// Shows lines without an activation.
void give(OFD_afficheur& viewer, strings& lines) {
    static std::list<OFD_afficheur_filtre_affichage> filters;
    filters.emplace_back(lines.data(), static_cast<int>(lines.size()));
    viewer.display_filter = &filters.back();
    viewer.visu_page();
}

// ---- What it is made of

struct row {
    const char* kind;
    int x, y, w, h;
    const char *french, *english;
    int box, type, label_font, label_size;
};

constexpr int any = -1;

// clang-format off
const row rows[] = {
    {"box",      0,   0, 930, 700, "", "",                               FL_UP_BOX,   any, any, any},
    {"browser", 10,  50, 910, 570, "(none)", "(none)",                   FL_DOWN_BOX, FL_HOLD_BROWSER, FL_TIMES, any},
    {"text",   280,  20, 310,  20, "", "",                               FL_NO_BOX,   any, FL_HELVETICA_BOLD, 12},
    {"text",    80,  20, 120,  20, "", "",                               FL_NO_BOX,   any, any, any},
    {"button", 300, 630, 120,  20, "page suivante", "next page",         FL_UP_BOX,   FL_NORMAL_BUTTON, FL_TIMES, 12},
    {"button", 300, 660, 120,  20, "page precedente", "previous page",   FL_UP_BOX,   FL_NORMAL_BUTTON, FL_TIMES, 12},
    {"button",  40, 630,  90,  50, "ANNULER", "CANCEL",                  FL_UP_BOX,   FL_NORMAL_BUTTON, FL_TIMES, 12},
    {"button", 500, 630, 100,  50, "fichier pdf", "pdf file",            FL_UP_BOX,   FL_NORMAL_BUTTON, FL_TIMES, 12},
    {"button", 750, 630, 100,  50, "fichier texte", "text file",         FL_UP_BOX,   FL_NORMAL_BUTTON, FL_TIMES, 12},
    {"input",  150, 645,  40,  20, "", "",                               any,         FL_NORMAL_INPUT, any, any},
    {"button", 190, 645,  20,  20, "", "",                               FL_UP_BOX,   FL_NORMAL_BUTTON, FL_HELVETICA, FL_NORMAL_SIZE},
};
// clang-format on

std::string kind_of(Fl_Widget* widget) {
    if (dynamic_cast<Fl_Box*>(widget)) return "box";
    if (dynamic_cast<Fl_Browser*>(widget)) return "browser";
    if (dynamic_cast<Fl_FormsText*>(widget)) return "text";
    if (dynamic_cast<Fl_Button*>(widget)) return "button";
    return dynamic_cast<Fl_Input*>(widget) ? "input" : "something else";
}

TEST(ViewerForm, HasElevenWidgetsInTheirOrderWhateverTheFormsLayersSwitchSays) {
    for (const int english : {0, 1, -7}) {
        for (const char mirrored : {0, 1, 2}) {
            SCOPED_TRACE(std::to_string(english) + ", " + std::to_string(mirrored));
            fl_flip = mirrored;
            OFD_afficheur viewer(nullptr, english);
            EXPECT_EQ(fl_flip, mirrored);
            ASSERT_EQ(viewer.window->children(), static_cast<int>(std::size(rows)));
            for (int i = 0; i < viewer.window->children(); ++i) {
                const row& wanted = rows[i];
                Fl_Widget* const made = viewer.window->child(i);
                SCOPED_TRACE(wanted.french);
                EXPECT_EQ(kind_of(made), wanted.kind);
                EXPECT_EQ(made->x(), wanted.x);
                EXPECT_EQ(made->y(), wanted.y);
                EXPECT_EQ(made->w(), wanted.w);
                EXPECT_EQ(made->h(), wanted.h);
                EXPECT_EQ(label_of(made), english ? wanted.english : wanted.french);
                EXPECT_TRUE(wanted.box == any || made->box() == wanted.box);
                EXPECT_TRUE(wanted.type == any || made->type() == wanted.type);
                EXPECT_TRUE(wanted.label_font == any || made->labelfont() == wanted.label_font);
                EXPECT_TRUE(wanted.label_size == any || made->labelsize() == wanted.label_size);
                EXPECT_EQ(made->labeltype(), FL_NORMAL_LABEL);
                EXPECT_EQ(made->callback(), &Fl_Widget::default_callback);
            }
        }
    }
}

TEST(ViewerForm, ItsWindowIsHiddenAndHasNoBox) {
    Fl_Window parent(10, 10);
    parent.end();
    OFD_afficheur viewer(&parent, 5);
    EXPECT_EQ(viewer.window->w(), 920);
    EXPECT_EQ(viewer.window->h(), 700);
    EXPECT_EQ(viewer.window->box(), FL_NO_BOX);
    EXPECT_FALSE(viewer.window->shown());
    EXPECT_EQ(Fl_Group::current(), nullptr) << "its form is ended";
    EXPECT_TRUE(parent.active());
    EXPECT_EQ(viewer.parent, &parent);
    EXPECT_EQ(viewer.english, 5);
    EXPECT_EQ(viewer.page, 0);
    EXPECT_EQ(viewer.unused_first, nullptr);
    EXPECT_EQ(viewer.unused_second, nullptr);
}

TEST(ViewerForm, ItsFieldsAreTheWidgetsOfTheirPlaces) {
    OFD_afficheur viewer(nullptr, 0);
    const Fl_Widget* const fields[] = {
        viewer.browser,         viewer.title,         viewer.page_indicator, viewer.next_button,
        viewer.previous_button, viewer.cancel_button, viewer.pdf_button,     viewer.text_button,
        viewer.page_input,      viewer.go_button};
    for (int i = 0; i < 10; ++i) EXPECT_EQ(viewer.window->child(i + 1), fields[i]) << i;
    EXPECT_EQ(viewer.browser->color(), static_cast<Fl_Color>(49));
    EXPECT_EQ(viewer.title->align(), static_cast<Fl_Align>(FL_ALIGN_INSIDE));
    EXPECT_EQ(viewer.page_indicator->align(), static_cast<Fl_Align>(FL_ALIGN_LEFT));
}

TEST(ViewerForm, ItsFieldsStandInTheirOrder) {
    OFD_afficheur viewer(nullptr, 0);
    const void* const fields[] = {
        &viewer.english,        &viewer.page,          &viewer.display_filter,
        &viewer.print_filter,   &viewer.text_filter,   &viewer.viewer_command,
        &viewer.window,         &viewer.parent,        &viewer.title,
        &viewer.page_indicator, &viewer.browser,       &viewer.previous_button,
        &viewer.next_button,    &viewer.cancel_button, &viewer.pdf_button,
        &viewer.text_button,    &viewer.page_input,    &viewer.go_button,
        &viewer.unused_first,   &viewer.unused_second};
    EXPECT_TRUE(std::ranges::is_sorted(fields, std::less<>()));
    static_assert(std::is_same_v<decltype(viewer.english), std::int32_t>);
    static_assert(std::is_same_v<decltype(viewer.page), std::int32_t>);
}

TEST(ViewerForm, BeforeItsFirstActivationItHasOneEmptyPage) {
    OFD_afficheur viewer(nullptr, 0);
    for (const auto step : {&OFD_afficheur::visu_page, &OFD_afficheur::page_suivante,
                            &OFD_afficheur::page_precedente}) {
        (viewer.*step)();
        EXPECT_EQ(shown(viewer), strings{});
        EXPECT_EQ(viewer.page, 0);
    }
    viewer.page_numero(0);
    EXPECT_EQ(label_of(viewer.page_indicator), "page 1 / 1    ");
    EXPECT_STREQ(viewer.page_input->value(), "1");
}

// ---- Pages and pieces

TEST(ViewerPages, SeventySevenLinesMakeOnePageAndSeventyEightTwo) {
    OFD_afficheur viewer(nullptr, 0);
    strings lines = numbered(77);
    lines.push_back("#C 600 ");
    lines.push_back("#P 600 ");
    give(viewer, lines);
    EXPECT_EQ(label_of(viewer.page_indicator), "page 1 / 2    ") << "a definition behind the 77th";
    lines = numbered(77);
    give(viewer, lines);
    EXPECT_EQ(label_of(viewer.page_indicator), "page 1 / 1    ");
    EXPECT_EQ(shown(viewer), page_of(1, 77));
    lines = numbered(78);
    give(viewer, lines);
    EXPECT_EQ(label_of(viewer.page_indicator), "page 1 / 2    ");
    EXPECT_EQ(shown(viewer), page_of(1, 77));
    viewer.page_suivante();
    EXPECT_EQ(label_of(viewer.page_indicator), "page 2 / 2    ");
    EXPECT_STREQ(viewer.page_input->value(), "2");
    EXPECT_EQ(shown(viewer), page_of(78, 78));
}

TEST(ViewerPages, OnlyPagesThatExistAreGoneTo) {
    OFD_afficheur viewer(nullptr, 0);
    strings lines = numbered(77 * 3);
    give(viewer, lines);
    viewer.page_precedente();
    EXPECT_EQ(viewer.page, 0);
    const struct {
        int asked, page;
    } jumps[] = {{2, 2}, {3, 2}, {-1, 2}, {INT_MAX, 2}, {INT_MIN, 2}, {0, 0}, {1, 1}};
    for (const auto& [asked, page] : jumps) {
        viewer.page_numero(asked);
        EXPECT_EQ(viewer.page, page) << asked;
        EXPECT_EQ(shown(viewer), page_of(77 * page + 1, 77 * page + 77)) << asked;
    }
    viewer.page_suivante();
    viewer.page_suivante();
    EXPECT_EQ(viewer.page, 2);
    viewer.page_precedente();
    EXPECT_EQ(viewer.page, 1);
}

TEST(ViewerPages, LongScreenLinesAreCutIntoPiecesThatLoseTheCharacterAfterEach) {
    // The screen line is "@f@S14 " and the text: 7 bytes and `text` of them.
    const struct {
        int text;
        std::vector<int> pieces;
    } cases[] = {{153, {160}},      {154, {161}},         {155, {161, 0}},
                 {156, {161, 1}},   {157, {161, 2}},      {315, {161, 160}},
                 {316, {161, 161}}, {317, {161, 161, 0}}, {318, {161, 161, 1}}};
    for (const auto& [text, pieces] : cases) {
        std::string digits;
        for (int i = 0; i < text; ++i) digits += static_cast<char>('0' + i % 10);
        strings lines = {"#C 600 ", digits, "next"};
        OFD_afficheur viewer(nullptr, 0);
        give(viewer, lines);
        strings expected = {""};
        std::string rest = "@f@S14 " + digits;
        for (const int length : pieces) {
            expected.push_back(rest.substr(0, length));
            rest.erase(0, length + 1);
        }
        expected.push_back("@f@S14 next");
        EXPECT_EQ(shown(viewer), expected) << text;
    }
}

TEST(ViewerPages, LaterPiecesGoToTheBrowserWithoutAnythingBeforeThem) {
    strings lines = {"#C 600 ", std::string(155, 'x') + "@bold\n@C1red"};
    OFD_afficheur viewer(nullptr, 0);
    give(viewer, lines);
    EXPECT_EQ(shown(viewer), (strings{"", "@f@S14 " + std::string(154, 'x'), "@bold", "@C1red"}));
}

/// The pieces of a page's text, taken one byte at a time.
strings pieces_of(const std::string& text) {
    strings pieces;
    std::optional<std::string> piece;
    for (const char each : text) {
        if (!piece) piece = "";
        if (each == '\n' || piece->size() == 161) {
            pieces.push_back(*piece);
            piece.reset();
        } else {
            *piece += each;
        }
    }
    if (piece) pieces.push_back(*piece);
    return pieces;
}

TEST(ViewerPages, AllPagesTogetherHoldThePiecesOfEveryLineInOrder) {
    std::mt19937 random(20);
    const auto below = [&](int n) { return static_cast<int>(random() % static_cast<unsigned>(n)); };
    for (int round = 0; round < 60; ++round) {
        strings lines(static_cast<std::size_t>(below(400)));
        for (std::string& line : lines) {
            const char* const starts[] = {"", "#C ", "#P ", "#T", "@", "#x", "@C1", "\n"};
            line = starts[below(8)] + (below(3) ? std::string("900 40 ") : std::string());
            const int length = below(10) ? below(60) : 140 + below(700);
            for (int i = 0; i < length; ++i) line += "abc @#\n("[below(40) ? below(4) : below(8)];
        }
        OFD_afficheur viewer(nullptr, 0);
        give(viewer, lines);
        OFD_afficheur_filtre_affichage filter(lines.data(), static_cast<int>(lines.size()));
        filter.visu_page(0);  // as the viewer did: the columns go on from page to page
        strings expected, seen;
        for (int page = 0; page <= filter.nb_pages(); ++page) {
            const strings pieces = pieces_of(filter.visu_page(page));
            expected.insert(expected.end(), pieces.begin(), pieces.end());
        }
        for (int page = 0;; ++page) {
            viewer.page_numero(page);
            if (viewer.page != page) break;
            const strings more = shown(viewer);
            seen.insert(seen.end(), more.begin(), more.end());
        }
        ASSERT_EQ(seen, expected) << "round " << round;
    }
}

// ---- What its user does

/// Looks at a viewer from timeouts, until it has seen what it wanted.
class watcher {
public:
    explicit watcher(std::function<bool()> look) : look_(std::move(look)) {
        Fl::add_timeout(0.01, poll, this);
    }
    ~watcher() { Fl::remove_timeout(poll, this); }

private:
    static void poll(void* self) {
        if (!static_cast<watcher*>(self)->look_()) Fl::repeat_timeout(0.01, poll, self);
    }
    std::function<bool()> look_;
};

/// A folder to write into, a parent window on the screen, a viewer on it, and its user.
class ViewerOnDisplay : public testing::Test {
protected:
    void SetUp() override {
        std::string pattern = files::temp_directory_path() / "viewer window XXXXXX";
        folder = mkdtemp(pattern.data());
        before = files::current_path();
        files::current_path(folder);
        speak(0);
        parent.end();
        parent.show();
        ASSERT_TRUE(wait_until([&] {
            Fl::check();
            return display.windows() == std::vector<x_window>{fl_xid(&parent)};
        }));
    }
    void TearDown() override {
        EXPECT_TRUE(parent.active());
        EXPECT_FALSE(viewer->window->shown());
        parent.hide();
        Fl::check();
        while (Fl::readqueue()) {
        }
        files::current_path(before);
        files::remove_all(folder);
    }

    void speak(int english) { viewer = std::make_unique<OFD_afficheur>(&parent, english); }

    void show(strings& lines, const std::string& command = "true") {
        viewer->activation(lines.data(), static_cast<int>(lines.size()), "Titre", command);
    }

    /// Clicks in the middle of a widget, whatever its label.
    void click(robot& user, const Fl_Widget* widget) {
        user.until("click", [=, this](Fl_Window& window) {
            display.click(fl_xid(&window), widget->x() + widget->w() / 2,
                          widget->y() + widget->h() / 2);
            return true;
        });
    }

    void empty_page_input(robot& user) {
        click(user, viewer->page_input);
        user.until("an empty field", [this](Fl_Window&) {
            if (!viewer->page_input->size()) return true;
            display.key(XK_End);
            display.key(XK_BackSpace);
            return false;
        });
    }

    void type_page(robot& user, const std::string& number) {
        empty_page_input(user);
        user.type(number).until_value(number);
        click(user, viewer->go_button);
    }

    void sees_page(robot& user, const std::string& indicator, int first, int last) {
        user.until(indicator, [=, this](Fl_Window&) {
            return label_of(viewer->page_indicator) == indicator &&
                   shown(*viewer) == page_of(first, last);
        });
    }

    /// Lets the loop go round for a while, then checks.
    void after_a_while(robot& user, const std::string& what, std::function<bool()> holds) {
        const auto rounds = std::make_shared<int>(0);
        user.until(what, [=](Fl_Window&) {
            if (++*rounds < 30) return false;
            EXPECT_TRUE(holds()) << what;
            return true;
        });
    }

    /// A command that notes its arguments, keeps a copy of the file, and blocks for a moment.
    std::string recording_command(const std::string& name) {
        write(name,
              "#!/bin/sh\nprintf '%s|' \"$#\" \"$@\" >>said\ncp \"$1\" seen.pdf\nsleep 0.1\n");
        files::permissions(name, files::perms::owner_all);
        return folder / name;
    }

    files::path folder, before;
    Fl_Window parent{200, 100, "parent"};
    screen display;
    std::unique_ptr<OFD_afficheur> viewer;
    /// A user who has given up hides the window, which alone ends no activation.
    watcher ends_what_failed{[this] {
        if (HasFailure() && viewer && !viewer->window->shown())
            viewer->cancel_button->do_callback();
        return false;
    }};
};

TEST_F(ViewerOnDisplay, PagesWithItsTwoButtonsAndStopsAtBothEnds) {
    strings lines = numbered(78);
    robot user;
    sees_page(user, "page 1 / 2    ", 1, 77);
    user.click("page precedente");
    after_a_while(user, "still the first", [&] { return viewer->page == 0; });
    user.click("page suivante");
    sees_page(user, "page 2 / 2    ", 78, 78);
    user.click("page suivante");
    after_a_while(user, "still the second", [&] { return viewer->page == 1; });
    user.click("page precedente");
    sees_page(user, "page 1 / 2    ", 1, 77);
    user.click("ANNULER");
    show(lines);
}

TEST_F(ViewerOnDisplay, JumpsToATypedPageAndIgnoresThoseThatDoNotExist) {
    strings lines = numbered(77 * 3);
    robot user;
    type_page(user, "3");
    sees_page(user, "page 3 / 3    ", 155, 231);
    for (const char* const nowhere :
         {"0", "4", "-1", "4294967297", "-9223372036854775808", "abc", "", "1.5"}) {
        type_page(user, nowhere);
        after_a_while(user, std::string("not ") + nowhere, [&] { return viewer->page == 2; });
    }
    type_page(user, "2");
    sees_page(user, "page 2 / 3    ", 78, 154);
    user.until_value("2");
    user.click("page suivante").until_value("3");
    user.click("ANNULER");
    show(lines);
}

TEST_F(ViewerOnDisplay, JumpsByTheKeyboard) {
    strings lines = numbered(78);
    robot user;
    empty_page_input(user);
    user.type("2").until_value("2").press(XK_Tab).press(XK_space);
    sees_page(user, "page 2 / 2    ", 78, 78);
    user.click("ANNULER");
    show(lines);
}

TEST_F(ViewerOnDisplay, ItsParentRestsAndItsTitleShows) {
    strings lines = numbered(1);
    robot user;
    user.until("the window", [&](Fl_Window& window) {
        EXPECT_EQ(&window, viewer->window);
        EXPECT_FALSE(parent.active());
        EXPECT_EQ(label_of(viewer->title), "Titre");
        const screen::place at = display.area(fl_xid(&window));
        EXPECT_EQ(at.w, 920);
        EXPECT_EQ(at.h, 700);
        return true;
    });
    user.click("ANNULER");
    show(lines);
}

TEST_F(ViewerOnDisplay, ItComesUpAroundTheMouse) {
    const screen::place at = display.area(fl_xid(&parent));
    display.click(fl_xid(&parent), 650 - at.x, 480 - at.y);  // on the screen's own ground
    strings lines = numbered(1);
    robot user;
    user.until("the window", [&](Fl_Window& window) {
        const screen::place shown_at = display.area(fl_xid(&window));
        EXPECT_NEAR(shown_at.x + 920 / 2, 650, 30);  // the manager's frame shifts it
        EXPECT_NEAR(shown_at.y + 700 / 2, 480, 30);
        return true;
    });
    user.click("ANNULER");
    show(lines);
}

TEST_F(ViewerOnDisplay, EachActivationStartsAtTheFirstPageOfItsOwnLines) {
    strings lines = numbered(78), others = {"#C 600 ", "other"};
    {
        robot user;
        user.click("page suivante");
        sees_page(user, "page 2 / 2    ", 78, 78);
        user.click("ANNULER");
        show(lines);
    }
    OFD_afficheur_filtre_affichage* const earlier = viewer->display_filter;
    OFD_afficheur_filtre_impression* const earlier_print = viewer->print_filter;
    OFD_afficheur_filtre_texte* const earlier_text = viewer->text_filter;
    {
        robot user;
        user.until("the others", [&](Fl_Window&) {
            return viewer->page == 0 && shown(*viewer) == strings{"", "@f@S14 other"};
        });
        user.click("ANNULER");
        show(others);
    }
    EXPECT_NE(viewer->display_filter, earlier);
    EXPECT_NE(viewer->print_filter, earlier_print);
    EXPECT_NE(viewer->text_filter, earlier_text);
    EXPECT_EQ(earlier->nb_pages(), 1) << "not released";
    EXPECT_EQ(earlier_print->lines, lines.data());
    EXPECT_EQ(earlier_text->lines, lines.data());
}

TEST_F(ViewerOnDisplay, ALineThatLooksLikeABrowsersFormatIsShownAsItStands) {
    strings lines = {"#C 600 ", "@C88", "@.@-@@"};
    robot user;
    user.until("ink where the line stands", [&](Fl_Window& window) {
        EXPECT_EQ(shown(*viewer), (strings{"", "@f@S14 @C88", "@f@S14 @.@-@@"}));
        const std::uint32_t paper = display.pixel(fl_xid(&window), 600, 400);
        const Fl_Widget* const browser = viewer->browser;
        int ink = 0;
        for (int x = 0; x < 40; ++x) {
            // The second of its lines, of which none is lower than 12 pixels or higher than 20.
            for (int y = 22; y < 26; ++y)
                ink +=
                    display.pixel(fl_xid(&window), browser->x() + 8 + x, browser->y() + y) != paper;
        }
        return ink > 10;
    });
    user.click("ANNULER");
    show(lines);
}

// ---- Exports

TEST_F(ViewerOnDisplay, TheTextFileIsWrittenAndSaid) {
    for (const int english : {0, 1}) {
        SCOPED_TRACE(english);
        speak(english);
        write("tmp.txt", std::string(10000, 'x'));
        strings lines = {"#C 10 ", "a#b", "#T", "(c)"};
        robot user;
        user.click(english ? "text file" : "fichier texte");
        user.until_label(english ? "generation of tmp.txt file" : "generation du fichier tmp.txt");
        user.press(XK_Return).click(english ? "CANCEL" : "ANNULER");
        show(lines);
        const std::string dashes = std::string(55, '-') + "\n";
        EXPECT_EQ(bytes_of("tmp.txt"), dashes + "a#b\n" + dashes + "(c)\n");
    }
}

TEST_F(ViewerOnDisplay, ThePdfFileIsWrittenSaidOpenedAndRemoved) {
    for (const int english : {0, 1}) {
        SCOPED_TRACE(english);
        speak(english);
        files::remove("said");
        strings lines = numbered(78);
        const std::string command = recording_command("note it");
        robot user;
        user.click(english ? "pdf file" : "fichier pdf");
        user.until_label(english ? "generation of tmp.pdf file" : "generation du fichier tmp.pdf");
        user.until("not opened before the message is closed",
                   [&](Fl_Window&) { return files::exists("tmp.pdf") && !files::exists("said"); });
        user.press(XK_Return);
        user.until("opened", [](Fl_Window&) { return bytes_of("said") == "1|tmp.pdf|"; });
        user.until("removed", [](Fl_Window&) { return !files::exists("tmp.pdf"); });
        user.click(english ? "CANCEL" : "ANNULER");
        show(lines, command);
        std::fstream again("again.pdf", std::ios::out);
        OFD_afficheur_filtre_impression(lines.data(), 79).imprime_pdf(again);
        again.close();
        EXPECT_GT(files::file_size("seen.pdf"), 1000u);
        EXPECT_EQ(bytes_of("seen.pdf"), bytes_of("again.pdf"));
    }
}

TEST_F(ViewerOnDisplay, FilesThatCannotBeOpenedAndCommandsThatFailAreNotReported) {
    files::create_directory("tmp.txt");
    files::create_directory("tmp.pdf");
    strings lines = numbered(3);
    robot user;
    user.click("fichier texte").until_label("generation du fichier tmp.txt").press(XK_Return);
    user.click("fichier pdf").until_label("generation du fichier tmp.pdf").press(XK_Return);
    after_a_while(user, "still the same page", [&] { return shown(*viewer) == page_of(1, 3); });
    user.click("ANNULER");
    show(lines, "false");
    EXPECT_TRUE(files::is_empty("tmp.txt"));
    EXPECT_TRUE(files::is_empty("tmp.pdf"));
}

TEST_F(ViewerOnDisplay, TheCommandStandsBetweenDoubleQuotesAsItIs) {
    recording_command("note it");
    const struct {
        const char *command, *said;
    } cases[] = {{"./note it", "1|tmp.pdf|"},
                 {"$PWD/note it", "1|tmp.pdf|"},
                 {"./note it\" \"tmp.pdf", "2|tmp.pdf|tmp.pdf|"}};
    for (const auto& [command, said] : cases) {
        SCOPED_TRACE(command);
        write("tmp.pdf", "%PDF");
        files::remove("said");
        files::remove("seen.pdf");
        viewer->viewer_command = command;
        viewer->imprime_tmp_pdf();
        EXPECT_EQ(bytes_of("said"), said);
        EXPECT_EQ(bytes_of("seen.pdf"), "%PDF");
        EXPECT_FALSE(files::exists("tmp.pdf"));
    }
}

TEST_F(ViewerOnDisplay, ThePostscriptRouteConvertsShowsAndRemovesInThatOrder) {
    files::create_directory("bin");
    for (const char* const tool : {"ps2pdf", "acroread"}) {
        const std::string path = std::string("bin/") + tool;
        write(path, "#!/bin/sh\necho \"${0##*/} $*\" $(ls tmp.*) >>said\ncp tmp.ps tmp.pdf\n");
        files::permissions(path, files::perms::owner_all);
    }
    const std::string path = std::getenv("PATH");
    setenv("PATH", ((folder / "bin:").string() + path).c_str(), 1);
    write("tmp.ps", "%!");
    viewer->imprime_tmp_ps();
    setenv("PATH", path.c_str(), 1);
    EXPECT_EQ(bytes_of("said"), "ps2pdf tmp.ps tmp.ps\nacroread tmp.pdf tmp.pdf tmp.ps\n");
    EXPECT_FALSE(files::exists("tmp.ps"));
    EXPECT_FALSE(files::exists("tmp.pdf"));
}

// ---- How it ends

TEST_F(ViewerOnDisplay, NothingToShowReturnsAtOnceWithTheParentActive) {
    viewer->activation(nullptr, 5, "", "");
    EXPECT_TRUE(parent.active());
    std::list<std::string> none;
    parent.deactivate();
    viewer->activation(none, "", "");
    EXPECT_TRUE(parent.active());
}

TEST_F(ViewerOnDisplay, NoLineAtAllShowsOneEmptyPage) {
    std::string line = "x";
    for (const int count : {0, -3}) {
        robot user;
        user.until("an empty page", [&](Fl_Window&) {
            return label_of(viewer->page_indicator) == "page 1 / 1    " && shown(*viewer).empty();
        });
        user.click("ANNULER");
        viewer->activation(&line, count, "", "");
    }
}

TEST_F(ViewerOnDisplay, ClosingTheWindowEndsTheArrayForm) {
    strings lines = numbered(3);
    const struct {
        const char* how;
        std::function<void(robot&)> close;
    } ways[] = {{"the window manager", [](robot& user) { user.close(); }},
                {"Escape", [](robot& user) { user.press(XK_Escape); }}};
    for (const auto& [how, close] : ways) {
        SCOPED_TRACE(how);
        robot user;
        close(user);
        show(lines);
        EXPECT_FALSE(viewer->window->shown());
        EXPECT_TRUE(parent.active());
    }
}

TEST_F(ViewerOnDisplay, AWindowHiddenWithoutAnEventEndsTheArrayFormAtTheNextEvent) {
    strings lines = numbered(3);
    int rounds = 0;
    robot user;
    user.until("hide", [&](Fl_Window& window) {
        window.hide();
        return true;
    });
    watcher look([&] {
        if (viewer->window->shown()) return false;
        if (++rounds < 30) return false;
        viewer->browser->do_callback();
        return true;
    });
    show(lines);
    EXPECT_EQ(rounds, 30) << "not before the event";
}

TEST_F(ViewerOnDisplay, OnlyCancelEndsTheListForm) {
    std::list<std::string> lines = {"#C 600 ", "l1", "l2"};
    const struct {
        const char* how;
        std::function<void(robot&)> close;
    } ways[] = {{"the window manager", [](robot& user) { user.close(); }},
                {"Escape", [](robot& user) { user.press(XK_Escape); }}};
    for (const auto& [how, close] : ways) {
        SCOPED_TRACE(how);
        int rounds = 0;
        robot user;
        sees_page(user, "page 1 / 1    ", 1, 2);
        close(user);
        watcher look([&] {
            if (viewer->window->shown()) return false;
            EXPECT_FALSE(parent.active());
            if (++rounds < 30) return false;
            viewer->next_button->do_callback();
            viewer->cancel_button->do_callback();
            return true;
        });
        viewer->activation(lines, "Liste", "true");
        EXPECT_EQ(rounds, 30) << "it goes on while closed";
        EXPECT_TRUE(parent.active());
    }
}

TEST_F(ViewerOnDisplay, TheListFormWorksOnACopyThatGoesWithIt) {
    const strings lines = numbered(78);
    std::list<std::string> given(lines.begin(), lines.end());
    robot user;
    user.click("page suivante");
    user.until("the second page of the copy", [&](Fl_Window&) {
        given.clear();
        return shown(*viewer) == page_of(78, 78);
    });
    user.click("page precedente");
    sees_page(user, "page 1 / 2    ", 1, 77);
    user.click("ANNULER");
    viewer->activation(given, "Liste", "true");
    viewer->visu_page();
    EXPECT_EQ(shown(*viewer), strings{}) << "no line is left to show";
    EXPECT_EQ(viewer->print_filter->count, 0);
    EXPECT_EQ(viewer->text_filter->count, 0);
}

}  // namespace
