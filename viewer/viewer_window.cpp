#include "viewer/viewer_window.h"

#include <unistd.h>

#include <climits>
#include <cstdlib>
#include <fstream>
#include <string_view>
#include <vector>

#include <FL/Fl.H>
#include <FL/forms.H>

#include "forms/browser_formats.h"
#include "forms/dialogs.h"
#include "forms/unmirrored_form.h"
#include "forms/widget_shortcuts.h"
#include "strings/number_formatting.h"
#include "strings/number_parsing.h"

namespace {

constexpr useconds_t poll_pause_us = 1000;
constexpr std::size_t piece_bytes = 161;

/// A text in both languages.
struct words {
    const char* french;
    const char* english;
    const char* in(std::int32_t language) const { return language ? english : french; }
};

constexpr words text_done = {"generation du fichier tmp.txt", "generation of tmp.txt file"};
constexpr words pdf_done = {"generation du fichier tmp.pdf", "generation of tmp.pdf file"};

struct button {
    Fl_Widget* OFD_afficheur::*kept;
    int x, y, w, h;
    words label;
};

// In creation order. Pixels from the window's top left.
constexpr button labelled_buttons[] = {
    {&OFD_afficheur::next_button, 300, 630, 120, 20, {"page suivante", "next page"}},
    {&OFD_afficheur::previous_button, 300, 660, 120, 20, {"page precedente", "previous page"}},
    {&OFD_afficheur::cancel_button, 40, 630, 90, 50, {"ANNULER", "CANCEL"}},
    {&OFD_afficheur::pdf_button, 500, 630, 100, 50, {"fichier pdf", "pdf file"}},
    {&OFD_afficheur::text_button, 750, 630, 100, 50, {"fichier texte", "text file"}},
};

Fl_Browser* add_browser() {
    Fl_Browser* const browser = fl_add_browser(FL_HOLD_BROWSER, 10, 50, 910, 570, nullptr);
    browser->box(FL_DOWN_BOX);
    browser->color(FL_GRAY);
    browser->labelfont(FL_TIMES);
    return browser;
}

Fl_FormsText* add_title() {
    Fl_FormsText* const title = fl_add_text(FL_NO_BOX, 280, 20, 310, 20, "");
    title->labeltype(FL_NORMAL_LABEL);
    title->labelfont(FL_HELVETICA_BOLD);
    title->labelsize(12);
    title->align(FL_ALIGN_INSIDE);
    return title;
}

Fl_FormsText* add_page_indicator() {
    Fl_FormsText* const indicator = fl_add_text(FL_NO_BOX, 80, 20, 120, 20, "");
    indicator->align(FL_ALIGN_LEFT);
    return indicator;
}

Fl_Widget* add_labelled_button(const button& each, std::int32_t english) {
    Fl_Widget* const made =
        fl_add_button(FL_NORMAL_BUTTON, each.x, each.y, each.w, each.h, each.label.in(english));
    made->labelfont(FL_TIMES);
    made->labelsize(12);
    return made;
}

/// The filters of an earlier activation are not deleted: callers may hold them.
void make_filters(OFD_afficheur& viewer, std::string* lines, int count) {
    viewer.display_filter = new OFD_afficheur_filtre_affichage(lines, count);
    viewer.print_filter = new OFD_afficheur_filtre_impression(lines, count);
    viewer.text_filter = new OFD_afficheur_filtre_texte(lines, count);
}

/// The piece of `text` that the browser gets in one go: up to a newline, 161 bytes at most.
std::string piece_at(std::string_view text, std::size_t start) {
    const std::string_view most = text.substr(start, piece_bytes);
    return std::string(most.substr(0, most.find('\n')));
}

/// Leaves a filter without lines, before those that it had go away.
template <class Filter>
void forget_lines(Filter& filter) {
    filter.lines = nullptr;
    filter.count = 0;
}

/// The parent cannot be used during an activation,
/// and can be after it, however the activation ends.
class parent_at_rest {
public:
    explicit parent_at_rest(Fl_Window* parent) : parent_(parent) {
        if (parent_) parent_->deactivate();
    }
    ~parent_at_rest() {
        if (parent_) parent_->activate();
    }
    parent_at_rest(const parent_at_rest&) = delete;
    parent_at_rest& operator=(const parent_at_rest&) = delete;

private:
    Fl_Window* parent_;
};

void open(OFD_afficheur& viewer, std::string* lines, int count, const std::string& title,
          const std::string& viewer_command) {
    viewer.viewer_command = viewer_command;
    viewer.page = 0;
    make_filters(viewer, lines, count);
    viewer.visu_page();
    fl_set_object_Slabel(viewer.title, title);
    fl_show_form(viewer.window, FL_PLACE_MOUSE, FL_TRANSIENT, "");
}

/// The user counts pages from 1. A number that no int holds is no page, and must not become one.
void go_to_typed_page(OFD_afficheur& viewer) {
    const long number = Stol(viewer.page_input->value());
    if (number >= 1 && number <= INT_MAX) viewer.page_numero(static_cast<int>(number - 1));
}

void serve(OFD_afficheur& viewer, const Fl_Widget* used) {
    if (used == viewer.previous_button) viewer.page_precedente();
    if (used == viewer.next_button) viewer.page_suivante();
    if (used == viewer.pdf_button) viewer.fichier_pdf();
    if (used == viewer.text_button) viewer.fichier_texte();
    if (used == viewer.go_button) go_to_typed_page(viewer);
}

enum class ends { by_cancel_alone, also_when_closed };

/// No widget of the window has a callback, so all of them land in the toolkit's queue; so does the
/// window itself when its manager closes it.
void run(OFD_afficheur& viewer, ends way) {
    for (;;) {
        Fl::check();
        const Fl_Widget* const used = Fl::readqueue();
        usleep(poll_pause_us);
        if (!used) continue;
        serve(viewer, used);
        const bool closed = way == ends::also_when_closed && !viewer.window->shown();
        if (used == viewer.cancel_button || closed) break;
    }
    viewer.window->hide();
}

/// Runs a command and waits for its end; its status is ignored.
void shell(const std::string& command) {
    [[maybe_unused]] const int status = std::system(command.c_str());
}

}  // namespace

OFD_afficheur::OFD_afficheur(Fl_Window* parent, int english)
    : english(english),
      page(0),
      window(fl_bgn_form(FL_NO_BOX, 920, 700)),
      parent(parent),
      unused_first(nullptr),
      unused_second(nullptr) {
    fl_add_box(FL_UP_BOX, 0, 0, 930, 700, "");  // 10 pixels wider than the window: no right edge
    browser = add_browser();
    title = add_title();
    page_indicator = add_page_indicator();
    for (const button& each : labelled_buttons)
        this->*each.kept = add_labelled_button(each, english);
    page_input = fl_add_input(FL_NORMAL_INPUT, 150, 645, 40, 20, "");
    go_button = fl_add_button(FL_NORMAL_BUTTON, 190, 645, 20, 20, "");
    end_form_unmirrored();
    make_filters(*this, nullptr, 0);
}

void OFD_afficheur::activation(std::string* lines, int count, const std::string& title,
                               const std::string& viewer_command) {
    const parent_at_rest rest(parent);
    if (!lines) return;
    open(*this, lines, count, title, viewer_command);
    run(*this, ends::also_when_closed);
}

void OFD_afficheur::activation(std::list<std::string>& lines, const std::string& title,
                               const std::string& viewer_command) {
    const parent_at_rest rest(parent);
    if (lines.empty()) return;
    std::vector<std::string> copy(lines.begin(), lines.end());
    open(*this, copy.data(), static_cast<int>(copy.size()), title, viewer_command);
    run(*this, ends::by_cancel_alone);
    forget_lines(*display_filter);
    forget_lines(*print_filter);
    forget_lines(*text_filter);
}

void OFD_afficheur::visu_page() {
    const std::string text = display_filter->visu_page(page);
    browser->clear();
    for (std::size_t start = 0; start < text.size();) {
        const std::string piece = piece_at(text, start);
        browser->add(without_unsafe_formats(piece).c_str());
        start += piece.size() + 1;  // the newline, or the byte after a full piece: that one is lost
    }
    browser->redraw();
    const std::string number = unslong2S(page + 1ul);
    const std::string pages = unslong2S(display_filter->nb_pages() + 1ul);
    fl_set_object_Slabel(page_indicator, "page " + number + " / " + pages + "    ");
    fl_set_Sinput(page_input, number);
}

void OFD_afficheur::page_precedente() {
    if (page <= 0) return;
    --page;
    visu_page();
}

void OFD_afficheur::page_suivante() {
    if (page >= display_filter->nb_pages()) return;
    ++page;
    visu_page();
}

void OFD_afficheur::page_numero(int index) {
    if (index < 0 || index > display_filter->nb_pages()) return;
    page = index;
    visu_page();
}

void OFD_afficheur::fichier_texte() {
    std::fstream out("tmp.txt", std::ios::out);
    text_filter->imprime(out);
    out.close();
    fl_show_Smessages(text_done.in(english));
}

void OFD_afficheur::fichier_pdf() {
    std::fstream out("tmp.pdf", std::ios::out);
    print_filter->imprime_pdf(out);
    out.close();
    fl_show_Smessages(pdf_done.in(english));
    imprime_tmp_pdf();
}

void OFD_afficheur::imprime_tmp_pdf() {
    shell("\"" + viewer_command + "\" tmp.pdf");
    shell("rm tmp.pdf");
}

void OFD_afficheur::imprime_tmp_ps() {
    for (const char* command : {"ps2pdf tmp.ps", "acroread tmp.pdf", "rm tmp.pdf", "rm tmp.ps"})
        shell(command);
}
