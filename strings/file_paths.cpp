#include "strings/file_paths.h"

#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <iostream>
#include <string_view>

namespace {

/// Takes the first component off the front of `path`, with the "/" that ends it.
std::string_view next_component(std::string_view& path) {
    const std::size_t separator = path.find('/');
    const std::string_view component = path.substr(0, separator);
    path.remove_prefix(separator == std::string_view::npos ? path.size() : separator + 1);
    return component;
}

/// Takes the components that two paths share off the front of both.
void drop_common_components(std::string_view& a, std::string_view& b) {
    std::string_view rest_of_a = a, rest_of_b = b;
    while (next_component(rest_of_a) == next_component(rest_of_b)) {
        a = rest_of_a;
        b = rest_of_b;
        if (a.empty() && b.empty()) return;
    }
}

/// One ".." for each component of `path`.
std::string climb_out_of(std::string_view path) {
    if (path.empty()) return {};
    std::string climb;
    for (auto left = std::ranges::count(path, '/'); left > 0; --left) climb += "../";
    return climb + "..";
}

/// The way to `target`, given what is left of it and of
/// the starting directory after their common components.
std::string way(const std::string& target, std::string_view rest_of_target,
                std::string_view rest_of_directory) {
    if (rest_of_target == target && !target.starts_with('/')) return target;
    std::string climb = climb_out_of(rest_of_directory);
    if (rest_of_target.empty()) return climb;
    if (rest_of_directory.empty()) return std::string(rest_of_target);
    return (climb + "/").append(rest_of_target);
}

/// relative_directory_path without the first and last line of its trace.
std::string traced_way(const std::string& target, const std::string& directory) {
    if (target == directory) return ".";
    std::string_view rest_of_target = target, rest_of_directory = directory;
    drop_common_components(rest_of_target, rest_of_directory);
    if (rest_of_target.empty() && rest_of_directory.empty()) return ".";
    std::cerr << "intermediaire: " << rest_of_target << "|" << rest_of_directory << std::endl;
    return way(target, rest_of_target, rest_of_directory);
}

}  // namespace

std::string extract_filename_name(const std::string& path) {
    return path.substr(path.rfind('/') + 1);  // npos + 1 is 0
}

std::string extract_filename_path(const std::string& path) {
    const std::size_t separator = path.rfind('/');
    if (separator == std::string::npos) return ".";
    return separator == 0 ? "/" : path.substr(0, separator);
}

std::string supress_filename_extension(const std::string& path) {
    const std::size_t name = path.rfind('/') + 1;
    const std::size_t point = path.rfind('.');
    if (point == std::string::npos || point < name) return path;
    const bool ends_path = point == path.size() - 1, begins_path = point == 0;
    if (!ends_path && path[point + 1] == '\\') return path;
    if (!ends_path && !begins_path && path[point - 1] == '.') return path;
    return path.substr(0, point);
}

std::string my_current_directory() {
    char* const name = get_current_dir_name();
    if (!name) return {};
    std::string directory = name;
    std::free(name);
    return directory;
}

std::string relative_directory_path(const std::string& target, const std::string& base) {
    const std::string directory = base.empty() ? my_current_directory() : base;
    std::cerr << "demarrage " << target << "|" << directory << std::endl;
    std::string result = traced_way(target, directory);
    std::cerr << "--> " << result << std::endl;
    return result;
}
