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
    /// Needs an open display.
    explicit painted(const station_picture& picture) : w(picture.w), h(picture.h) {
        Fl_Image_Surface surface(w, h);
        Fl_Surface_Device* const before = Fl_Surface_Device::surface();
        surface.set_current();
        OFL_vision_sheet sheet;
        sheet.define(0, 0, w, h, static_cast<int>(FL_BLACK));
        paint(picture, sheet);
        image_.reset(surface.image());
        before->set_current();
    }

    /// 0xRRGGBB.
    std::uint32_t at(int x, int y) const {
        const uchar* const rgb =
            reinterpret_cast<const uchar*>(image_->data()[0]) + 3 * (y * w + x);
        return static_cast<std::uint32_t>(rgb[0] << 16 | rgb[1] << 8 | rgb[2]);
    }

    /// As a PPM file.
    void save(const std::string& file) const {
        std::ofstream out(file, std::ios::binary);
        out << "P6\n" << w << ' ' << h << "\n255\n";
        out.write(image_->data()[0], std::streamsize{3} * w * h);
    }

    const int w, h;

private:
    std::unique_ptr<Fl_RGB_Image> image_;
};
