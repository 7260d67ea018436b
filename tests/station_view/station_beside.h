// A ZK4 station in the test's own process, to be stepped as the one in the window is: what that one
// has to show.
#pragma once
#include <cstdint>
#include <memory>
#include <string_view>
#include <vector>

#include "session/faults.h"

/// A pixel of the drawing, from its top left.
struct drawn_point {
    int x, y;
    std::uint32_t rgb;
};

class station_beside {
public:
    /// With one base and that fault, in a pause.
    explicit station_beside(const station_fault& fault);
    ~station_beside();

    void give(std::string_view command);
    /// In steps of 10 ms.
    void run(double seconds);
    /// What a sensor would tell without the fault.
    bool sound(std::string_view input) const;
    /// Points of its drawing in so many pixels: the mechanism as it is, the lamps as the panel sees
    /// them. Those inside rectangles on which nothing lies.
    std::vector<drawn_point> drawing(int w, int h) const;

private:
    struct stations;
    std::unique_ptr<stations> stations_;
};
