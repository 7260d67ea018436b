// The files of a test: read and written whole, and a folder that goes with the test.
#pragma once
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

/// Every byte of a file; "" when it cannot be read.
inline std::string bytes_of(const std::filesystem::path& file) {
    std::ifstream in(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

/// Makes a file of these bytes, in the place of what it held.
inline void write_bytes(const std::filesystem::path& file, const std::string& bytes) {
    std::ofstream(file, std::ios::binary) << bytes;
}

/// Makes an executable script of these lines.
inline void write_script(const std::filesystem::path& file, const std::string& lines) {
    write_bytes(file, "#!/bin/sh\n" + lines);
    std::filesystem::permissions(file, std::filesystem::perms::owner_all);
}

/// A new, empty folder, gone with the object and with all that is in it.
class temporary_folder {
public:
    explicit temporary_folder(const std::string& name = "quorin_test_") {
        std::string pattern = std::filesystem::temp_directory_path() / (name + "XXXXXX");
        if (mkdtemp(pattern.data())) path_ = pattern;
    }
    ~temporary_folder() { std::filesystem::remove_all(path_); }
    temporary_folder(const temporary_folder&) = delete;
    temporary_folder& operator=(const temporary_folder&) = delete;

    const std::filesystem::path& path() const { return path_; }
    std::filesystem::path operator/(const std::string& name) const { return path_ / name; }

private:
    std::filesystem::path path_;
};

/// A temporary folder that is the current one while the object lives.
class current_folder {
public:
    explicit current_folder(const std::string& name = "quorin_test_") : folder_(name) {
        std::filesystem::current_path(folder_.path());
    }
    ~current_folder() { std::filesystem::current_path(before_); }
    current_folder(const current_folder&) = delete;
    current_folder& operator=(const current_folder&) = delete;

    const std::filesystem::path& path() const { return folder_.path(); }

private:
    std::filesystem::path before_ = std::filesystem::current_path();
    temporary_folder folder_;
};
