#include "programs/quorin_lesson/output.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <filesystem>

#include "recording/recorded_text.h"
#include "session/failure.h"
#include "session/messages.h"
#include "session/system_errors.h"

namespace {

namespace fs = std::filesystem;

/// A file beside the one that is to be, which takes its place once it is whole; gone otherwise.
class new_file {
public:
    explicit new_file(const fs::path& goal)
        : goal_(goal),
          path_((goal.parent_path() / (".quorin-lesson-" + std::to_string(getpid()))).string()),
          descriptor_(open(path_.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666)) {}
    ~new_file() {
        if (descriptor_ >= 0) close(descriptor_);
        if (made_ && !path_.empty()) unlink(path_.c_str());
    }
    new_file(const new_file&) = delete;
    new_file& operator=(const new_file&) = delete;

    /// False, and errno says why, when it could not be done.
    bool write_and_place(const std::string& bytes) {
        if (!made_ || !write_all(bytes)) return false;
        if (rename(path_.c_str(), goal_.c_str()) != 0) return false;
        path_.clear();
        return true;
    }

private:
    bool write_all(const std::string& bytes) {
        for (std::size_t at = 0; at < bytes.size();) {
            const ssize_t took = write(descriptor_, bytes.data() + at, bytes.size() - at);
            if (took < 0 && errno != EINTR) return false;
            at += took > 0 ? static_cast<std::size_t>(took) : 0;
        }
        return fsync(descriptor_) == 0;
    }

    fs::path goal_;
    std::string path_;
    int descriptor_;
    bool made_ = descriptor_ >= 0;
};

/// Why what is at the path cannot be replaced, as an errno; 0 when it can, or when nothing is.
int obstacle(const fs::path& path) {
    std::error_code error;
    const fs::file_status status = fs::status(path, error);
    if (!fs::exists(status)) return 0;
    if (fs::is_directory(status)) return EISDIR;
    if (!fs::is_regular_file(status)) return ESPIPE;
    return access(path.c_str(), W_OK) == 0 ? 0 : errno;
}

/// Behind links, so that they stay links.
fs::path real_path(const std::string& path) {
    std::error_code error;
    const fs::path real = fs::weakly_canonical(fs::absolute(path), error);
    return error ? fs::path(path) : real;
}

}  // namespace

void write_whole_file(const std::string& path, const std::string& bytes) {
    if (path == "-") return print_patiently(bytes);
    const fs::path goal = real_path(path);
    int error = obstacle(goal);
    if (error == 0) {
        new_file file(goal);
        if (file.write_and_place(bytes)) return;
        error = errno;
    }
    throw refusal(recorded_name(path) + ": " + system_error_words(error));
}
