#include "programs/quorin_lesson/class_report.h"

#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <fstream>
#include <iterator>

#include "lesson/verdict.h"
#include "recording/event_rows.h"
#include "recording/recorded_text.h"
#include "session/failure.h"
#include "session/system_errors.h"
#include "session/session_report.h"
#include "viewer/document_text.h"
#include "viewer/line_markup.h"
#include "viewer/print_filter.h"

namespace {

constexpr char table_columns[] = "#C T60 T12 T10 T10 T10 T ", rule[] = "#T";
constexpr std::size_t file_width = 57;

std::string csv_of(const std::vector<std::string>& fields) {
    std::string line;
    for (const std::string& each : fields) line += (line.empty() ? "" : ",") + csv_field(each);
    return line + '\n';
}

/// The end of a long path says more than its beginning.
std::string shortened(const std::string& file) {
    if (file.size() <= file_width) return file;
    std::size_t from = file.size() - file_width;
    while (from < file.size() && (file[from] & 0xC0) == 0x80) ++from;
    return "..." + file.substr(from);
}

std::string table_line(std::vector<std::string> fields) {
    fields.front() = shortened(fields.front());
    std::string line;
    for (const std::string& each : fields) line += (line.empty() ? " " : "# ") + markup_cell(each);
    return line;
}

void add(std::vector<std::string>& lines, const std::vector<std::string>& more) {
    lines.insert(lines.end(), more.begin(), more.end());
}

/// Without the file's name, which stands above.
std::string reason_of(const marked_recording& marked) {
    const std::string name = recorded_name(marked.file) + ": ";
    return marked.refusal.substr(marked.refusal.starts_with(name) ? name.size() : 0);
}

std::vector<std::string> refusal_lines(const marked_recording& marked) {
    std::vector<std::string> lines = {"#C T102 T ", rule};
    add(lines, markup_lines(recorded_name(marked.file), 100));
    add(lines, markup_lines("Refusé : " + reason_of(marked), 100));
    lines.emplace_back(rule);
    return lines;
}

/// In words for people: the table is not read by programs.
std::string in_words(const marked_recording& marked) {
    if (!marked.standing) return "refusé";
    return marked.passed() ? "réussi" : "non réussi";
}

std::vector<std::string> table_fields(const marked_recording& marked) {
    std::vector<std::string> fields = fields_of(marked);
    fields[1] = in_words(marked);
    return fields;
}

std::string summary(std::span<const marked_recording> all) {
    const auto passed = std::ranges::count_if(all, &marked_recording::passed);
    const auto refused = std::ranges::count_if(
        all, [](const marked_recording& each) { return !each.standing.has_value(); });
    const auto failed = static_cast<std::ptrdiff_t>(all.size()) - passed - refused;
    return "Enregistrements : " + std::to_string(all.size()) +
           ", réussis : " + std::to_string(passed) + ", non réussis : " + std::to_string(failed) +
           ", refusés : " + std::to_string(refused);
}

std::size_t counted(const std::vector<std::string>& lines) {
    return static_cast<std::size_t>(std::ranges::count_if(lines, [](const std::string& line) {
        return line_markup::type_of(line) == line_markup::text_line ||
               line_markup::type_of(line) == line_markup::rule_line;
    }));
}

/// What does not fit on the rest of its page, and would on one of its own, begins the next one.
void add_whole(std::vector<std::string>& lines, const std::vector<std::string>& block) {
    constexpr std::size_t page = line_markup::lines_per_page;
    const std::size_t used = counted(lines) % page, needed = counted(block);
    if (needed <= page && used + needed > page) {
        lines.emplace_back("#C 102 ");
        lines.insert(lines.end(), page - used, " ");
    }
    add(lines, block);
}

}  // namespace

std::vector<std::string> fields_of(const marked_recording& marked) {
    const std::string file = recorded_name(marked.file);
    if (!marked.standing) return {file, marked.result(), "", "", ""};
    const exercise_standing& standing = *marked.standing;
    return {file, marked.result(), std::to_string(standing.points), std::to_string(standing.total),
            seconds_text(standing.over_ms.value_or(0))};
}

std::string class_csv(std::span<const marked_recording> all) {
    std::string text = csv_of({"fichier", "resultat", "points", "total", "secondes"});
    for (const marked_recording& each : all) text += csv_of(fields_of(each));
    return text;
}

std::vector<std::string> class_lines(const exercise& task, std::span<const marked_recording> all) {
    std::vector<std::string> lines = {"#C T102 T ", rule};
    add(lines, markup_lines("Exercice : " + recorded_name(task.title.french), 100));
    add(lines, markup_lines(summary(all), 100));
    add(lines, {rule, table_columns,
                table_line({"fichier", "résultat", "points", "total", "secondes"}), rule});
    for (const marked_recording& each : all) lines.push_back(table_line(table_fields(each)));
    lines.emplace_back(rule);
    for (const marked_recording& each : all)
        add_whole(lines, each.standing ? verdict_lines(task, *each.standing, language::french,
                                                       recorded_name(each.file))
                                       : refusal_lines(each));
    return lines;
}

// The filter writes to a file: this one is in memory.
std::string pdf_of(std::vector<std::string> lines) {
    line_markup::column_layout columns;
    for (std::string& each : lines) each = document_text::for_pdf(each, columns);
    const int memory = memfd_create("pdf", MFD_CLOEXEC);
    std::fstream document("/proc/self/fd/" + std::to_string(memory), std::ios::in | std::ios::out);
    OFD_afficheur_filtre_impression(lines.data(), static_cast<int>(lines.size()))
        .imprime_pdf(document);
    const int error = document ? 0 : errno;
    document.seekg(0);
    std::string bytes{std::istreambuf_iterator<char>(document), {}};
    if (memory >= 0) close(memory);
    if (error != 0 || bytes.empty())
        throw refusal("le document PDF ne peut être fait: " + system_error_words(error));
    return bytes;
}
