#include "recording/csv_reader.h"

#include <string_view>

#include "recording/recorded_text.h"

namespace {

constexpr std::size_t most_row_bytes = 65536;
constexpr int end_of_file = std::char_traits<char>::eof();

}  // namespace

void csv_reader::refuse(const std::string& why) const { throw recording_problem{line_, why}; }

bool csv_reader::restart() {
    if (bytes_.pubseekpos(0, std::ios_base::in) != std::streampos(0)) return false;
    line_ = 0;
    next_line_ = 1;
    cut_ = false;
    return true;
}

bool csv_reader::next(event_row& row) {
    std::string* const fields[] = {&row.ms, &row.kind, &row.name, &row.value};
    line_ = next_line_;
    row_bytes_ = 0;
    for (std::string* const field : fields) {
        const field_end end = read_field(*field);
        if (end == field_end::file) return false;
        const bool last = field == &row.value;
        if (last && end == field_end::comma) refuse("plus de quatre champs");
        if (!last && end == field_end::row) refuse("moins de quatre champs");
    }
    for (const std::string* const field : fields)
        if (recorded_text(*field) != *field) refuse("un octet qui n'a pas de place dans un texte");
    return true;
}

int csv_reader::next_byte() {
    const int byte = bytes_.sbumpc();
    if (byte == end_of_file) return byte;
    if (++row_bytes_ > most_row_bytes) refuse("plus de 65536 octets");
    if (byte == '\n') ++next_line_;
    return byte;
}

csv_reader::field_end csv_reader::read_field(std::string& field) {
    field.clear();
    if (bytes_.sgetc() != '"') return read_plain(field);
    (void)next_byte();
    return read_quoted(field);
}

csv_reader::field_end csv_reader::read_plain(std::string& field) {
    for (;;) {
        const int byte = next_byte();
        if (byte == end_of_file || byte == ',' || byte == '\n') return end_with(byte);
        if (byte == '"') refuse("un guillemet au milieu d'un champ");
        if (byte == '\r') refuse("un retour chariot");
        field += static_cast<char>(byte);
    }
}

csv_reader::field_end csv_reader::read_quoted(std::string& field) {
    for (;;) {
        int byte = next_byte();
        if (byte == '"') {
            byte = next_byte();
            if (byte != '"') {
                const field_end end = end_with(byte);
                if (end != field_end::file && !needs_quotes(field))
                    refuse("des guillemets inutiles");
                return end;
            }
        } else if (byte == end_of_file) {
            return end_with(byte);
        }
        field += static_cast<char>(byte);
    }
}

csv_reader::field_end csv_reader::end_with(int byte) {
    if (byte == ',') return field_end::comma;
    if (byte == '\n') return field_end::row;
    if (byte != end_of_file) refuse("du texte après un guillemet fermant");
    cut_ = row_bytes_ > 0;
    return field_end::file;
}
