#include "forms/dialogs.h"

#include <FL/Fl_Group.H>
#include <FL/fl_ask.H>

#include <cstdio>

#include "forms/toolkit_text.h"

namespace {

constexpr const char* author_credit = "Les auteurs de quorin\n\nPanneau de commande du ZK4";

/// A text that the toolkit's dialog shows. The dialog's window is kept for the next dialog, and
/// with it the pointer: it is taken back here, before the text goes.
class shown_text {
public:
    explicit shown_text(const char* text) : text_(text) {}
    ~shown_text() {
        Fl_Group* const dialog = fl_message_icon()->parent();
        for (int i = 0; i < dialog->children(); ++i) {
            if (dialog->child(i)->label() == text_) dialog->child(i)->label(nullptr);
        }
    }
    shown_text(const shown_text&) = delete;
    shown_text& operator=(const shown_text&) = delete;
    const char* get() const { return text_; }

private:
    const char* text_;
};

/// Asks for a number, printed and read back with `format`. The
/// field starts with the first 80 bytes of what is printed.
template <typename number>
number show_number(const char* label, const char* format, number value) {
    char printed[81];
    std::snprintf(printed, sizeof printed, format, value);
    const shown_text shown(label);
    if (const char* reply = fl_input("%s", printed, shown.get()))
        std::sscanf(reply, format, &value);
    return value;
}

}  // namespace

int fl_show_Squestion(const std::string& text, int) {
    const toolkit_text copy(text);
    const shown_text shown(copy);
    return fl_choice("%s", fl_no, fl_yes, nullptr, shown.get());
}

void fl_show_Smessages(const std::string& text) {
    const toolkit_text copy(text);
    const shown_text shown(copy);
    fl_message("%s", shown.get());
}

void fl_show_Salert(const std::string& text) {
    const toolkit_text copy(text);
    const shown_text shown(copy);
    fl_alert("%s", shown.get());
}

double fl_show_double(const char* label, double value) { return show_number(label, "%lf", value); }

double fl_show_double(const std::string& label, double value) {
    return fl_show_double(static_cast<const char*>(toolkit_text(label)), value);
}

int fl_show_int(const char* label, int value) { return show_number(label, "%d", value); }

std::string fl_show_Sinput(const std::string& label, const std::string& value) {
    const toolkit_text copy(label);
    const shown_text shown(copy);
    const char* reply = fl_input("%s", toolkit_text(value), shown.get());
    return reply ? reply : "";
}

void fl_show_ms() { fl_message("%s", author_credit); }
