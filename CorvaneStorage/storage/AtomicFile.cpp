#include "CorvaneStorage/storage/AtomicFile.hpp"

#include "CorvaneStorage/storage/DataFileError.hpp"

#include <cerrno>
#include <csignal>
#include <cstring>
#include <fcntl.h>
#include <fstream>
#include <sys/stat.h>
#include <sstream>
#include <unistd.h>

namespace corvane {

namespace fs = std::filesystem;

namespace {

// Temporary files are named ".NAME.PID.XXXXXX.tmp": the writer's process id tells a save in
// progress in another process from the leftovers of one that was killed.
std::string temporaryPrefix(const fs::path& path) { return "." + path.filename().string() + "."; }

void removeAbandonedTemporaries(const fs::path& path) {
    std::error_code ec;
    auto prefix = temporaryPrefix(path);
    for (const auto& entry : fs::directory_iterator(path.parent_path(), ec)) {
        auto name = entry.path().filename().string();
        if (!name.starts_with(prefix) || !name.ends_with(".tmp")) continue;
        auto rest = name.substr(prefix.size());
        auto dot = rest.find('.');
        if (dot == std::string::npos) continue;
        pid_t pid = 0;
        try {
            pid = static_cast<pid_t>(std::stol(rest.substr(0, dot)));
        } catch (...) {
            continue;
        }
        if (pid <= 0 || (pid != getpid() && ::kill(pid, 0) == -1 && errno == ESRCH))
            fs::remove(entry.path(), ec);
    }
}

bool writeAll(int fd, std::string_view contents) {
    while (!contents.empty()) {
        auto written = ::write(fd, contents.data(), contents.size());
        if (written < 0) {
            if (errno == EINTR) continue;
            return false;
        }
        contents.remove_prefix(static_cast<std::size_t>(written));
    }
    return true;
}

} // namespace

std::optional<std::string> readFileIfExists(const fs::path& path) {
    std::ifstream stream(path, std::ios::binary);
    if (!stream) {
        std::error_code ec;
        if (!fs::exists(path, ec)) return std::nullopt;
        throw DataFileError(DataFileError::Operation::read, path, std::strerror(errno));
    }
    std::ostringstream contents;
    contents << stream.rdbuf();
    if (stream.bad()) throw DataFileError(DataFileError::Operation::read, path, "read error");
    if (fs::is_directory(path)) throw DataFileError(DataFileError::Operation::read, path, "is a folder");
    return std::move(contents).str();
}

void writeFileAtomically(const fs::path& path, std::string_view contents, unsigned mode) {
    auto fail = [&](const std::string& reason) {
        throw DataFileError(DataFileError::Operation::write, path, reason);
    };
    auto directory = path.parent_path().empty() ? fs::path(".") : path.parent_path();
    std::error_code ec;
    fs::create_directories(directory, ec);
    if (ec) fail(ec.message());
    if (fs::is_directory(path, ec)) fail("is a folder");
    removeAbandonedTemporaries(directory / path.filename());

    auto pattern = (directory / (temporaryPrefix(path) + std::to_string(getpid()) + ".XXXXXX.tmp")).string();
    int fd = ::mkstemps(pattern.data(), 4);
    if (fd < 0) fail(std::strerror(errno));
    const fs::path temporary = pattern;

    // No fsync: a rename over the old file is what makes the save atomic, for readers and for a
    // writer killed halfway. Forcing the bytes to the disk as well would cost a disk flush on
    // every save, milliseconds each, for protection against power loss that the system's own
    // atomic writes don't pay for either.
    bool ok = writeAll(fd, contents) && ::fchmod(fd, static_cast<mode_t>(mode)) == 0;
    int savedErrno = errno;
    ok = (::close(fd) == 0) && ok;
    if (ok && ::rename(temporary.c_str(), path.c_str()) == 0) return;
    if (ok) savedErrno = errno;
    fs::remove(temporary, ec);
    fail(std::strerror(savedErrno));
}

} // namespace corvane
