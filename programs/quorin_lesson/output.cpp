#include "programs/quorin_lesson/output.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <random>

#include "recording/recorded_text.h"
#include "session/failure.h"
#include "session/messages.h"
#include "session/system_errors.h"

namespace {

namespace fs = std::filesystem;

/// A name beside that file that nobody else has.
fs::path name_beside(const fs::path& goal) {
    return goal.parent_path() / (".quorin-lesson-" + std::to_string(std::random_device()()));
}

/// A file without a name, where there can be one and one can be given to it; else -1.
int open_nameless(const fs::path& folder) {
    if (access("/proc/self/fd", X_OK) != 0) return -1;
    return open(folder.c_str(), O_WRONLY | O_TMPFILE | O_CLOEXEC, 0666);
}

/// A file beside the one that is to be, which takes its place once it is whole, and has its rights;
/// gone otherwise. It has no name until then, where the disk has such files: whoever is killed
/// while it is written leaves nothing behind.
class new_file {
public:
    explicit new_file(const fs::path& goal)
        : goal_(goal), name_(name_beside(goal)), descriptor_(open_nameless(goal.parent_path())) {
        if (descriptor_ >= 0) return;
        descriptor_ = open(name_.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
        named_ = descriptor_ >= 0;
    }
    ~new_file() {
        if (descriptor_ >= 0) close(descriptor_);
        if (named_) unlink(name_.c_str());
    }
    new_file(const new_file&) = delete;
    new_file& operator=(const new_file&) = delete;

    /// False, and errno says why, when it could not be done.
    bool write_and_place(const std::string& bytes) {
        return descriptor_ >= 0 && write_all(bytes) && take_rights() && place();
    }

private:
    /// Those of the file that it replaces, if there is one.
    bool take_rights() const {
        struct stat old {};
        return stat(goal_.c_str(), &old) != 0 || fchmod(descriptor_, old.st_mode & 0777) == 0;
    }
    /// A name is given where there is none, never taken from another file: that takes two steps.
    bool place() {
        if (!named_ && give_name(goal_)) return true;
        if (!named_ && (errno != EEXIST || !give_name(name_))) return false;
        named_ = rename(name_.c_str(), goal_.c_str()) != 0;
        return !named_;
    }
    bool give_name(const fs::path& name) const {
        const std::string bytes = "/proc/self/fd/" + std::to_string(descriptor_);
        return linkat(AT_FDCWD, bytes.c_str(), AT_FDCWD, name.c_str(), AT_SYMLINK_FOLLOW) == 0;
    }
    bool write_all(const std::string& bytes) {
        for (std::size_t at = 0; at < bytes.size();) {
            const ssize_t took = write(descriptor_, bytes.data() + at, bytes.size() - at);
            if (took < 0 && errno != EINTR) return false;
            at += took > 0 ? static_cast<std::size_t>(took) : 0;
        }
        return fsync(descriptor_) == 0;
    }

    const fs::path goal_, name_;
    int descriptor_;
    bool named_ = false;
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
