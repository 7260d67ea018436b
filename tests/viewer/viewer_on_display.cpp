#include "tests/viewer/viewer_on_display.h"

namespace viewer_tests {

strings numbered(int count) {
    strings lines = {"#C 600 "};
    for (int i = 1; i <= count; ++i) lines.push_back("l" + std::to_string(i));
    return lines;
}

strings shown(const OFD_afficheur& viewer) {
    strings lines;
    for (int i = 1; i <= viewer.browser->size(); ++i) lines.push_back(viewer.browser->text(i));
    return lines;
}

strings page_of(int first, int last) {
    strings lines;
    if (first == 1) lines.push_back("");
    for (int i = first; i <= last; ++i) lines.push_back("@f@S14 l" + std::to_string(i));
    return lines;
}

void give(OFD_afficheur& viewer, strings& lines) {
    static std::list<OFD_afficheur_filtre_affichage> filters;
    filters.emplace_back(lines.data(), static_cast<int>(lines.size()));
    viewer.display_filter = &filters.back();
    viewer.visu_page();
}

}  // namespace viewer_tests
