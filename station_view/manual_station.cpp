#include "station_view/manual_station.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <utility>

#include "ioshare/io_printable.h"
#include "ioshare/link_capacity.h"
#include "session/failure.h"
#include "session/system_errors.h"
#include "workcell/station_names.h"

namespace {

// Far more than a link can carry.
constexpr std::size_t most_bytes = 100'000;
// What some editors begin a file of UTF-8 with.
constexpr std::string_view byte_order_mark = "\xEF\xBB\xBF";

/// Up to `most_bytes` of a file. Throws `refusal` when it cannot be read; a FIFO is not waited for.
std::string bytes_of_file(const std::string& file) {
    const int in = open(file.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    std::string bytes(most_bytes, '\0');
    std::size_t size = 0;
    ssize_t got = in < 0 ? -1 : 1;
    while (got > 0 && size < most_bytes) {
        got = read(in, bytes.data() + size, most_bytes - size);
        if (got > 0) size += static_cast<std::size_t>(got);
    }
    const int error = errno;
    if (in >= 0) close(in);
    if (got < 0) throw refusal(io_printable(file) + ": " + system_error_words(error));
    bytes.resize(size);
    return bytes;
}

/// Its lines, without their ends and without a byte order mark.
std::vector<std::string> lines_of(const std::string& bytes) {
    std::vector<std::string> lines;
    for (std::size_t begin = bytes.starts_with(byte_order_mark) ? byte_order_mark.size() : 0;
         begin < bytes.size();) {
        const std::size_t end = std::min(bytes.find('\n', begin), bytes.size());
        lines.push_back(bytes.substr(begin, end - begin));
        begin = end + 1;
    }
    return lines;
}

std::vector<std::string_view> views(const std::vector<std::string>& names) {
    return {names.begin(), names.end()};
}

int value_at(const std::vector<int>& values, int place) {
    const bool exists = place >= 0 && std::cmp_less(place, values.size());
    return exists ? values[static_cast<std::size_t>(place)] : 0;
}

}  // namespace

manual_station::manual_station(station_names names)
    : names_(std::move(names)),
      inputs_(views(names_.inputs)),
      outputs_(views(names_.outputs)),
      wanted_(inputs_.size()),
      sensors_(inputs_.size()),
      commands_(outputs_.size()) {}

std::string_view manual_station::name() const { return "manuel"; }

void manual_station::set_inputs(const std::vector<int>& values) {
    for (std::size_t i = 0; i < wanted_.size() && i < values.size(); ++i)
        wanted_[i] = values[i] != 0;
}

void manual_station::set_command(int output, std::int32_t value) {
    if (output >= 0 && std::cmp_less(output, commands_.size()))
        commands_[static_cast<std::size_t>(output)] = value;
}

int manual_station::sensor(int input) const { return value_at(sensors_, input); }

station_names zk4_names() {
    return {{station_inputs.begin(), station_inputs.end()},
            {station_outputs.begin(), station_outputs.end()}};
}

station_names read_names(const std::string& file) {
    const std::string bytes = bytes_of_file(file);
    std::vector<std::string> lines = lines_of(bytes);
    const auto refuse = [&file](std::size_t line, const std::string& why) {
        return refusal(io_printable(file) + ":" + std::to_string(line) + ": " + why);
    };
    const std::size_t last = std::max<std::size_t>(lines.size(), 1);
    if (bytes.size() == most_bytes) throw refuse(last, "le fichier est trop long");
    station_names names;
    std::vector<std::string>* list = &names.inputs;
    std::size_t number = 0;
    for (std::string& line : lines) {
        ++number;
        if (line.ends_with('\r')) line.pop_back();
        if (line.find('\0') != std::string::npos) throw refuse(number, "un octet nul");
        if (line.empty() && list == &names.outputs) throw refuse(number, "une deuxième ligne vide");
        if (line.empty()) {
            list = &names.outputs;
            continue;
        }
        list->push_back(line);
        const std::string problem = link_capacity_problem(names.inputs, names.outputs);
        if (!problem.empty()) throw refuse(number, io_printable(problem));
    }
    if (list == &names.inputs) throw refuse(last, "une ligne vide manque avant les sorties");
    return names;
}
