#include "recording/recording_form.h"

#include <algorithm>

#include "recording/csv_form.h"
#include "recording/vcd_form.h"
#include "session/keyed_rows.h"

namespace {

struct kind_row {
    recording_kind key;
    std::string_view word;
    std::unique_ptr<recording_form> (*make)();
};

template <class Form>
std::unique_ptr<recording_form> make() {
    return std::make_unique<Form>();
}

constexpr kind_row rows[] = {{recording_kind::csv, "csv", make<csv_form>},
                             {recording_kind::vcd, "vcd", make<vcd_form>}};
static_assert(one_row_each(rows));

}  // namespace

std::string_view recording_kind_word(recording_kind kind) { return row_of(rows, kind).word; }

std::optional<recording_kind> recording_kind_called(std::string_view word) {
    const auto* const found = std::ranges::find(rows, word, &kind_row::word);
    return found == std::end(rows) ? std::nullopt : std::optional(found->key);
}

std::unique_ptr<recording_form> new_recording(recording_kind kind) {
    return row_of(rows, kind).make();
}
