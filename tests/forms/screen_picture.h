// What is on the screen, read back from the server on the toolkit's own connection: the answer
// comes after all that was drawn before.
#pragma once
#include <FL/Fl_Window.H>
#include <FL/x.H>

#include <memory>

struct screen_point {
    int x, y;
};

/// Where the top left of a window's inside is on the screen, whatever the window manager has done.
inline screen_point place_on_screen(const Fl_Window& window) {
    screen_point place{};
    Window child;
    XTranslateCoordinates(fl_display, fl_xid(&window), RootWindow(fl_display, fl_screen), 0, 0,
                          &place.x, &place.y, &child);
    return place;
}

/// A part of the screen, as it was when read.
class screen_picture {
public:
    screen_picture(screen_point corner, int w, int h)
        : image_(XGetImage(fl_display, RootWindow(fl_display, fl_screen), corner.x, corner.y, w, h,
                           AllPlanes, ZPixmap),
                 [](XImage* image) { XDestroyImage(image); }) {}

    /// 0xRRGGBB.
    unsigned long at(int x, int y) const { return XGetPixel(image_.get(), x, y) & 0xFFFFFF; }

    /// How many pixels of a rectangle have this colour.
    int count(int x, int y, int w, int h, unsigned long colour) const {
        int found = 0;
        for (int row = y; row < y + h; ++row) {
            for (int column = x; column < x + w; ++column) found += at(column, row) == colour;
        }
        return found;
    }

    /// How many pixels of a rectangle have another colour: a text's are of many shades.
    int count_other(int x, int y, int w, int h, unsigned long colour) const {
        return w * h - count(x, y, w, h, colour);
    }

private:
    std::unique_ptr<XImage, void (*)(XImage*)> image_;
};

/// 0xRRGGBB of one of the toolkit's colour indices.
inline unsigned long screen_colour(Fl_Color index) {
    uchar r, g, b;
    Fl::get_color(index, r, g, b);
    return (r << 16) | (g << 8) | b;
}
