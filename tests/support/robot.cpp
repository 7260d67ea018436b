#include "tests/support/robot.h"

#include <FL/Fl.H>
#include <FL/x.H>

namespace {

constexpr double poll_s = 0.004;
constexpr std::chrono::seconds patience(100);

std::string label_of(const Fl_Widget& widget) { return widget.label() ? widget.label() : ""; }

}  // namespace

Fl_Widget* find_widget(Fl_Group& group, const std::function<bool(Fl_Widget&)>& wanted) {
    for (int i = 0; i < group.children(); ++i) {
        Fl_Widget* child = group.child(i);
        if (!child->visible()) continue;
        if (wanted(*child)) return child;
        if (Fl_Group* inner = child->as_group()) {
            if (Fl_Widget* found = find_widget(*inner, wanted)) return found;
        }
    }
    return nullptr;
}

Fl_Input_* first_field(Fl_Group& group) {
    return dynamic_cast<Fl_Input_*>(find_widget(
        group, [](Fl_Widget& each) { return dynamic_cast<Fl_Input_*>(&each) != nullptr; }));
}

std::string field_value(Fl_Group& group) {
    const Fl_Input_* input = first_field(group);
    return input ? std::string(input->value(), input->size()) : std::string();
}

robot::robot() : progress_(std::chrono::steady_clock::now()) {
    Fl::add_timeout(poll_s, poll, this);
}

robot::~robot() {
    Fl::remove_timeout(poll, this);
    for (const step& each : steps_) ADD_FAILURE() << "the dialog ended before: " << each.what;
}

robot& robot::at(const std::string& title) {
    title_ = title;
    return *this;
}

robot& robot::add(const std::string& what, std::function<bool(Fl_Window&)> take) {
    steps_.push_back({title_, what, std::move(take)});
    return *this;
}

robot& robot::go_to_end() {
    return add("the end of the field", [this, calm = 0](Fl_Window& window) mutable {
        const Fl_Input_* input = first_field(window);
        const bool there = input && Fl::focus() == input && input->position() == input->size() &&
                           input->mark() == input->size();
        calm = there ? calm + 1 : 0;
        if (!there) display_.key(XK_End);
        return calm > 10;
    });
}

robot& robot::press(x_key key, x_key modifier) {
    return add("press key " + std::to_string(key), [=, this](Fl_Window&) {
        display_.key(key, modifier);
        return true;
    });
}

robot& robot::type(const std::string& text) {
    return add("type " + text, [=, this](Fl_Window&) {
        for (const unsigned char each : text) display_.key(each);
        return true;
    });
}

robot& robot::click(const std::string& label) {
    return add("click " + label, [=, this](Fl_Window& window) {
        const Fl_Widget* widget =
            find_widget(window, [&](Fl_Widget& each) { return label_of(each) == label; });
        if (!widget) return false;
        display_.click(fl_xid(&window), widget->x() + widget->w() / 2,
                       widget->y() + widget->h() / 2);
        return true;
    });
}

robot& robot::close() {
    return add("close", [this](Fl_Window& window) {
        display_.close(fl_xid(&window));
        return true;
    });
}

robot& robot::until(const std::string& what, std::function<bool(Fl_Window&)> true_of) {
    return add(what, std::move(true_of));
}

robot& robot::until_label(const std::string& label) {
    return add("label " + label.substr(0, 80), [=](Fl_Window& window) {
        return find_widget(window, [&](Fl_Widget& each) { return label_of(each) == label; }) !=
               nullptr;
    });
}

robot& robot::until_value(const std::string& value) {
    return add("value " + value.substr(0, 80),
               [=](Fl_Window& window) { return field_value(window) == value; });
}

void robot::poll(void* self) {
    static_cast<robot*>(self)->look();
    Fl::repeat_timeout(poll_s, poll, self);
}

void robot::look() {
    Fl_Window* window = Fl::modal();
    if (!window && steps_.empty()) return;
    if (std::chrono::steady_clock::now() - progress_ > patience) return give_up();
    if (steps_.empty() || !window || label_of(*window) != steps_.front().title || !ready(window))
        return;
    // Kept until it is taken: a step may run the loop, and come back here.
    if (!steps_.front().take(*window)) return;
    steps_.pop_front();
    progress_ = std::chrono::steady_clock::now();
}

bool robot::ready(Fl_Window* window) {
    // Nobody clicks on what is not drawn yet: a browser would not know the line.
    if (!window->shown() || window->damage()) return false;
    const screen::place before = place_;
    place_ = display_.area(fl_xid(window));
    const bool at_rest = place_.x == before.x && place_.y == before.y && place_.w == before.w &&
                         place_.h == before.h;
    Window focus;
    int revert;
    XGetInputFocus(fl_display, &focus, &revert);
    return at_rest && focus == fl_xid(window);
}

void robot::give_up() {
    ADD_FAILURE() << "nothing happened for " << patience.count()
                  << " s, before: " << (steps_.empty() ? "the dialog's end" : steps_.front().what);
    steps_.clear();
    while (Fl::modal()) Fl::modal()->hide();
}
