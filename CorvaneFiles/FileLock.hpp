#pragma once

#include <filesystem>

namespace corvane {

/// An advisory lock on a data file that several processes change, held for one change only, so
/// that two read-modify-write cycles never interleave and neither loses the other's update. The
/// lock is taken on a hidden file beside the data file (".NAME.lock"), which stays in place:
/// removing it would let a later writer lock a different file than an earlier one still holds.
/// Blocks until the lock is granted; the kernel releases it when the holder exits, killed or not.
class FileLock {
public:
    /// Throws `DataFileError` (write) when the lock file cannot be opened or locked.
    explicit FileLock(const std::filesystem::path& dataFile);
    ~FileLock();
    FileLock(FileLock&& other) noexcept;
    FileLock& operator=(FileLock&&) = delete;
    FileLock(const FileLock&) = delete;
    FileLock& operator=(const FileLock&) = delete;

    static std::filesystem::path lockFilePath(const std::filesystem::path& dataFile);

private:
    int fd_ = -1;
};

} // namespace corvane
