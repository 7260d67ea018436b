// A drawing surface that writes down each call instead of drawing it. While one lives, everything
// drawn goes to it.
#pragma once
#include <FL/Fl_Device.H>
#include <FL/fl_draw.H>

#include <locale>
#include <sstream>
#include <string>
#include <vector>

using call_list = std::vector<std::string>;

class recording_driver : public Fl_Graphics_Driver {
public:
    call_list calls;

    using Fl_Graphics_Driver::color;
    using Fl_Graphics_Driver::font;

protected:
    void color(Fl_Color c) override {
        Fl_Graphics_Driver::color(c);
        note("color", c);
    }
    void color(uchar r, uchar g, uchar b) override { note("rgb", int{r}, int{g}, int{b}); }
    void font(Fl_Font face, Fl_Fontsize size) override {
        Fl_Graphics_Driver::font(face, size);
        note("font", face, size);
    }
    void rect(int x, int y, int w, int h) override { note("rect", x, y, w, h); }
    void rectf(int x, int y, int w, int h) override { note("rectf", x, y, w, h); }
    void line_style(int style, int width, char* dashes) override {
        note("line_style", style, width, dashes ? "dashes" : "plain");
    }
    void line(int x, int y, int x1, int y1) override { note("line", x, y, x1, y1); }
    void line(int x, int y, int x1, int y1, int x2, int y2) override {
        note("line", x, y, x1, y1, x2, y2);
    }
    void xyline(int x, int y, int x1) override { note("xyline", x, y, x1); }
    void yxline(int x, int y, int y1) override { note("yxline", x, y, y1); }
    void arc(double x, double y, double r, double a1, double a2) override {
        note("arc", x, y, r, a1, a2);
    }
    void arc(int x, int y, int w, int h, double a1, double a2) override {
        note("arc", x, y, w, h, a1, a2);
    }
    void pie(int x, int y, int w, int h, double a1, double a2) override {
        note("pie", x, y, w, h, a1, a2);
    }
    void push_clip(int x, int y, int w, int h) override { note("push_clip", x, y, w, h); }
    void push_no_clip() override { note("push_no_clip"); }
    void pop_clip() override { note("pop_clip"); }
    void draw(const char* text, int n, int x, int y) override {
        note("draw", x, y, std::string(text, n));
    }
    void begin_polygon() override { note("begin_polygon"); }
    void vertex(double x, double y) override { note("vertex", x, y); }
    void end_polygon() override { note("end_polygon"); }
    void begin_loop() override { note("begin_loop"); }
    void end_loop() override { note("end_loop"); }
    void begin_line() override { note("begin_line"); }
    void end_line() override { note("end_line"); }
    double width(const char*, int n) override { return 7.0 * n; }
    double width(unsigned) override { return 7.0; }
    int height() override { return 12; }
    int descent() override { return 3; }

private:
    template <typename... T>
    void note(const char* name, const T&... arguments) {
        std::ostringstream call;
        call.imbue(std::locale::classic());
        call << name;
        ((call << ' ' << arguments), ...);
        calls.push_back(call.str());
    }
};

class recording_surface : public Fl_Surface_Device {
public:
    recording_surface() : Fl_Surface_Device(&driver_), before_(Fl_Surface_Device::surface()) {
        set_current();
    }
    ~recording_surface() override { before_->set_current(); }
    const call_list& calls() const { return driver_.calls; }

private:
    recording_driver driver_;
    Fl_Surface_Device* before_;
};

/// The calls that `draw` makes.
template <typename drawing>
call_list calls_of(drawing draw) {
    const recording_surface surface;
    draw();
    return surface.calls();
}
