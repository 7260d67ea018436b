// A session of zk4sim that is recorded while random hands work it through the link and the control
// socket.
#pragma once
#include <chrono>
#include <memory>
#include <random>
#include <thread>

#include "ioshare/io_observer.h"
#include "tests/end_to_end/zk4sim_session.h"

class handled_session {
public:
    handled_session(std::uint32_t seed, const std::string& csv, const std::string& vcd = "")
        : random_(seed), csv_(csv), station_(options(seed, csv, vcd)) {
        if (!station_.ident.empty())
            link_ = std::make_unique<io_observer>(std::stoi(station_.ident), io_access::write);
    }

    bool lives() const { return link_ && link_->problem().empty(); }
    const std::string& csv() const { return csv_; }
    controlled_station& station() { return station_; }
    io_observer& link() { return *link_; }

    /// Does one thing, of the many that hands do.
    void work() {
        static const std::string outputs[] = {"DEPOSE", "MTA",  "MT",   "ASPI", "RENT",
                                              "SORT",   "DESV", "MONV", "DESP", "MONP",
                                              "BZ1",    "BZ2",  "BZ3"};
        static constexpr std::int32_t values[] = {0, 1, 1, 1, 2, -1, INT32_MIN};
        static const std::string requests[] = {"desk dc=1",
                                               "desk dc=0 ac=1",
                                               "desk ac=0",
                                               "desk atu=1",
                                               "desk atu=0",
                                               "fault te=stuck0",
                                               "fault te=late",
                                               "fault te=",
                                               "fault p1ok=flicker",
                                               "fault p1ok=",
                                               "fault MT=slow",
                                               "fault MT=dead",
                                               "fault MT=",
                                               "fault vb=inverted",
                                               "fault vb=",
                                               "speed 20",
                                               "speed 100",
                                               "pause",
                                               "resume",
                                               "resume"};
        if (random_() % 4)
            link_->write(outputs[random_() % 13], values[random_() % 7]);
        else
            (void)station_.ask(requests[random_() % 20]);
    }

private:
    static std::vector<std::string> options(std::uint32_t seed, const std::string& csv,
                                            const std::string& vcd) {
        std::vector<std::string> all = {"--headless", "--no-panel",
                                        "--speed",    "100",
                                        "--seed",     std::to_string(seed),
                                        "--bases",    std::to_string(seed % 9),
                                        "--parts",    std::to_string(seed % 5),
                                        "--csv",      csv};
        if (!vcd.empty()) all.insert(all.end(), {"--vcd", vcd});
        if (seed % 3 == 0) all.insert(all.end(), {"--title", "poste " + std::to_string(seed)});
        if (seed % 4 == 0) all.insert(all.end(), {"--fault", "b1s=late", "--fault", "MTA=slow"});
        return all;
    }

    std::mt19937 random_;
    std::string csv_;
    controlled_station station_;
    std::unique_ptr<io_observer> link_;
};

/// The rows of a text that were not cut off.
inline std::string whole_rows(const std::string& text) {
    return text.substr(0, text.rfind('\n') + 1);
}

/// Runs a recording again as fast as it can be, into a file beside it: what was said, and what is
/// in that file.
inline outcome run_again(const std::string& recording) {
    const std::string copy = recording + ".again";
    outcome end = run_zk4sim({"--play", recording, "--headless", "--csv", copy});
    end.out = bytes_of(copy);
    return end;
}
