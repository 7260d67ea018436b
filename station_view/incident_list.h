// The incidents as they happen, the newest first, each with what can be done about it: in one line
// where there is room for it, else folded.
#pragma once
#include <FL/Fl_Browser.H>

#include <deque>
#include <string>
#include <vector>

#include "lesson/bilingual.h"
#include "station_view/session_news.h"
#include "station_view/window_layout.h"

class incident_list : public Fl_Browser {
public:
    static constexpr int most_entries = 200;
    /// In the group being filled. Four lines fit in it, or fewer where it is low: the higher it is,
    /// the larger they are. Where there are more, it takes the keyboard, and the arrows scroll.
    incident_list(const window_layout::area& at, language in);

    /// Shows what has come since the last time.
    void show_news(session_news& news);
    /// Shows what went wrong with the session itself.
    void show_trouble(const std::string& why);

    void resize(int x, int y, int w, int h) override;
    int handle(int event) override;

protected:
    void draw() override;

private:
    struct entry {
        std::string time, what, advice;
        bool trouble = false;
    };

    bool fits_in_one_line(const entry& told) const;
    std::vector<std::string> lines_of(const entry& told) const;
    void fill();
    void add_first(const entry& told);

    void size_text();
    [[nodiscard]] bool scrolls() const;

    language language_;
    // Pixels from the left: the time, what happened, what can be done; then the end.
    int columns_[3] = {};
    std::deque<entry> entries_;
};
