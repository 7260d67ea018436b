// The signs of an exercise's board as they are painted: told apart by their forms, without colours.
#include <gtest/gtest.h>

#include <FL/Fl_Image_Surface.H>
#include <FL/Fl_RGB_Image.H>
#include <FL/fl_draw.H>

#include <memory>

#include "station_view/board_signs.h"
#include "tests/station_view/looking.h"

namespace {

/// Which pixels of a sign on white are dark in grey tones.
std::vector<bool> form_of(board_sign sign, int px) {
    Fl_Image_Surface surface(px, px);
    Fl_Surface_Device* const before = Fl_Surface_Device::surface();
    surface.set_current();
    fl_color(FL_WHITE);
    fl_rectf(0, 0, px, px);
    if (look_of(sign).drawn) look_of(sign).drawn({0, 0, px, px});
    const std::unique_ptr<Fl_RGB_Image> image(surface.image());
    before->set_current();
    const auto* const rgb = reinterpret_cast<const uchar*>(image->data()[0]);
    std::vector<bool> dark;
    for (int i = 0; i < px * px; ++i)
        dark.push_back(grey_of(static_cast<std::uint32_t>(rgb[3 * i] << 16 | rgb[3 * i + 1] << 8 |
                                                          rgb[3 * i + 2])) < 128);
    return dark;
}

TEST(BoardSigns, AreToldApartByTheirFormsAlone) {
    for (const int px : {13, 16, 24, 30}) {
        std::vector<std::vector<bool>> forms;
        for (int i = 0; i < static_cast<int>(board_sign::count); ++i) {
            const auto sign = static_cast<board_sign>(i);
            if (sign == board_sign::text || sign == board_sign::heading) continue;
            ASSERT_TRUE(look_of(sign).drawn) << i;
            const std::vector<bool> form = form_of(sign, px);
            for (std::size_t other = 0; other < forms.size(); ++other) {
                int differ = 0;
                for (std::size_t at = 0; at < form.size(); ++at)
                    differ += form[at] != forms[other][at];
                EXPECT_GE(differ * 100, px * px * 4) << i << " and " << other + 2 << " at " << px;
            }
            forms.push_back(form);
        }
    }
}

TEST(BoardSigns, ALineIsMarkedByItsGroundWhereItMatters) {
    EXPECT_NE(look_of(board_sign::current).behind, look_of(board_sign::to_come).behind);
    EXPECT_NE(look_of(board_sign::happened).behind, look_of(board_sign::not_happened).behind);
    EXPECT_TRUE(look_of(board_sign::current).bold);
}

}  // namespace
