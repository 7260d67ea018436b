// A picture as it is painted: pixels, without a window.
#pragma once
#include <FL/Fl_Image_Surface.H>
#include <FL/Fl_RGB_Image.H>

#include <cstdint>
#include <fstream>
#include <memory>
#include <string>

#include "station_view/station_painter.h"

class painted {
public:
    static constexpr std::uint32_t edge_rgb = 0x123456;

    /// Needs an open display. With an edge of so many pixels around it, in a colour of its own.
    explicit painted(const station_picture& picture, int edge = 0)
        : w(picture.w), h(picture.h), edge_(edge), across_(w + 2 * edge) {
        const int down = h + 2 * edge;
        Fl_Image_Surface surface(across_, down);
        Fl_Surface_Device* const before = Fl_Surface_Device::surface();
        surface.set_current();
        OFL_vision_sheet sheet;
        sheet.ofl_rectf(0, 0, across_, down, edge_rgb << 8);
        sheet.define(edge, edge, w, h, static_cast<int>(FL_BLACK));
        paint(picture, sheet);
        image_.reset(surface.image());
        before->set_current();
    }

    /// 0xRRGGBB; from (0, 0) in the picture's corner on, down to minus the edge.
    std::uint32_t at(int x, int y) const {
        const uchar* const rgb = reinterpret_cast<const uchar*>(image_->data()[0]) +
                                 3 * ((y + edge_) * across_ + x + edge_);
        return static_cast<std::uint32_t>(rgb[0] << 16 | rgb[1] << 8 | rgb[2]);
    }

    /// As a PPM file, for a picture without an edge.
    void save(const std::string& file) const {
        std::ofstream out(file, std::ios::binary);
        out << "P6\n" << w << ' ' << h << "\n255\n";
        out.write(image_->data()[0], std::streamsize{3} * w * h);
    }

    const int w, h;

private:
    int edge_, across_;
    std::unique_ptr<Fl_RGB_Image> image_;
};
