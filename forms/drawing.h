// Drawing shortcuts that take their colour, and the test of a point against a segment.
//
// Coordinates are pixels of the window being drawn, colours the toolkit's colour indices (56 is
// FL_BLACK). Each drawing function sets the current colour first, draws, and leaves the colour as
// its last step set it. Only within a widget's draw(). Arguments may be literals, int or unsigned,
// constants or variables, in any place.
#pragma once

/// Fills the ellipse in the box (x, y, w, h).
void fl_ovalf(int x, int y, int w, int h, unsigned colour);
void fl_ovalf(int x, int y, int w, int h, int colour);

/// Fills a disc. (x, y) is the top left corner of the square around it and `r` the side of that
/// square: neither the centre nor the radius. Callers rely on it.
///
///     fl_circf(10, 10, 20, FL_RED);  // between 10 and 30 on both axes
void fl_circf(int x, int y, int r, unsigned colour);
void fl_circf(int x, int y, int r, int colour);

/// Fills the rectangle, then outlines it in FL_BLACK.
void fl_rectbound(int x, int y, int w, int h, unsigned colour);

/// Draws one line.
void fl_line(int x1, int y1, int x2, int y2, unsigned colour);

/// Returns 1 when the point (px, py) lies on the segment from (x1, y1) to (x2, y2),
/// nearer than `tolerance` to its line and within its span, bounds included; 0
/// otherwise. The tolerance itself is too far, so that 0 finds nothing. An oblique
/// segment's span is its bounding box, a horizontal one's its x, a vertical one's
/// (or a point's) its y. Coordinates no more than 1e-10 apart count as equal.
///
///     point_dans_segment(5, 0.4, 0, 0, 10, 0, 0.5);   // 1
///     point_dans_segment(11, 0, 0, 0, 10, 0, 0.5);    // 0: past the end
///     point_dans_segment(5, 0.5, 0, 0, 10, 0, 0.5);   // 0: not nearer than the tolerance
int point_dans_segment(double px, double py, double x1, double y1, double x2, double y2,
                       double tolerance);
