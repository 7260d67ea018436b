// $XDG_RUNTIME_DIR for a test and the programs that it starts: a folder of their own.
#pragma once
#include <cstdlib>
#include <filesystem>
#include <string>

class runtime_folder {
public:
    runtime_folder() {
        std::string pattern = std::filesystem::temp_directory_path() / "quorin_rt_XXXXXX";
        path = mkdtemp(pattern.data());
        setenv("XDG_RUNTIME_DIR", path.c_str(), 1);
    }
    ~runtime_folder() {
        unsetenv("XDG_RUNTIME_DIR");
        std::filesystem::remove_all(path);
    }
    runtime_folder(const runtime_folder&) = delete;
    runtime_folder& operator=(const runtime_folder&) = delete;

    std::filesystem::path path;
};
