#include "station_view/station_window.h"

#include <FL/Fl.H>
#include <FL/Fl_Box.H>
#include <FL/Fl_Group.H>
#include <FL/Fl_Tooltip.H>

#include <chrono>
#include <utility>

#include "station_view/count_panel.h"
#include "station_view/exercise_panel.h"
#include "station_view/fault_list.h"
#include "station_view/incident_list.h"
#include "station_view/keyed_window.h"
#include "station_view/panel_button.h"
#include "station_view/station_canvas.h"
#include "station_view/told_trouble.h"
#include "station_view/window_body.h"
#include "station_view/window_place.h"
#include "station_view/window_words.h"

namespace {

namespace layout = window_layout;

constexpr double frame_s = 0.028;
// While nothing moves and nothing happens, only the clock goes on.
constexpr double clock_s = 0.5;
// For so long the drawing waits for a step to draw it with: the loop wakes up for each anyway.
constexpr double patience_s = 0.012;

double now_s() {
    return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch())
        .count();
}

}  // namespace

station_window::station_window(live_session& session, station_model& model,
                               const window_options& options)
    : session_(session), options_(options), news_(session.time()) {
    if (options_.title.empty()) options_.title = session_.title();
    session_.stay_at_end();
    session_.add_reader(news_);
    session_.add_reader(journal_);
    const auto keys = [this](int symbol, bool shift, key_press what) {
        return take_key(symbol, shift, what);
    };
    const auto left = [this] {
        if (desk_) desk_->let_go();
    };
    window_ = std::make_unique<keyed_window>(layout::width, layout::height, nullptr, keys, left);
    window_->color(window_style::paper);
    const auto* const drawn = dynamic_cast<const workcell_model*>(&model);
    auto* const by_hand = dynamic_cast<manual_station*>(&model);
    body_ = drawn ? new window_body(options_.task ? layout::side_part::exercise
                                                  : layout::side_part::faults)
                  : nullptr;
    if (drawn)
        add_drawing(*drawn);
    else if (by_hand)
        add_panels(*by_hand);
    else
        add_lamps(model);
    add_middle_column(drawn != nullptr);
    options_.task ? add_exercise() : add_faults();
    if (body_) end_body();
    window_->end();
    name_window(model);
    window_->callback(
        [](Fl_Widget*, void* self) {
            auto& window = *static_cast<station_window*>(self);
            window.closed_ = true;
            window.session_.end("fenêtre fermée");
            window.changed();
        },
        this);
    place();
}

void station_window::name_window(const station_model& model) {
    std::string title = options_.title;
    if (title.empty() && scene_) title = text_of(window_word::station, options_.in);
    if (title.empty() && panels_) title = text_of(window_word::by_hand, options_.in);
    title_ = title.empty() ? std::string(model.name()) : title;
    window_->copy_label(title_.c_str());
}

station_window::~station_window() { Fl::remove_timeout(draw_when_due, this); }

void station_window::add_drawing(const workcell_model& model) {
    scene_.emplace(session_, model, options_.in, options_.title);
    session_.add_reader(*scene_);
    const layout::area& at = layout::picture;
    canvas_ = new station_canvas(at.x, at.y, at.w, at.h);
    incidents_ = new incident_list(layout::incidents, options_.in);
}

void station_window::make_room(int panels_width) {
    columns_left_by_ = layout::desk_title.x - 8 - panels_width;
    window_->size(layout::width - columns_left_by_, layout::height);
    window_->resizable(nullptr);
}

void station_window::add_panels(manual_station& station) {
    make_room(layout::panels_width);
    panels_.emplace(
        window_.get(), layout::height, station, options_.in, [this] { changed(); },
        [this] { window_->do_callback(); });
}

void station_window::add_lamps(const station_model& model) {
    make_room(lamp_panels::width);
    lamps_.emplace(window_.get(), layout::height, model, options_.in);
    session_.add_reader(*lamps_);
}

void station_window::add_middle_column(bool with_desk) {
    const int left = layout::desk_title.x - 8, right = layout::faults_title.x - 4;
    column_ = new Fl_Group(left, 0, right - left, layout::height);
    const auto served = [this] { changed(); };
    if (with_desk) {
        window_style::add_heading(layout::desk_title, text_of(window_word::desk, options_.in));
        desk_.emplace(session_.run(), options_.in, served);
        if (session_.replaying()) desk_->only_show();
    }
    time_.emplace(session_, news_, options_.in, served);
    if (session_.replay_length_ms()) moment_.emplace(session_, options_.in, served);
    if (with_desk) counts_ = std::make_unique<count_panel>(session_.run(), options_.in);
    // Where there is no drawing, there is no button for it beside this one either.
    layout::area journal_at = layout::journal;
    if (!body_) journal_at.w = layout::production_title.w;
    journal_button_ = new panel_button(journal_at, window_action::journal, options_.in,
                                       [this] { open_journal(); });
    if (body_ && !options_.task) to_faults_ = add_column_button(layout::to_faults);
    if (body_) add_drawing_alone();
    column_->end();
    // Without the desk, what stands below it moves up.
    column_->position(column_->x() - columns_left_by_, with_desk ? 0 : -layout::time_title.y + 6);
}

Fl_Button* station_window::add_drawing_alone() {
    return new panel_button(layout::drawing_alone, window_action::drawing_alone, options_.in,
                            [this] { body_->change_drawing_alone(); });
}

// The same as its key: the faults into the desk's place, or the desk back.
Fl_Button* station_window::add_column_button(const layout::area& at) {
    return new panel_button(at, window_action::faults, options_.in, [this] { go_to_faults(); });
}

void station_window::end_body() {
    Fl_Button* const back = add_drawing_alone();
    back->copy_label(text_of(window_word::whole_window, options_.in));
    back->hide();
    body_->end();
    if (to_faults_) body_->take_buttons({journal_button_, to_faults_, to_desk_});
    window_->resizable(body_);
}

void station_window::add_faults() {
    const layout::area& head = layout::faults_title;
    auto* const group = new Fl_Group(head.x - 4, 0, layout::width - head.x + 4, layout::height);
    faults_heading_ = window_style::add_heading(head, text_of(window_word::faults, options_.in));
    faults_heading_->copy_tooltip(tooltip_of(window_action::faults, options_.in).c_str());
    if (body_) {
        Fl_Button* const back = add_column_button(layout::to_desk);
        back->copy_label(text_of(window_word::desk, options_.in));
        back->copy_tooltip(text_of(window_word::desk_tip, options_.in));
        to_desk_ = back;
    }
    faults_ = new fault_list(layout::faults, session_.run(), options_.in, [this] { changed(); });
    group->resizable(faults_);
    group->end();
    group->position(group->x() - columns_left_by_, 0);
    if (session_.replaying() || session_.examined()) faults_->only_show();
}

void station_window::add_exercise() {
    const int left = layout::faults_title.x - 4;
    exercise_ = new exercise_panel(
        {left - columns_left_by_, 0, layout::width - left, layout::height}, *options_.task,
        session_.run().model(), options_.title, options_.in, [this] { changed(); });
}

void station_window::place() {
    int x, y, w, h;
    Fl::screen_work_area(x, y, w, h, 0);
    const layout::area at = window_place::beside_panel({x, y, w, h});
    if (columns_left_by_ > 0) {
        window_->position(at.x, at.y);
        return;
    }
    window_->size_range(layout::least_width, layout::least_height);
    window_->resize(at.x, at.y, at.w, at.h);
}

void station_window::show() {
    draw_now();
    window_->show();
}

void station_window::hide() {
    Fl::remove_timeout(draw_when_due, this);
    close_documents();
    window_->hide();
}

void station_window::close_documents() {
    journal_process_.close();
    if (exercise_) exercise_->close_documents();
}

void station_window::conclude() {
    Fl::remove_timeout(draw_when_due, this);
    if (desk_) desk_->only_show();
    time_->only_show();
    draw_now();
    if (exercise_) report([this] { exercise_->conclude(); });
}

void station_window::changed() {
    restore_title();
    moves_ = true;
    if (serve_) serve_();
}

void station_window::served() {
    if (desk_) desk_->served();
    if (session_.over()) return;
    const bool at_rest = !moves_ && !news_.anything_new();
    const double rest_s = drawn_at_s_ + (at_rest ? clock_s : frame_s) - now_s();
    if (rest_s <= 0) return draw_now();
    if (drawing_is_due_) return;
    drawing_is_due_ = true;
    Fl::add_timeout(rest_s + patience_s, draw_when_due, this);
}

void station_window::draw_when_due(void* self) { static_cast<station_window*>(self)->draw_now(); }

void station_window::draw_now() {
    if (std::exchange(drawing_is_due_, false)) Fl::remove_timeout(draw_when_due, this);
    drawn_at_s_ = now_s();
    moves_ = canvas_ && canvas_->show(scene_->now());
    news_.forget_new();
    if (incidents_) incidents_->show_news(news_);
    show_trouble();
    if (panels_) panels_->show();
    if (lamps_) lamps_->show();
    if (desk_) desk_->show();
    if (counts_) counts_->show();
    time_->show();
    if (moment_) moment_->show();
    if (exercise_) exercise_->show_standing();
    if (faults_) show_faults();
}

void station_window::show_trouble() {
    const std::vector<std::string>& troubles = session_.troubles();
    if (told_troubles_ == troubles.size()) return;
    while (told_troubles_ < troubles.size()) tell(troubles[told_troubles_++]);
    // Without a list it stays, instead of the name.
    if (!incidents_) title_ = window_->label();
}

// A window without a list of incidents has its title for it.
void station_window::tell(const std::string& trouble) {
    const std::string words = told_trouble(trouble, options_.in);
    if (incidents_)
        incidents_->show_trouble(words);
    else
        window_->copy_label(words.c_str());
}

void station_window::restore_title() {
    if (title_ != window_->label()) window_->copy_label(title_.c_str());
}

void station_window::show_faults() {
    faults_->show_faults();
    std::string heading = text_of(window_word::faults, options_.in);
    if (faults_->faults_set() > 0)
        heading += colon.in(options_.in) + std::to_string(faults_->faults_set());
    window_style::relabel(*faults_heading_, heading);
}

void station_window::worked() {
    if (panels_) panels_->look();
}
