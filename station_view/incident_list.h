// The incidents as they happen, the newest first, each with what can be done about it.
#pragma once
#include <FL/Fl_Browser.H>

#include <string>

#include "station_view/session_news.h"
#include "lesson/bilingual.h"
#include "station_view/window_layout.h"

class incident_list : public Fl_Browser {
public:
    static constexpr int most_lines = 200;

    /// In the group being filled.
    incident_list(const window_layout::area& at, language in);

    /// Shows what has come since the last time.
    void show_news(session_news& news);
    /// Shows what went wrong with the session itself.
    void show_trouble(const std::string& why);

private:
    void show_none();
    void add_first(const std::string& line);

    language language_;
    bool empty_ = true;
};
