// The small window in which the student names what is faulty. The station goes on meanwhile.
#pragma once
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "lesson/bilingual.h"
#include "session/faults.h"
#include "station_view/window_layout.h"

class Fl_Button;
class Fl_Double_Window;
class Fl_Hold_Browser;

/// Where its parts are, from its top left.
namespace diagnosis_layout {
using window_layout::area;
/// The window's size, which is fixed, and the height of its letters.
inline constexpr int width = 960, height = 470, text_px = 15;
inline constexpr area question = {14, 10, 932, 26};
inline constexpr area names_title = {14, 42, 600, 22}, names = {14, 66, 600, 346};
inline constexpr area kinds_title = {628, 42, 318, 22}, kinds = {628, 66, 318, 122};
inline constexpr area add = {628, 196, 318, 32};
inline constexpr area answer_title = {628, 240, 318, 22}, answer = {628, 264, 318, 110};
inline constexpr area remove = {628, 380, 318, 32};
inline constexpr area close = {14, 424, 160, 36}, send = {628, 424, 318, 36};
}  // namespace diagnosis_layout

class diagnosis_window {
public:
    /// Takes an answer: the faults, in the order in which they were chosen.
    using taker = std::function<void(const std::vector<station_fault>&)>;

    /// `answered` takes each answer, one fault at least. `model` must live as long.
    diagnosis_window(const station_model& model, language in, taker answered);
    ~diagnosis_window();
    diagnosis_window(const diagnosis_window&) = delete;
    diagnosis_window& operator=(const diagnosis_window&) = delete;

    /// Opens it with the answer that was given last, "b2s=stuck1"; an open one comes to the front
    /// as it stands.
    void open(const std::string& last_answer);
    /// Hides it. What was chosen and not sent is not kept.
    void close();

private:
    using area = diagnosis_layout::area;

    Fl_Hold_Browser* add_list(const area& at);
    Fl_Button* add_button(const area& at, const char* label, const char* tip, int shortcut,
                          void (diagnosis_window::*pressed)());
    void fill_names();
    void show_kinds();
    void show_answer();
    void add();
    void remove();
    void send();

    const station_model& model_;
    const language language_;
    const taker answered_;
    std::unique_ptr<Fl_Double_Window> window_;
    Fl_Hold_Browser *names_ = nullptr, *kinds_ = nullptr, *answer_list_ = nullptr;
    Fl_Button *remove_ = nullptr, *send_ = nullptr;
    std::vector<std::string> choosable_names_;
    std::vector<fault_kind> choosable_kinds_;
    std::vector<station_fault> answer_;
};
