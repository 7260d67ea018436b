#include "station_view/manual_panels.h"

#include <FL/Fl_Browser.H>
#include <FL/Fl_Button.H>
#include <FL/Fl_Check_Browser.H>

#include <utility>

#include "station_view/lamp_panels.h"
#include "station_view/window_words.h"

namespace {

constexpr int inputs_width = 400;

}  // namespace

manual_panels::manual_panels(Fl_Window* window, int height, manual_station& station, language in,
                             std::function<void()> changed, std::function<void()> quit)
    : station_(station),
      changed_(std::move(changed)),
      quit_(std::move(quit)),
      inputs_(window, 0, height),
      outputs_(window, inputs_width, height, text_of(window_word::outputs, in)) {
    for (const std::string_view name : station_.inputs()) inputs_.add(std::string(name));
    add_names(outputs_, station_.outputs());
    const std::pair<Fl_Widget*, window_word> tips[] = {
        {inputs_.signal_browser, window_word::signal_tip},
        {inputs_.sticky_browser, window_word::sticky_tip},
        {inputs_.init_button, window_word::init_tip},
        {inputs_.go_button, window_word::go_tip},
        {inputs_.quit_button, window_word::quit_tip},
        {outputs_.minus_button, window_word::page_back_tip},
        {outputs_.plus_button, window_word::page_on_tip}};
    for (const auto& [widget, tip] : tips) widget->tooltip(text_of(tip, in));
}

void manual_panels::show() {
    // A hidden panel keeps its lamps as they were.
    if (station_.commands() == shown_ || !outputs_.window->shown()) return;
    shown_ = station_.commands();
    outputs_.eval(shown_.data());
}

void manual_panels::look() {
    while (Fl_Widget* const used = Fl::readqueue()) use(used);
}

// The panel takes what was used from the queue itself.
void manual_panels::use(Fl_Widget* used) {
    if (used == inputs_.quit_button) return quit_();
    const bool sends = used == inputs_.go_button, clears = used == inputs_.init_button;
    if (!sends && !clears) return;
    Fl_Widget::default_callback(used, nullptr);
    std::vector<int> values(station_.inputs().size());
    int init = 0, quit = 0;
    inputs_.check(&init, &quit, values.data());
    if (quit) return quit_();
    station_.set_inputs(values);
    changed_();
}
