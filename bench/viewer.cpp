// A document of a million lines in the viewer's filters: to open, to turn a page, to export, and
// the memory that it takes beyond the caller's lines. Each export is compared with a bare loop of
// write(2) calls that writes the same lines.
//
//     bench_viewer [lines] [rounds]
#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "strings/number_formatting.h"
#include "viewer/display_filter.h"
#include "viewer/print_filter.h"
#include "viewer/text_filter.h"

namespace {

int rounds = 5;

/// Two columns with rules, a rule every 40 lines, a new block every 1000: as long as the strings'
/// own buffers, and longer.
std::vector<std::string> document(int count) {
    std::vector<std::string> lines;
    lines.reserve(static_cast<std::size_t>(count));
    for (int index = 0; index < count; ++index) {
        std::string line = "ligne " + long2S(index) + "#valeur (" + long2S(index % 97) + ")";
        if (index % 40 == 39) line = "#T";
        if (index % 1000 == 0) line = "#C T30 T30 T ";
        lines.push_back(line);
    }
    return lines;
}

/// The processor time of this process, the system's work for it included, in seconds: what else
/// runs hardly matters.
double processor_time() {
    timespec now;
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) + 1e-9 * static_cast<double>(now.tv_nsec);
}

double seconds_of(const std::function<void()>& work) {
    const double start = processor_time();
    work();
    return processor_time() - start;
}

double median(std::vector<double> values) {
    std::ranges::nth_element(values,
                             values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2));
    return values[values.size() / 2];
}

double median_of_rounds(const std::function<void()>& work) {
    std::vector<double> times;
    for (int round = 0; round < rounds; ++round) times.push_back(seconds_of(work));
    return median(times);
}

/// The most memory that the process has held since `forget_peak`, in KiB.
long peak_kib() {
    std::ifstream status("/proc/self/status");
    for (std::string word; status >> word;)
        if (long value; word == "VmHWM:" && status >> value) return value;
    return 0;
}

void forget_peak() { std::ofstream("/proc/self/clear_refs") << 5; }

/// A file's bytes, without a copy of them.
class mapped_file {
public:
    explicit mapped_file(const std::string& path) : size_(std::filesystem::file_size(path)) {
        const int file = open(path.c_str(), O_RDONLY);
        data_ = mmap(nullptr, size_, PROT_READ, MAP_PRIVATE | MAP_POPULATE, file, 0);
        close(file);
        if (data_ == MAP_FAILED) std::perror("mmap"), std::exit(1);
    }
    ~mapped_file() { munmap(data_, size_); }
    mapped_file(const mapped_file&) = delete;
    mapped_file& operator=(const mapped_file&) = delete;

    std::string_view bytes() const { return {static_cast<const char*>(data_), size_}; }

private:
    std::size_t size_;
    void* data_;
};

/// The least that writing these lines one by one can cost. Returns how many there are.
long write_bare(std::string_view document, const std::string& path) {
    const int file = open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
    long lines = 0;
    for (const char *at = document.data(), *end = at + document.size(); at != end; ++lines) {
        const char* next =
            static_cast<const char*>(std::memchr(at, '\n', static_cast<std::size_t>(end - at))) + 1;
        if (write(file, at, static_cast<std::size_t>(next - at)) != next - at)
            std::perror("write"), std::exit(1);
        at = next;
    }
    close(file);
    return lines;
}

/// One row: `write_document` against the bare loop, in turns.
void compare_export(const char* name, const std::string& path,
                    const std::function<void(std::fstream&)>& write_document) {
    std::vector<double> ours, bare, ratios;
    long written = 0, grown_kib = 0;
    const std::string bare_path = path + ".bare";
    for (int round = 0; round < rounds; ++round) {
        std::filesystem::remove(path);
        forget_peak();
        const long before_kib = peak_kib();
        ours.push_back(seconds_of([&] {
            std::fstream out(path, std::ios::out);
            write_document(out);
        }));
        grown_kib = std::max(grown_kib, peak_kib() - before_kib);
        const mapped_file document(path);
        std::filesystem::remove(bare_path);
        bare.push_back(seconds_of([&] { written = write_bare(document.bytes(), bare_path); }));
        ratios.push_back(ours.back() / bare.back());
    }
    std::printf("| export: %s | %ld | %.2f s | %.2f s | %.2f | %ld KiB |\n", name, written,
                median(ours), median(bare), median(ratios), grown_kib);
    std::filesystem::remove(path);
    std::filesystem::remove(bare_path);
}

void print_times(std::vector<std::string>& lines) {
    const int count = static_cast<int>(lines.size());
    OFD_afficheur_filtre_affichage screen(lines.data(), count);
    const int last = screen.nb_pages();
    std::size_t bytes = 0, marked = 0;
    const struct {
        const char* name;
        std::function<void()> work;
    } tasks[] = {
        {"open: the three filters",
         [&] {
             OFD_afficheur_filtre_affichage(lines.data(), count);
             OFD_afficheur_filtre_impression(lines.data(), count);
             OFD_afficheur_filtre_texte(lines.data(), count);
         }},
        {"`nb_pages`", [&] { bytes += static_cast<std::size_t>(screen.nb_pages()); }},
        {"`visu_page`, the first", [&] { bytes += screen.visu_page(0).size(); }},
        {"`visu_page`, in the middle", [&] { bytes += screen.visu_page(last / 2).size(); }},
        {"`visu_page`, the last", [&] { bytes += screen.visu_page(last).size(); }},
        {"a bare look at each line's first bytes", [&] {
             for (const std::string& line : lines)
                 marked += line.size() >= 2 && line[0] == '#' && line[1] != 'x';
         }}};
    std::printf("| What | Time | Memory more |\n|---|---|---|\n");
    for (const auto& [name, work] : tasks) {
        forget_peak();
        const long before_kib = peak_kib();
        const double time = median_of_rounds(work);
        std::printf("| %s | %.3f ms | %ld KiB |\n", name, 1000 * time, peak_kib() - before_kib);
    }
    std::printf("\n%d pages; %zu, %zu\n\n", last + 1, bytes, marked);
}

}  // namespace

int main(int argc, char** argv) {
    const int count = argc > 1 ? std::atoi(argv[1]) : 1'000'000;
    if (argc > 2) rounds = std::max(1, std::atoi(argv[2]));
    std::vector<std::string> lines = document(count);
    print_times(lines);

    OFD_afficheur_filtre_impression print(lines.data(), count);
    OFD_afficheur_filtre_texte text(lines.data(), count);
    const std::string path =
        std::filesystem::temp_directory_path() / ("bench_viewer_" + long2S(getpid()));
    std::printf(
        "| What | Lines written | Ours | Bare writes | Ratio | Memory more "
        "|\n|---|---|---|---|---|---|\n");
    compare_export("text", path, [&](std::fstream& out) { text.imprime(out); });
    compare_export("PostScript", path, [&](std::fstream& out) { print.imprime_postscript(out); });
    compare_export("PDF", path, [&](std::fstream& out) { print.imprime_pdf(out); });
}
