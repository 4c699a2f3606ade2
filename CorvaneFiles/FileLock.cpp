#include "CorvaneFiles/FileLock.hpp"

#include "CorvaneFiles/DataFileError.hpp"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>
#include <utility>

namespace corvane {

namespace fs = std::filesystem;

fs::path FileLock::lockFilePath(const fs::path& dataFile) {
    return dataFile.parent_path() / ("." + dataFile.filename().string() + ".lock");
}

FileLock::FileLock(const fs::path& dataFile) {
    const auto path = lockFilePath(dataFile);
    auto fail = [&](int error) { throw DataFileError(DataFileError::Operation::write, path, std::strerror(error)); };
    std::error_code ec;
    if (!path.parent_path().empty()) fs::create_directories(path.parent_path(), ec);
    if (ec) throw DataFileError(DataFileError::Operation::write, path, ec.message());
    fd_ = ::open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0644);
    if (fd_ < 0) fail(errno);
    while (::flock(fd_, LOCK_EX) != 0) {
        if (errno == EINTR) continue;
        int error = errno;
        ::close(fd_);
        fail(error);
    }
}

FileLock::FileLock(FileLock&& other) noexcept : fd_(std::exchange(other.fd_, -1)) {}

FileLock::~FileLock() {
    if (fd_ >= 0) ::close(fd_);
}

} // namespace corvane
