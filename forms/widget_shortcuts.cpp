#include "forms/widget_shortcuts.h"

#include <FL/Fl_Input.H>
#include <FL/fl_draw.H>

#include <memory>
#include <vector>

#include "forms/toolkit_text.h"

namespace {

/// A copy of a label for a widget that keeps the pointer. Never
/// released: see fl_add_Stext. The list keeps the copies reachable,
/// so that they do not count as leaked once their widgets are gone.
const char* kept_label(const std::string& label) {
    static auto& kept = *new std::vector<std::unique_ptr<char[]>>;
    return kept.emplace_back(Stoa(label)).get();
}

}  // namespace

void fl_set_Sinput(Fl_Widget* input, const std::string& value) {
    static_cast<Fl_Input*>(input)->value(toolkit_text(value));
}

Fl_FormsText* fl_add_Stext(Fl_Boxtype box, int x, int y, int w, int h, const std::string& label) {
    auto* text = new Fl_FormsText(box, x, y, w, h, kept_label(label));
    text->align(FL_ALIGN_LEFT);
    return text;
}

void fl_add_browser_Sline(Fl_Widget* browser, const std::string& line) {
    static_cast<Fl_Browser*>(browser)->add(toolkit_text(line));
}

void fl_replace_browser_Sline(Fl_Widget* browser, int line, const std::string& text) {
    static_cast<Fl_Browser*>(browser)->text(line, toolkit_text(text));
}

int fl_add_browser_Sline_if_new(Fl_Browser* browser, const std::string& line) {
    for (int i = 1; i <= browser->size(); ++i) {
        if (browser->text(i) == line) return 0;
    }
    fl_add_browser_Sline(browser, line);
    return 1;
}

void fl_set_object_Slabel(Fl_Widget* widget, const std::string& label, int n) {
    const bool cut = n >= 0 && static_cast<std::size_t>(n) < label.size();
    widget->copy_label(toolkit_text(cut ? label.substr(0, n) : label));
}

void fl_drw_String(unsigned align, int x, int y, int w, int h, unsigned colour, int size, int font,
                   const std::string& text) {
    fl_font(font, size);
    fl_color(colour);
    fl_draw(toolkit_text(text), x, y, w, h, align);
}
