#include "station_view/fault_labels.h"

#include "session/keyed_rows.h"

namespace {

struct label_row {
    fault_kind key;
    bilingual column, meaning;
};

// clang-format off
constexpr label_row rows[] = {
    {fault_kind::stuck0,   {"= 0", "= 0"},     {"reste à 0", "stays at 0"}},
    {fault_kind::stuck1,   {"= 1", "= 1"},     {"reste à 1", "stays at 1"}},
    {fault_kind::inverted, {"inv.", "inv."},   {"inversé", "inverted"}},
    {fault_kind::late,     {"tard", "late"},   {"répond avec 0.5 s de retard", "tells 0.5 s late"}},
    {fault_kind::flicker,  {"clign.", "flick."}, {"clignote", "flickers"}},
    {fault_kind::dead,     {"mort", "dead"}, {"ne répond pas", "does not respond"}},
    {fault_kind::slow,     {"lent", "slow"},   {"quatre fois trop lent", "four times too slow"}},
};
// clang-format on
static_assert(one_row_each(rows));

}  // namespace

const char* fault_column(fault_kind kind, language in) { return row_of(rows, kind).column.in(in); }

const char* fault_meaning(fault_kind kind, language in) {
    return row_of(rows, kind).meaning.in(in);
}

std::string fault_sentence(const station_fault& fault, language in) {
    return fault.name + colon.in(in) + fault_meaning(fault.kind, in) + " (" + fault.name + "=" +
           std::string(fault_kind_word(fault.kind)) + ")";
}
