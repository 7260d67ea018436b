// Opens each dialog of the library in turn, and prints what the user answered:
//     dialogues             all of them
//     dialogues NAME...     only those
//     dialogues -h          their names
#include <unistd.h>

#include <iostream>
#include <string>

#include <FL/Fl.H>
#include <FL/Fl_Double_Window.H>
#include <FL/fl_ask.H>
#include <FL/fl_draw.H>

#include "forms/dialogs.h"
#include "forms/drawing.h"
#include "forms/vision_sheet.h"
#include "forms/wait_form.h"

namespace {

/// A station drawn on a sheet: whatever lies outside the sheet's rectangle is cut off.
class station_drawing : public Fl_Double_Window {
public:
    station_drawing() : Fl_Double_Window(420, 260, "Dessin") { end(); }

private:
    void draw() override {
        fl_rectf(0, 0, w(), h(), FL_WHITE);
        fl_rectbound(10, 10, 400, 240, FL_LIGHT2);
        OFL_vision_sheet sheet;
        sheet.define(20, 20, 380, 220, FL_BLACK);
        sheet.ofl_rectbound(40, 150, 320, 30, FL_YELLOW);
        for (int x = 50; x < 360; x += 40) sheet.ofl_circbound(x, 184, 20, FL_GREEN);
        sheet.ofl_rectf(300, 60, 200, 60, FL_RED);
        sheet.ofl_rect(180, 60, 60, 60, FL_BLUE);
        sheet.ofl_circ(190, 70, 40, FL_BLUE);
        sheet.ofl_circf(200, 80, 20, FL_BLUE);
        sheet.ofl_line(40, 50, 280, 50, FL_BLACK);
        sheet.ofl_dash_line(40, 40, 280, 40, FL_BLACK);
        sheet.ofl_break_line(250, 90, 290, 90, FL_RED);
        sheet.ofl_drw_arrow_line(60, 130, 300, 130, 14, 0.45, FL_BLUE);
        sheet.ofl_arrowbound(60, 80, 90, 80, FL_DARK_GREEN);
        sheet.ofl_drw_String(FL_ALIGN_CENTER, 40, 150, 320, 30, FL_BLACK, FL_HELVETICA_BOLD, 16,
                             "tapis");
    }
};

std::string long_message() {
    std::string text = "Journal du poste\n\n";
    for (int i = 1; i <= 60; ++i)
        text += "cycle " + std::to_string(i) + " : pression 100 %, d\xC3\xA9p\xC3\xB4t fait\n";
    return text;
}

void wait_two_seconds() {
    const OFD_wait_form wait("Purge de la buse en cours ...");
    sleep(2);
}

void show_drawing() {
    station_drawing window;
    window.show();
    while (window.shown()) Fl::wait();
}

const struct {
    const char* name;
    void (*show)();
} dialogs[] = {
    {"question", [] { std::cout << fl_show_Squestion("Vider le tiroir ?"); }},
    {"message", [] { fl_show_Smessages("Cycle termin\xC3\xA9 \xC3\xA0 100 %."); }},
    {"alerte",
     [] {
         fl_show_Salert(
             "La presse est bloqu\xC3\xA9"
             "e.");
     }},
    {"reel", [] { std::cout << fl_show_double("Vitesse du tapis (m/s) :", 1.5); }},
    {"entier",
     [] {
         std::cout << fl_show_int(
             "Nombre de pi\xC3\xA8"
             "ces :",
             12);
     }},
    {"texte", [] { std::cout << fl_show_Sinput("Nom du poste :", "ZK4"); }},
    {"long", [] { fl_show_Sbigmessages(long_message(), 80); }},
    {"attente", wait_two_seconds},
    {"auteurs", fl_show_ms},
    {"dessin", show_drawing},
};

/// Opens a dialog, and prints its name and then the answer.
bool show(const std::string& name) {
    for (const auto& each : dialogs) {
        if (name != each.name) continue;
        std::cout << name << " : ";
        each.show();
        std::cout << std::endl;
        return true;
    }
    return false;
}

}  // namespace

int main(int argc, char** argv) {
    fl_message_title_default("dialogues");
    fl_no = "Non";
    fl_yes = "Oui";
    fl_cancel = "Annuler";
    fl_close = "Fermer";
    if (argc == 2 && std::string(argv[1]) == "-h") {
        for (const auto& each : dialogs) std::cout << each.name << '\n';
        return 0;
    }
    if (argc == 1) {
        for (const auto& each : dialogs) show(each.name);
        return 0;
    }
    for (int i = 1; i < argc; ++i) {
        if (!show(argv[i])) {
            std::cerr << "dialogues: no dialog is called " << argv[i]
                      << "; dialogues -h lists them\n";
            return 2;
        }
    }
    return 0;
}
