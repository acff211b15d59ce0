#include <tools/corvex/worker/OutputFile.h>

#include <array>
#include <cerrno>
#include <cstring>
#include <utility>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <tools/corvex/ToolError.h>
#include <tools/corvex/worker/StopRequest.h>

namespace corvex::tool {
namespace {

namespace fs = std::filesystem;

[[noreturn]] void fail(const fs::path& path, const std::string& problem) {
    throw JobError("cannot write '" + path.string() + "': " + problem);
}
[[noreturn]] void failWithErrno(const fs::path& path) { fail(path, std::strerror(errno)); }

fs::path directoryOf(const fs::path& file) {
    const fs::path directory = file.parent_path();
    return directory.empty() ? fs::path(".") : directory;
}

/// What a path finally names: symbolic links stay, and what they lead to is written, whether it exists or not.
fs::path destinationOf(fs::path file) {
    constexpr int mostLinks = 40;  // as many as Linux follows
    std::error_code error;
    for (int i = 0; i < mostLinks && fs::is_symlink(fs::symlink_status(file, error)); ++i) {
        file = directoryOf(file) / fs::read_symlink(file, error);
    }
    return file;
}

/// A name for what is to become `file` that no other process uses.
fs::path temporaryName(const fs::path& directory, const fs::path& file, pid_t process) {
    constexpr std::size_t longestStem = 200;  // with what is put around it a name stays below the usual limit of 255
    return directory /
           ("." + file.filename().string().substr(0, longestStem) + "." + std::to_string(process) + ".part");
}

}  // namespace

OutputFile::OutputFile(fs::path target, const fs::path& workDirectory, bool overwrites, const char* overwriteOption)
    : target_(std::move(target)),
      workDirectory_(workDirectory),
      overwrites_(overwrites),
      overwriteOption_(overwriteOption) {
    std::error_code error;
    const fs::file_status status = fs::status(target_, error);
    if (fs::is_directory(status)) fail(target_, "it is a directory; expected the name of a file");
    if (fs::exists(status) && !fs::is_regular_file(status)) fail(target_, "it is no regular file");
    const bool isTaken = fs::exists(fs::symlink_status(target_, error));  // a link to nothing takes the name, too
    if (isTaken && !overwrites_) failBecauseItExists();
    destination_ = destinationOf(target_);
    if (fs::is_symlink(fs::symlink_status(destination_, error))) fail(target_, std::strerror(ELOOP));
    // Both places are tried now: a job must not fail after hours for a folder that was wrong from the start.
    if (access(directoryOf(destination_).c_str(), W_OK | X_OK) != 0) failWithErrno(target_);
    open(workDirectory.empty() ? directoryOf(destination_) : workDirectory);
}

OutputFile::~OutputFile() {
    if (descriptor_ >= 0) close(descriptor_);
    if (!temporary_.empty()) unlink(temporary_.c_str());
}

void OutputFile::open(const fs::path& directory) {
    descriptor_ = ::open(directory.c_str(), O_TMPFILE | O_RDWR | O_CLOEXEC, 0666);
    if (descriptor_ >= 0) return;
    const fs::path& place = directory == directoryOf(destination_) ? target_ : directory;  // what the user named
    if (errno != EOPNOTSUPP && errno != EISDIR && errno != EINVAL) failWithErrno(place);
    fs::path name = temporaryName(directory, destination_, getpid());
    descriptor_ = ::open(name.c_str(), O_CREAT | O_EXCL | O_RDWR | O_CLOEXEC, 0666);
    if (descriptor_ < 0) failWithErrno(place);
    temporary_ = std::move(name);
}

std::string OutputFile::pathWhileWriting() const { return "/proc/self/fd/" + std::to_string(descriptor_); }

void OutputFile::publish() {
    // Some file systems find no place for what was written until they must: no name for what is not whole.
    if (fdatasync(descriptor_) != 0 && errno != EINVAL && errno != ENOTSUP) failWithErrno(target_);
    if (giveName()) return;
    if (errno != EXDEV) failToPublish();
    moveBeside();
    if (!giveName()) failToPublish();
}

bool OutputFile::giveName() {
    if (temporary_.empty()) {
        // A link never replaces: whoever made the target meanwhile keeps it. To replace, the file needs a name first.
        fs::path name = overwrites_ ? temporaryName(directoryOf(destination_), destination_, getpid()) : destination_;
        if (linkat(AT_FDCWD, pathWhileWriting().c_str(), AT_FDCWD, name.c_str(), AT_SYMLINK_FOLLOW) != 0) return false;
        if (!overwrites_) return true;
        temporary_ = std::move(name);
    }
    const unsigned flags = overwrites_ ? 0 : RENAME_NOREPLACE;
    int result = renameat2(AT_FDCWD, temporary_.c_str(), AT_FDCWD, destination_.c_str(), flags);
    if (result != 0 && errno == EINVAL && !fs::exists(destination_)) {
        result = rename(temporary_.c_str(), destination_.c_str());  // a file system that does not know the flag
    }
    if (result == 0) temporary_.clear();
    return result == 0;
}

void OutputFile::removeLeftovers(const fs::path& target, const fs::path& workDirectory, pid_t process) noexcept {
    const fs::path destination = destinationOf(target);
    for (const fs::path& directory : {directoryOf(destination), workDirectory}) {
        if (!directory.empty()) unlink(temporaryName(directory, destination, process).c_str());
    }
}

void OutputFile::failToPublish() const {
    if (errno == EEXIST || (errno == EINVAL && fs::exists(destination_))) failBecauseItExists();
    failWithErrno(target_);
}

void OutputFile::failBecauseItExists() const {
    fail(target_, std::string("the file exists; ") + overwriteOption_ + " would replace it");
}

void OutputFile::moveBeside() {
    const int source = std::exchange(descriptor_, -1);
    const fs::path old = std::exchange(temporary_, {});
    const auto discardSource = [&] {
        close(source);
        if (!old.empty()) unlink(old.c_str());
    };
    try {
        open(directoryOf(destination_));
        std::array<char, 1U << 16U> buffer{};
        off_t position = 0;
        for (;;) {
            throwIfStopRequested();
            const ssize_t count = pread(source, buffer.data(), buffer.size(), position);
            if (count < 0 && errno == EINTR) continue;
            if (count < 0) failWithErrno(target_);
            if (count == 0) break;
            for (ssize_t done = 0; done < count;) {
                const ssize_t written =
                    write(descriptor_, buffer.data() + done, static_cast<std::size_t>(count - done));
                if (written < 0 && errno == EINTR) continue;
                if (written < 0) failWithErrno(target_);
                done += written;
            }
            position += count;
        }
    } catch (...) {
        discardSource();
        throw;
    }
    discardSource();
}

}  // namespace corvex::tool
