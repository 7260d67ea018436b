#include "station_view/lamp_panels.h"

#include <utility>

#include "station_view/window_words.h"

void add_names(OFD_simulator_output& panel, name_span names) {
    // Its list reads "@" as the beginning of a format; "@." is one that ends them.
    for (const std::string_view name : names)
        panel.add((name.starts_with('@') ? "@." : "") + std::string(name));
    while (panel.page > 0) panel.previous_page();
}

lamp_panels::lamp_panels(Fl_Window* window, int height, const station_model& model, language in)
    : inputs_{{window, 0, height, text_of(window_word::inputs, in)},
              std::vector<int>(model.inputs().size()),
              {}},
      outputs_{{window, width / 2, height, text_of(window_word::outputs, in)},
               std::vector<int>(model.outputs().size()),
               {}} {
    add_names(inputs_.panel, model.inputs());
    add_names(outputs_.panel, model.outputs());
}

void lamp_panels::read(std::span<const station_event> events) {
    for (const station_event& each : events) {
        if (each.kind != event_kind::input && each.kind != event_kind::output) continue;
        std::vector<int>& values =
            each.kind == event_kind::input ? inputs_.values : outputs_.values;
        if (std::cmp_greater_equal(each.index, 0) && std::cmp_less(each.index, values.size()))
            values[static_cast<std::size_t>(each.index)] = static_cast<int>(each.value);
    }
}

void lamp_panels::lamps::show() {
    // A hidden panel keeps its lamps as they were.
    if (values == shown || !panel.window->shown()) return;
    shown = values;
    panel.eval(shown.data());
}

void lamp_panels::show() {
    inputs_.show();
    outputs_.show();
}
