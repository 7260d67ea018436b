// Paths taken apart, and the way from one to another, on any bytes.
#include "strings/file_paths.h"
#include "strings/text_search.h"
#include "tests/fuzz/fuzz_input.h"

namespace {

void split(const std::string& path) {
    const std::string name = extract_filename_name(path);
    const std::string directory = extract_filename_path(path);
    const bool has_slash = contains(path, "/") != 0;
    law(!contains(name, "/"), "a name holds no slash");
    law(!has_slash || path == directory + "/" + name || path == directory + name,
        "directory and name joined give the path back");
    law(has_slash || (name == path && directory == "."), "a path without a slash is a name");
    law(path.starts_with(supress_filename_extension(path)), "an extension goes from the end");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    drop_traces();
    fuzz_input input(data, size);
    const std::string base = input.text(32), target = input.rest();
    split(target);
    split(base);
    law(relative_directory_path(target, target.empty() ? "/" : target) == ".",
        "a path is where it is");
    const std::string way = relative_directory_path(target, base);
    law(way == target || base.empty() || way.size() <= 3 * base.size() + target.size() + 3,
        "a way climbs no more than the base is deep");
    return 0;
}
