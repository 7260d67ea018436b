#include "recording/background_file.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/statvfs.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <system_error>
#include <thread>

#include "recording/background_writer.h"
#include "recording/recorded_text.h"
#include "session/failure.h"
#include "session/system_errors.h"

namespace {

constexpr int open_flags = O_WRONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY;
constexpr int everybody_reads = 0666;
// Room that a disk must have for a recording to begin.
constexpr std::uint64_t least_room = 4096;

std::optional<struct stat> facts_of(const std::string& path) {
    struct stat facts {};
    const int found =
        is_standard_output(path) ? fstat(STDOUT_FILENO, &facts) : stat(path.c_str(), &facts);
    return found == 0 ? std::optional(facts) : std::nullopt;
}

/// Whether the disk has room for a recording in the place of what the file holds.
bool has_room(int descriptor, const struct stat& facts) {
    constexpr std::uint64_t block_of_stat = 512;
    struct statvfs disk {};
    if (fstatvfs(descriptor, &disk) != 0 || disk.f_blocks == 0) return true;
    const std::uint64_t free = geteuid() == 0 ? disk.f_bfree : disk.f_bavail;
    const auto own = static_cast<std::uint64_t>(facts.st_blocks) * block_of_stat;
    return free * disk.f_frsize + own >= least_room;
}

/// Where the file is to be made: at the end of links that lead to nothing yet.
std::string place_of_new(std::filesystem::path path) {
    constexpr int most_links = 40;
    std::error_code none;
    for (int i = 0; i < most_links && std::filesystem::is_symlink(path, none); ++i)
        path = path.parent_path() / std::filesystem::read_symlink(path, none);
    return path;
}

/// Starts its thread. Signals are for the program's own; to this one a reader that has gone, or a
/// file that may not grow, is an error of the write. 0, or why there is none.
int error_of_starting(const std::shared_ptr<background_writer>& writer) {
    int error = 0;
    sigset_t all, before;
    sigfillset(&all);
    pthread_sigmask(SIG_SETMASK, &all, &before);
    try {
        std::thread([writer] { writer->run(); }).detach();
    } catch (const std::system_error& why) {
        error = why.code().value();
    }
    pthread_sigmask(SIG_SETMASK, &before, nullptr);
    return error;
}

}  // namespace

background_file::background_file(const std::string& path, file_backlog backlog)
    : path_(path), backlog_(backlog) {
    open_it();
    try {
        look_at_it();
    } catch (const failure&) {
        close(descriptor_);
        if (!made_.empty()) unlink(made_.c_str());
        throw;
    }
}

background_file::~background_file() {
    if (writer_) {
        finish();
        return;
    }
    if (descriptor_ >= 0) close(descriptor_);
    if (!made_.empty()) unlink(made_.c_str());
}

void background_file::open_it() {
    if (is_standard_output(path_)) {
        descriptor_ = fcntl(STDOUT_FILENO, F_DUPFD_CLOEXEC, 0);
    } else {
        descriptor_ = open(path_.c_str(), open_flags);
        if (descriptor_ < 0 && errno == ENOENT) {
            const std::string place = place_of_new(path_);
            descriptor_ = open(place.c_str(), open_flags | O_CREAT | O_EXCL, everybody_reads);
            if (descriptor_ >= 0) made_ = place;
        }
    }
    if (descriptor_ >= 0) return;
    throw refusal(recorded_name(path_) + ": " + system_error_words(errno));
}

void background_file::look_at_it() {
    struct stat facts {};
    if (fstat(descriptor_, &facts) != 0)
        throw refusal(recorded_name(path_) + ": " + system_error_words(errno));
    regular_ = S_ISREG(facts.st_mode);
    if (!regular_) return;
    if (flock(descriptor_, LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK)
        throw refusal(recorded_name(path_) + ": un autre programme y enregistre");
    if (!has_room(descriptor_, facts))
        throw refusal(recorded_name(path_) + ": " + system_error_words(ENOSPC));
}

// The thread first: without one the file stays as it is.
void background_file::begin() {
    auto writer =
        std::make_shared<background_writer>(descriptor_, regular_, backlog_ == file_backlog::waits);
    descriptor_ = -1;
    if (const int error = error_of_starting(writer))
        throw refusal(recorded_name(path_) + ": " + system_error_words(error));
    writer_ = writer;
    if (regular_ && !is_standard_output(path_)) writer_->empty();
}

void background_file::append(std::string_view bytes) { writer_->append(bytes); }

std::string background_file::trouble() {
    std::string why = writer_ && !told_ ? writer_->trouble() : "";
    if (why.empty()) return why;
    told_ = true;
    return recorded_name(path_) + ": " + why;
}

bool background_file::failed() const { return writer_->failed(); }

void background_file::finish(std::chrono::milliseconds limit) { writer_->finish(limit); }

bool same_file(const std::string& one, const std::string& other) {
    const auto first = facts_of(one), second = facts_of(other);
    return first && second && first->st_dev == second->st_dev && first->st_ino == second->st_ino &&
           !S_ISCHR(first->st_mode);
}
