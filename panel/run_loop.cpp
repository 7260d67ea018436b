#include "panel/run_loop.h"

#include <unistd.h>

#include <algorithm>
#include <iostream>

#include <FL/Fl.H>
#include <FL/Fl_Double_Window.H>
#include <FL/forms.H>

#include "ioshare/io_client.h"
#include "panel/quorin_form.h"

std::int32_t etat_sorties[13] = {};

void reset_outputs() { std::ranges::fill(etat_sorties, 0); }

namespace {

// In the order in which they are shown.
constexpr auto shown_inputs = quorin_form::join(
    quorin_form::shape::indicator,
    {"b1e", "b1s", "b2e",  "b2s",  "b3e",  "b3s",  "te",   "ts",    "vh", "vb", "ph",
     "pb",  "pp",  "p1ok", "p2ok", "p3ok", "init", "vide", "colle", "dc", "ac", "atu"});

// In the order in which they are written.
constexpr auto driven_outputs = quorin_form::join(
    quorin_form::shape::button, {"DEPOSE", "MTA", "MT", "ASPI", "RENT", "SORT", "DESV", "MONV",
                                 "DESP", "MONP", "BZ1", "BZ2", "BZ3"});
static_assert(driven_outputs.size() == std::size(etat_sorties));

constexpr useconds_t pass_pause_us = 100'000;

// In ISO-8859-1, as the panel has always said it: the c with a cedilla is the single byte E7.
constexpr char session_over[] = "terminaison re\xE7ue ...";

quorin_class* show_form(int argc, char** argv) {
    fl_initialize(&argc, argv, nullptr, nullptr, 0);
    auto* const form = new quorin_class;
    fl_show_form(form->window, FL_PLACE_CENTER | FL_FREE_SIZE, FL_FULLBORDER, "quorin");
    return form;
}

void show_inputs(quorin_class& form, IOsharemem_client& client) {
    for (const auto& [name, place] : shown_inputs) {
        const Fl_Color colour = client.input_is_set(name) == 1 ? FL_RED : FL_BLUE;
        fl_set_object_color(form.kept[place], colour, FL_BLACK);
    }
    // Read with the others, though no indicator shows it.
    client.input_is_set("timer10_term");
    Fl::redraw();
}

/// Writes every output as its button stands, without raising the outputs clock.
void write_outputs(const quorin_class& form, IOsharemem_client& client) {
    for (const auto& [name, place] : driven_outputs)
        client.setreset_output(name, fl_get_button(form.kept[place]) ? 1 : 0);
}

}  // namespace

void activation(int argc, char** argv, IOsharemem_client* client) {
    if (client == reinterpret_cast<IOsharemem_client*>(-1)) {
        std::cerr << "probleme sur shmat() en mode client\n" << std::endl;
        return;
    }
    quorin_class* const form = show_form(argc, argv);
    for (;;) {
        const int received = client->receive();
        if (received == -1 || !form->window->shown()) {
            if (client->receive() == -1) fl_show_message(session_over, "", "");
            return;
        }
        form->window->make_current();
        if (received == 1) show_inputs(*form, *client);
        Fl::check();
        if (Fl::readqueue()) write_outputs(*form, *client);
        usleep(pass_pause_us);
    }
}
