// Paints a picture of the station on a drawing sheet.
#pragma once
#include "forms/vision_sheet.h"
#include "station_view/station_picture.h"

/// Paints `picture` with its top left corner at that of the sheet. Only within a widget's draw().
void paint(const station_picture& picture, const OFL_vision_sheet& sheet);
