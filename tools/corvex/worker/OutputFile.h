#pragma once

#include <filesystem>
#include <string>

#include <sys/types.h>

namespace corvex::tool {

/// A file that appears under its name only when it is complete. Until then its bytes live in a file without a name
/// (O_TMPFILE), so that whatever ends the process, the kernel takes them away; where a file system has no such files,
/// under a temporary name that the destructor removes.
class OutputFile {
public:
    /// `workDirectory` empty: the bytes gather beside the target. Throws JobError when the target exists and may not
    /// be replaced, is a directory, or when its directory or the work directory cannot be written.
    /// `overwriteOption` is what a user would write to have it replaced.
    OutputFile(std::filesystem::path target, const std::filesystem::path& workDirectory, bool overwrites,
               const char* overwriteOption = "-overwrite");
    ~OutputFile();
    OutputFile(const OutputFile&) = delete;
    OutputFile& operator=(const OutputFile&) = delete;

    [[nodiscard]] const std::filesystem::path& target() const noexcept { return target_; }
    /// Where the bytes gather, as the user names it; empty: beside the target.
    [[nodiscard]] const std::filesystem::path& workDirectory() const noexcept { return workDirectory_; }
    /// A path by which this process opens the gathering bytes, for writing and for reading.
    [[nodiscard]] std::string pathWhileWriting() const;

    /// Gives the bytes their name, replacing an existing target only if that is allowed. Of a target that is a symbolic
    /// link the file at its end is replaced, or made; the link stays. Throws JobError.
    void publish();

    /// Removes what a process that was ended at once may have left of its file under a temporary name.
    static void removeLeftovers(const std::filesystem::path& target, const std::filesystem::path& workDirectory,
                                pid_t process) noexcept;

private:
    void open(const std::filesystem::path& directory);
    [[nodiscard]] bool giveName();  ///< False: errno says why not.
    /// Copies the bytes to a file on the target's own file system and goes on with that one.
    void moveBeside();
    [[noreturn]] void failToPublish() const;
    [[noreturn]] void failBecauseItExists() const;

    std::filesystem::path target_;       ///< As the user names it.
    std::filesystem::path destination_;  ///< What is written: the end of the links that the target may be.
    std::filesystem::path workDirectory_;
    std::filesystem::path temporary_;  ///< Empty while the file has no name.
    bool overwrites_;
    const char* overwriteOption_;
    int descriptor_ = -1;
};

}  // namespace corvex::tool
