// Clicks on the panel's buttons, many within one pass of its loop: each is seen in the segment. On
// a display without a window manager, which would hold each click back until it has looked at it.
//
//     build/release/bin/soak_clicks 100000
#include <sys/shm.h>

#include <algorithm>
#include <vector>

#include "bench/soak/attack.h"
#include "ioshare/io_clocks.h"
#include "ioshare/io_server.h"
#include "panel/form_children.h"
#include "tests/support/programs.h"
#include "workcell/station_names.h"

#include "tests/support/mortal_display.h"

#include <X11/extensions/XTest.h>

namespace {

struct button {
    int output, x, y;
};

/// Where each output's button is, in the order of the outputs.
std::vector<button> buttons() {
    std::vector<button> all;
    int output = 0;
    for (const std::string_view name : station_outputs) {
        const auto& at = *std::ranges::find_if(
            quorin_form::children,
            [&](const quorin_form::child& each) { return each.member > 0 && name == each.name; });
        all.push_back({output++, at.x + at.w / 2, at.y + at.h / 2});
    }
    return all;
}

/// The mouse of a display, and the one window on it.
class mouse {
public:
    explicit mouse(const std::string& display) : line_(XOpenDisplay(display.c_str())) {
        Window root, parent, *all = nullptr;
        unsigned count = 0;
        XQueryTree(line_, DefaultRootWindow(line_), &root, &parent, &all, &count);
        for (unsigned i = 0; i < count; ++i) {
            XWindowAttributes at;
            if (XGetWindowAttributes(line_, all[i], &at) && at.map_state == IsViewable)
                left_ = at.x, top_ = at.y;
        }
        XFree(all);
    }
    ~mouse() { XCloseDisplay(line_); }
    mouse(const mouse&) = delete;
    mouse& operator=(const mouse&) = delete;

    void click(int x, int y, unsigned which) const {
        XTestFakeMotionEvent(line_, -1, left_ + x, top_ + y, CurrentTime);
        XTestFakeButtonEvent(line_, which, True, CurrentTime);
        XTestFakeButtonEvent(line_, which, False, CurrentTime);
        XSync(line_, False);
    }

private:
    Display* line_;
    int left_ = 0, top_ = 0;
};

class clicked_panel {
public:
    explicit clicked_panel(attack& run) : run_(run) {
        shmctl(server_.ident, IPC_RMID, nullptr);
        if (!display_.shows(1)) run.find("the panel does not show itself: " + panel_.err());
        mouse_.emplace(display_.name);
        expected_.resize(buttons_.size());
    }

    /// Some buttons, each once, in any order.
    void click_some() {
        std::shuffle(buttons_.begin(), buttons_.end(), run_.random);
        const std::size_t count = std::min<std::size_t>(
            1 + run_.below(buttons_.size()), static_cast<std::size_t>(run_.wanted - run_.done));
        for (std::size_t i = 0; i < count; ++i) {
            mouse_->click(buttons_[i].x, buttons_[i].y, 1 + static_cast<unsigned>(run_.below(3)));
            int& value = expected_[static_cast<std::size_t>(buttons_[i].output)];
            value = !value;
        }
        if (!wait_until([&] { return segment() == expected_; }, seconds(10))) {
            run_.find("a click was lost: " + words(segment()) + " instead of " + words(expected_));
            expected_ = segment();
        }
        run_.done += static_cast<long>(count);
    }
    int end() {
        panel_.signal(SIGTERM);
        return panel_.wait(seconds(10)).value_or(-1);
    }

private:
    std::vector<int> segment() {
        std::vector<int> values;
        for (std::size_t i = 0; i < expected_.size(); ++i)
            values.push_back(server_.output_value(static_cast<int>(i)));
        return values;
    }
    static std::string words(const std::vector<int>& values) {
        std::string all;
        for (const int each : values) all += std::to_string(each);
        return all;
    }

    attack& run_;
    IOsharemem_server server_{{station_inputs.begin(), station_inputs.end()},
                              {station_outputs.begin(), station_outputs.end()}};
    mortal_display display_;
    program panel_{{built("quorin"), "-automemlink", std::to_string(server_.ident)},
                   {"DISPLAY=" + display_.name}};
    std::optional<mouse> mouse_;
    std::vector<button> buttons_ = buttons();
    std::vector<int> expected_;
};

}  // namespace

int main(int argc, char** argv) {
    attack run("clicks", argc, argv, 100'000);
    clicked_panel panel(run);
    while (run.goes_on()) panel.click_some();
    if (const int status = panel.end(); status != 128 + SIGTERM)
        run.find("the panel ended with " + std::to_string(status));
    return run.finish("clicks", "each seen in the segment");
}
