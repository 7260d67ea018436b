// The station's dimensions and times, for the model and for whoever draws it.
//
// A base's place is that of its leading edge on one axis along both belts: the waiting belt reaches
// from -400 mm to 0, where it meets the main belt, which ends at 1200 mm.
#pragma once
#include <array>

namespace station {

/// How long the belts are.
inline constexpr int waiting_belt_mm = 400;
inline constexpr int main_belt_mm = 1200;
/// Of both; a slow one makes a quarter of it.
inline constexpr int belt_mm_per_s = 100;
/// How long a base is, along the belts.
inline constexpr int base_mm = 80;
/// From one leading edge to the next on the waiting belt.
inline constexpr int waiting_pitch_mm = 100;
/// How far from its stop a base still counts as there.
inline constexpr int presence_mm = 5;
/// Where a base's leading edge stands at zone 1, 2 and 3.
inline constexpr std::array<int, 3> stop_mm = {300, 600, 900};

/// The press's head is centred above a base at its stop, and 10 mm shorter than it at either end.
inline constexpr int press_head_begin_mm = 830;
inline constexpr int press_head_end_mm = 890;

/// How long each cylinder takes from one end to the other. Places on the way are counted in
/// milliseconds of travel too.
inline constexpr int blocker_stroke_ms = 300;
inline constexpr int drawer_stroke_ms = 800;
inline constexpr int cup_stroke_ms = 600;
inline constexpr int press_stroke_ms = 1000;

/// Where a blocker is in the bases' path.
inline constexpr int blocker_touch_ms = 150;
/// The lowest place of the cup, 20 % of its height, at which the drawer is free.
inline constexpr int cup_clear_ms = 480;
/// Where a lowering press meets a base that is not at its stop.
inline constexpr int press_contact_ms = 900;

/// From one base that the loader lays down to the next, at least.
inline constexpr int base_loading_ms = 5000;
/// For how long a base gets glue before it is glued.
inline constexpr int glue_ms = 1000;
/// From the drawer's coming in, empty, to the part that drops into it.
inline constexpr int magazine_ms = 500;
/// From the cup's taking hold to the sensor that says so, and from the suction's end to the part's
/// fall.
inline constexpr int vacuum_rise_ms = 200;
inline constexpr int vacuum_fall_ms = 100;
/// For how long the press must be low on a base.
inline constexpr int press_hold_ms = 10000;

}  // namespace station
