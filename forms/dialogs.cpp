#include "forms/dialogs.h"

#include <FL/fl_ask.H>

#include <cstdio>

#include "forms/toolkit_text.h"

namespace {

constexpr const char* author_credit = "Les auteurs de quorin\n\nPanneau de commande du ZK4";

/// Asks for a number that printf and scanf write and read as `format` says, in a field of 80 bytes
/// at first.
template <typename number>
number show_number(const char* label, const char* format, number value) {
    char printed[81];
    std::snprintf(printed, sizeof printed, format, value);
    if (const char* reply = fl_input("%s", printed, label)) std::sscanf(reply, format, &value);
    return value;
}

}  // namespace

int fl_show_Squestion(const std::string& text, int) {
    return fl_choice("%s", fl_no, fl_yes, nullptr, static_cast<const char*>(toolkit_text(text)));
}

void fl_show_Smessages(const std::string& text) {
    fl_message("%s", static_cast<const char*>(toolkit_text(text)));
}

void fl_show_Salert(const std::string& text) {
    fl_alert("%s", static_cast<const char*>(toolkit_text(text)));
}

double fl_show_double(const char* label, double value) { return show_number(label, "%lf", value); }

double fl_show_double(const std::string& label, double value) {
    return fl_show_double(static_cast<const char*>(toolkit_text(label)), value);
}

int fl_show_int(const char* label, int value) { return show_number(label, "%d", value); }

std::string fl_show_Sinput(const std::string& label, const std::string& value) {
    const char* reply =
        fl_input("%s", toolkit_text(value), static_cast<const char*>(toolkit_text(label)));
    return reply ? reply : "";
}

void fl_show_ms() { fl_message("%s", author_credit); }
