// The viewer of long messages, with its save button.
#include "forms/dialogs.h"

#include <unistd.h>

#include <algorithm>
#include <cstring>
#include <fstream>
#include <utility>

#include <FL/Fl.H>
#include <FL/Fl_Button.H>
#include <FL/Fl_Multi_Browser.H>
#include <FL/Fl_Window.H>
#include <FL/forms.H>

#include "forms/browser_formats.h"
#include "forms/hide_when_closed.h"
#include "forms/widget_shortcuts.h"

namespace {

constexpr int character_px = 6;
constexpr int widest_characters = (32767 - 10) / character_px;  // a window's sides are 16-bit
constexpr useconds_t poll_pause_us = 1000;

// Such a line is wider than the 32767 pixels up to which the toolkit draws a text, unless its
// letters are tiny. Even as tabs of eight blanks it fits in one request to the display.
constexpr std::size_t drawn_bytes = 15'000;

/// A browser that takes lines of any length. The display ends a program that has it draw hundreds
/// of thousands of letters at once.
class long_line_browser : public Fl_Multi_Browser {
public:
    using Fl_Multi_Browser::Fl_Multi_Browser;

protected:
    /// A longer line ends early while it is drawn.
    void item_draw(void* item, int x, int y, int w, int h) const override {
        char* const text = const_cast<char*>(item_text(item));  // the browser's own copy
        if (strnlen(text, drawn_bytes) < drawn_bytes)
            return Fl_Multi_Browser::item_draw(item, x, y, w, h);
        const char next = std::exchange(text[drawn_bytes], '\0');
        Fl_Multi_Browser::item_draw(item, x, y, w, h);
        text[drawn_bytes] = next;
    }
};

/// The window, and the widgets that its loop looks at. None has a callback, so all of them land in
/// the toolkit's queue.
struct message_viewer {
    Fl_Window* window;
    Fl_Multi_Browser* lines;
    Fl_Button* quit;
    Fl_Button* save;
};

message_viewer make_viewer(int width) {
    const int text_px = std::clamp(width, 0, widest_characters) * character_px;
    message_viewer viewer;
    viewer.window = new Fl_Window(text_px + 10, 570, "Messages");
    viewer.window->set_modal();
    hide_when_closed(viewer.window);
    viewer.lines = new long_line_browser(5, 10, text_px, 500);
    viewer.quit = new Fl_Button(250, 530, 50, 30, "Quit");
    viewer.save = new Fl_Button(80, 530, 50, 30, "save");
    viewer.window->end();
    return viewer;
}

void add_lines(Fl_Browser* browser, const std::string& text) {
    for (std::size_t start = 0; start < text.size();) {
        const std::size_t end = std::min(text.find('\n', start), text.size());
        fl_add_browser_Sline(browser, without_unsafe_formats(text.substr(start, end - start)));
        start = end + 1;
    }
}

void save_text(const std::string& text) {
    const char* name = fl_show_file_selector("save message", "", "*.txt", "");
    if (!name) return;
    std::ofstream file(name, std::ios::binary | std::ios::trunc);
    file.write(text.data(), static_cast<std::streamsize>(text.size()));
}

}  // namespace

void fl_show_Sbigmessages(const std::string& text, int width) {
    const message_viewer viewer = make_viewer(width);
    add_lines(viewer.lines, text);
    viewer.window->show();
    // Escape and the window manager only hide the window: that ends the loop, as "Quit" does.
    while (viewer.window->shown()) {
        Fl::check();
        const Fl_Widget* used = Fl::readqueue();
        if (used == viewer.save) save_text(text);
        if (used == viewer.quit) break;
        usleep(poll_pause_us);
    }
    delete viewer.window;
}
