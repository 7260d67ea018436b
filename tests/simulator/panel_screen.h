// The panels' own widgets on the display: clicks on them, and the colours that are really there.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "tests/support/screen.h"

class Fl_Group;
class Fl_Widget;
class Fl_Window;

using lines = std::vector<std::string>;

constexpr std::uint32_t yellow_seen = 0xFFFF00, blue_seen = 0x0000FF, red_seen = 0xFF0000;

/// Lets the toolkit work until `done` answers true. False when `limit` passes first.
bool settle(const std::function<bool()>& done, seconds limit = seconds(30));

/// Lets the toolkit work until the window stands still
/// in front of the user. False when that takes too long.
bool wait_shown(screen& display, Fl_Window& window);

/// Where a window stands on the screen.
screen::place area(screen& display, Fl_Window& window);

/// Clicks a widget at a point from its top left, or in its middle. The server has the events on
/// return; the toolkit sees them at its next turn.
void click(screen& display, const Fl_Widget& widget, int right, int down);
void click(screen& display, const Fl_Widget& widget);

/// 0xRRGGBB at a point from a widget's top left.
std::uint32_t pixel(screen& display, const Fl_Widget& widget, int right, int down);

void move_mouse(int x, int y);

/// A line on each of a group's widgets, in the order made: its kind, place, size and label.
lines descriptions(const Fl_Group& group);
