#include "CorvaneFiles/AtomicFile.hpp"

#include "CorvaneFiles/DataFileError.hpp"

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstddef>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <random>

namespace corvane {

namespace fs = std::filesystem;

namespace {

// Temporary files and folders are named ".NAME.PID.XXXXXX.tmp": the writer's process id tells a
// save in progress in another process from the leftovers of one that was killed.
constexpr std::string_view kSuffix = ".tmp";
constexpr std::size_t kRandomLength = 6;

std::string temporaryPrefix(std::string_view name) { return "." + std::string(name) + "."; }

struct Temporary {
    std::string_view name; // what the temporary was to become
    pid_t writer = 0;
};

std::optional<Temporary> parseTemporary(std::string_view entry) {
    if (!entry.starts_with('.') || !entry.ends_with(kSuffix)) return std::nullopt;
    auto rest = entry.substr(1, entry.size() - 1 - kSuffix.size()); // NAME.PID.XXXXXX
    auto randomDot = rest.rfind('.');
    if (randomDot == std::string_view::npos || rest.size() - randomDot - 1 != kRandomLength) return std::nullopt;
    auto pidDot = rest.rfind('.', randomDot - 1);
    if (pidDot == std::string_view::npos || pidDot == 0) return std::nullopt;
    auto digits = rest.substr(pidDot + 1, randomDot - pidDot - 1);
    if (digits.empty() || digits.size() > 9) return std::nullopt;
    pid_t pid = 0;
    for (char c : digits) {
        if (c < '0' || c > '9') return std::nullopt;
        pid = pid * 10 + (c - '0');
    }
    if (pid <= 0) return std::nullopt;
    return Temporary{rest.substr(0, pidDot), pid};
}

bool isAbandoned(pid_t writer) { return writer != getpid() && ::kill(writer, 0) == -1 && errno == ESRCH; }

/// Removes abandoned temporaries in `folder`; only those of `name` when one is given.
void removeAbandoned(const fs::path& folder, std::optional<std::string_view> name) {
    std::error_code ec;
    for (const auto& entry : fs::directory_iterator(folder, ec)) {
        auto entryName = entry.path().filename().string();
        auto temporary = parseTemporary(entryName);
        if (!temporary || (name && temporary->name != *name)) continue;
        if (isAbandoned(temporary->writer)) fs::remove_all(entry.path(), ec);
    }
}

std::string randomLetters() {
    static constexpr std::string_view letters = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789";
    static thread_local std::mt19937 generator{std::random_device{}()};
    std::uniform_int_distribution<std::size_t> pick(0, letters.size() - 1);
    std::string result(kRandomLength, 'A');
    for (auto& c : result) c = letters[pick(generator)];
    return result;
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
    // Whether the file exists is the answer of the open itself: asking again afterwards could see a
    // file another process renamed into place meanwhile, and take a missing file for a failed read.
    const int fd = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
    if (fd < 0) {
        if (errno == ENOENT || errno == ENOTDIR) return std::nullopt;
        throw DataFileError(DataFileError::Operation::read, path, std::strerror(errno));
    }
    struct Closer {
        int fd;
        ~Closer() { ::close(fd); }
    } closer{fd};
    struct stat info {};
    if (::fstat(fd, &info) == 0 && S_ISDIR(info.st_mode))
        throw DataFileError(DataFileError::Operation::read, path, "is a folder");
    std::string contents;
    if (info.st_size > 0) contents.reserve(static_cast<std::size_t>(info.st_size));
    char buffer[65536];
    for (;;) {
        const auto count = ::read(fd, buffer, sizeof buffer);
        if (count == 0) return contents;
        if (count > 0) {
            contents.append(buffer, static_cast<std::size_t>(count));
        } else if (errno != EINTR) {
            throw DataFileError(DataFileError::Operation::read, path, std::strerror(errno));
        }
    }
}

void writeFileAtomically(const fs::path& path, std::string_view contents, unsigned mode, ExistingFileMode existing) {
    auto fail = [&](const std::string& reason) {
        throw DataFileError(DataFileError::Operation::write, path, reason);
    };
    auto directory = path.parent_path().empty() ? fs::path(".") : path.parent_path();
    std::error_code ec;
    fs::create_directories(directory, ec);
    if (ec) fail(ec.message());
    if (fs::is_directory(path, ec)) fail("is a folder");
    const auto name = path.filename().string();
    removeAbandoned(directory, name);

    if (struct stat old {}; existing == ExistingFileMode::kept && ::stat(path.c_str(), &old) == 0)
        mode = old.st_mode & 07777;

    auto pattern = (directory / (temporaryPrefix(name) + std::to_string(getpid()) + ".XXXXXX.tmp")).string();
    int fd = ::mkstemps(pattern.data(), static_cast<int>(kSuffix.size()));
    if (fd < 0) fail(std::strerror(errno));
    const fs::path temporary = pattern;

    // No fsync: the rename over the old file is what makes the save atomic, for readers and for
    // a writer killed halfway. Forcing the bytes to the disk as well would cost a disk flush of
    // milliseconds on every save, for protection against power loss that the system's own
    // atomic writes don't pay for either.
    bool ok = writeAll(fd, contents) && ::fchmod(fd, static_cast<mode_t>(mode)) == 0;
    int savedErrno = errno;
    ok = (::close(fd) == 0) && ok;
    if (ok && ::rename(temporary.c_str(), path.c_str()) == 0) return;
    if (ok) savedErrno = errno;
    fs::remove(temporary, ec);
    fail(std::strerror(savedErrno));
}

void removeAbandonedTemporaries(const fs::path& folder) { removeAbandoned(folder, std::nullopt); }

fs::path createTemporaryFolder(const fs::path& folder, std::string_view name) {
    std::error_code ec;
    fs::create_directories(folder, ec);
    if (ec) throw DataFileError(DataFileError::Operation::write, folder, ec.message());
    const auto prefix = temporaryPrefix(name) + std::to_string(getpid()) + ".";
    for (;;) {
        auto candidate = folder / (prefix + randomLetters() + std::string(kSuffix));
        if (::mkdir(candidate.c_str(), 0755) == 0) return candidate;
        if (errno != EEXIST) throw DataFileError(DataFileError::Operation::write, candidate, std::strerror(errno));
    }
}

namespace {

// A folder: rename fails instead of replacing a folder that is not empty, and a published
// folder never is.
bool claimFolderName(const fs::path& finished, const fs::path& target) {
    std::error_code ec;
    if (fs::exists(target, ec)) return false;
    if (::rename(finished.c_str(), target.c_str()) == 0) return true;
    if (errno == EEXIST || errno == ENOTEMPTY || errno == ENOTDIR) return false;
    throw DataFileError(DataFileError::Operation::write, target, std::strerror(errno));
}

// A file: rename would replace a file of the same name, a hard link never does.
bool claimFileName(const fs::path& finished, const fs::path& target) {
    if (::link(finished.c_str(), target.c_str()) == 0) {
        ::unlink(finished.c_str());
        return true;
    }
    if (errno == EEXIST) return false;
    if (errno != EPERM && errno != ENOTSUP && errno != EOPNOTSUPP && errno != EMLINK)
        throw DataFileError(DataFileError::Operation::write, target, std::strerror(errno));
    // A file system without hard links: check, then rename.
    std::error_code ec;
    if (fs::exists(target, ec)) return false;
    if (::rename(finished.c_str(), target.c_str()) == 0) return true;
    throw DataFileError(DataFileError::Operation::write, target, std::strerror(errno));
}

} // namespace

fs::path publishUnderFreeName(const fs::path& finished, const fs::path& folder, std::string_view stem,
                              std::string_view extension) {
    std::error_code ec;
    const bool isFolder = fs::is_directory(finished, ec);
    for (int counter = 0;; ++counter) {
        std::string name(stem);
        if (counter > 0) {
            char suffix[16];
            std::snprintf(suffix, sizeof suffix, "-%03d", counter);
            name += suffix;
        }
        name += extension;
        auto target = folder / name;
        if (isFolder ? claimFolderName(finished, target) : claimFileName(finished, target)) return target;
    }
}

bool isTemporaryName(std::string_view name) { return parseTemporary(name).has_value(); }

} // namespace corvane
