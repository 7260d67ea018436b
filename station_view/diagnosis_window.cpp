#include "station_view/diagnosis_window.h"

#include <FL/Fl.H>
#include <FL/Fl_Box.H>
#include <FL/Fl_Button.H>
#include <FL/Fl_Double_Window.H>
#include <FL/Fl_Hold_Browser.H>

#include <algorithm>
#include <utility>

#include "station_view/diagnosis_answer.h"
#include "station_view/exercise_words.h"
#include "station_view/fault_labels.h"
#include "station_view/signal_meanings.h"
#include "station_view/window_style.h"

namespace {

namespace layout = diagnosis_layout;

void add_title(const layout::area& at, const char* text) {
    window_style::add_heading(at, text)->labelsize(layout::text_px);
}

/// Keeps its keys to itself: the toolkit would offer those that it does not use to the window below
/// the mouse, where some work the desk.
class answer_window : public Fl_Double_Window {
public:
    answer_window() : Fl_Double_Window(layout::width, layout::height) {}
    int handle(int event) override {
        const int taken = Fl_Double_Window::handle(event);
        if (event != FL_KEYBOARD || taken) return taken;
        if (Fl::event_key() == FL_Escape)
            hide();
        else
            press_button_of_key();
        return 1;
    }

private:
    // The toolkit gives the keyboard to the button; the list that had it wants it for the next
    // line.
    void press_button_of_key() {
        Fl_Widget* const before = Fl::focus();
        Fl_Double_Window::handle(FL_SHORTCUT);
        if (shown() && before && contains(before) && before->active_r()) Fl::focus(before);
    }
};

/// What a button does, kept for as long as it is there.
class doing_button : public Fl_Button {
public:
    doing_button(const layout::area& at, std::function<void()> pressed)
        : Fl_Button(at.x, at.y, at.w, at.h), pressed_(std::move(pressed)) {
        callback([](Fl_Widget* self, void*) { static_cast<doing_button*>(self)->pressed_(); });
    }

private:
    std::function<void()> pressed_;
};

void activate(Fl_Widget& widget, bool active) {
    if (active != (widget.active() != 0)) active ? widget.activate() : widget.deactivate();
}

}  // namespace

diagnosis_window::diagnosis_window(const station_model& model, language in, taker answered)
    : model_(model),
      language_(in),
      answered_(std::move(answered)),
      window_(std::make_unique<answer_window>()),
      choosable_names_(names_to_choose(model)) {
    using word = exercise_word;
    const auto text = [in](word which) { return text_of(which, in); };
    window_->copy_label(text(word::diagnosis));
    window_->color(window_style::paper);
    add_title(layout::question, text(word::question));
    add_title(layout::names_title, text(word::sensor_or_actuator));
    names_ = add_list(layout::names);
    names_->callback(
        [](Fl_Widget*, void* self) { static_cast<diagnosis_window*>(self)->show_kinds(); }, this);
    add_title(layout::kinds_title, text(word::kind));
    kinds_ = add_list(layout::kinds);
    add_button(layout::add, text(word::add), text(word::add_tip), FL_Enter, &diagnosis_window::add);
    add_title(layout::answer_title, text(word::answer));
    answer_list_ = add_list(layout::answer);
    remove_ = add_button(layout::remove, text(word::remove), text(word::remove_tip), FL_Delete,
                         &diagnosis_window::remove);
    send_ = add_button(layout::send, text(word::send), text(word::send_tip), FL_CTRL | FL_Enter,
                       &diagnosis_window::send);
    send_->labelfont(FL_HELVETICA_BOLD);
    add_button(layout::close, text(word::close), text(word::close_tip), 0,
               &diagnosis_window::close);
    window_->end();
    window_->set_non_modal();
    fill_names();
}

diagnosis_window::~diagnosis_window() = default;

Fl_Hold_Browser* diagnosis_window::add_list(const area& at) {
    auto* const list = new Fl_Hold_Browser(at.x, at.y, at.w, at.h);
    list->box(FL_BORDER_BOX);
    list->has_scrollbar(Fl_Browser::VERTICAL);
    list->color(window_style::white, window_style::blue);
    list->textsize(layout::text_px);
    list->textcolor(window_style::ink);
    return list;
}

Fl_Button* diagnosis_window::add_button(const area& at, const char* label, const char* tip,
                                        int shortcut, void (diagnosis_window::*pressed)()) {
    auto* const button = new doing_button(at, [this, pressed] { (this->*pressed)(); });
    window_style::dress(*button, label, tip);
    button->labelsize(layout::text_px);
    button->shortcut(shortcut);
    return button;
}

// "@." ends the browser's formats: what follows is shown as it stands.
void diagnosis_window::fill_names() {
    static constexpr int columns[] = {124, 0};
    names_->column_widths(columns);
    for (const std::string& each : choosable_names_)
        names_->add(("@b@." + each + "\t@." + signal_meaning(each, language_)).c_str());
    names_->select(1);
    show_kinds();
}

void diagnosis_window::show_kinds() {
    const int line = names_->value();
    if (line < 1) return;
    choosable_kinds_ =
        kinds_to_choose(choosable_names_[static_cast<std::size_t>(line - 1)], model_);
    kinds_->clear();
    for (const fault_kind each : choosable_kinds_)
        kinds_->add((std::string("@.") + fault_meaning(each, language_) + " (" +
                     std::string(fault_kind_word(each)) + ")")
                        .c_str());
    kinds_->select(1);
}

void diagnosis_window::show_answer() {
    const int line = answer_list_->value();
    answer_list_->clear();
    for (const station_fault& each : answer_)
        answer_list_->add(("@." + fault_sentence(each, language_)).c_str());
    if (!answer_.empty()) answer_list_->select(std::clamp(line, 1, answer_list_->size()));
    activate(*remove_, !answer_.empty());
    activate(*send_, !answer_.empty());
}

void diagnosis_window::add() {
    const int name = names_->value(), kind = kinds_->value();
    if (name < 1 || kind < 1) return;
    add_to(answer_, {choosable_names_[static_cast<std::size_t>(name - 1)],
                     choosable_kinds_[static_cast<std::size_t>(kind - 1)]});
    show_answer();
}

void diagnosis_window::remove() {
    const int line = answer_list_->value();
    if (line < 1) return;
    answer_.erase(answer_.begin() + (line - 1));
    show_answer();
}

void diagnosis_window::send() {
    if (answer_.empty()) return;
    answered_(answer_);
    close();
}

void diagnosis_window::open(const std::string& last_answer) {
    if (!window_->shown()) {
        answer_ = faults_in(last_answer);
        show_answer();
    }
    window_->show();
    names_->take_focus();
}

void diagnosis_window::close() { window_->hide(); }
