// A file that is written beside the program: whoever has something for it never waits for it.
#pragma once
#include <chrono>
#include <memory>
#include <string>
#include <string_view>

class background_writer;

/// What happens to bytes that the file cannot take for the moment, once 16 MiB of them wait.
enum class file_backlog {
    /// Whoever appends waits, however long: for work that nobody watches.
    waits,
    /// These and all that follow are lost.
    is_cut,
};

class background_file {
public:
    /// Opens a file without changing what it holds; "-" is the standard output. A folder, a FIFO
    /// that nobody reads, a full disk, a file that somebody else is recording on, no rights: throws
    /// `refusal`, and no file was made.
    background_file(const std::string& path, file_backlog backlog);
    /// A file that was opened and never begun is as it was before, or gone if it was not there.
    ~background_file();
    background_file(const background_file&) = delete;
    background_file& operator=(const background_file&) = delete;

    /// Empties the file, and writes what is appended from now on. Throws `refusal`, and leaves the
    /// file as it was, when there cannot be a thread that writes.
    void begin();
    /// Adds bytes, which are in the file a tenth of a second later. After `begin`.
    void append(std::string_view bytes);
    /// What went wrong, told once: the disk is full, nobody reads any more, nobody has read for two
    /// seconds. One French line; empty when nothing did.
    std::string trouble();
    /// Whether bytes were lost, so that nothing more is written. After `begin`.
    bool failed() const;
    /// Writes what is left; within `limit` where a backlog is cut, less than all is a trouble then.
    /// Nothing may be appended any more.
    void finish(std::chrono::milliseconds limit = std::chrono::seconds(3));

    /// As it was given; "-" is the standard output.
    const std::string& path() const { return path_; }

private:
    void open_it();
    void look_at_it();

    std::string path_;
    file_backlog backlog_;
    int descriptor_ = -1;
    // The file that was not there before; empty where there was one.
    std::string made_;
    bool regular_ = false, told_ = false;
    std::shared_ptr<background_writer> writer_;
};

/// Whether a path means the standard output.
[[nodiscard]] inline bool is_standard_output(const std::string& path) { return path == "-"; }

/// Whether two paths mean the same file, which is there; "-" is the standard output, devices are no
/// files.
[[nodiscard]] bool same_file(const std::string& one, const std::string& other);
