#include "platform/posix/PlistFile.hpp"

#include "CorvaneCore/dock/PropertyListCoding.hpp"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <fstream>
#include <sstream>
#include <sys/stat.h>
#include <unistd.h>

// The data folder's stores have their own atomic writer, but the platform layer may not depend
// on the storage module; this is the same procedure for the few property-list files.

namespace corvane {

namespace fs = std::filesystem;

namespace {

[[noreturn]] void failWrite(const std::string& reason) { throw PlistFileError(PlistFileError::Kind::unwritable, reason); }

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

/// The file's bytes; none when there is no file.
std::optional<std::string> readPlistBytes(const fs::path& path) {
    std::error_code ec;
    if (!fs::exists(path, ec)) {
        if (ec && ec != std::errc::no_such_file_or_directory)
            throw PlistFileError(PlistFileError::Kind::unreadable, ec.message());
        return std::nullopt;
    }
    if (fs::is_directory(path, ec)) throw PlistFileError(PlistFileError::Kind::unreadable, "it is a folder");
    std::ifstream stream(path, std::ios::binary);
    if (!stream) throw PlistFileError(PlistFileError::Kind::unreadable, std::strerror(errno));
    std::ostringstream contents;
    contents << stream.rdbuf();
    if (stream.bad()) throw PlistFileError(PlistFileError::Kind::unreadable, "read error");
    return std::move(contents).str();
}

PlistDictionary plistDictionaryFromBytes(std::string_view bytes) {
    auto value = parsePropertyList(bytes);
    if (!value) throw PlistFileError(PlistFileError::Kind::notPropertyList, "it is not a property list");
    auto root = value->dictionary();
    if (!root) throw PlistFileError(PlistFileError::Kind::notDictionary, "root is not a dictionary");
    return std::move(*root);
}

void writePlistBytes(const fs::path& path, std::string_view contents) {
    const auto directory = path.parent_path().empty() ? fs::path(".") : path.parent_path();
    std::error_code ec;
    fs::create_directories(directory, ec);
    if (ec) failWrite(ec.message());

    mode_t mode = 0600;
    struct stat existing {};
    if (::stat(path.c_str(), &existing) == 0) mode = existing.st_mode & 07777;

    std::string name = ".";
    name += path.filename().string();
    name += ".XXXXXX";
    auto pattern = (directory / name).string();
    int fd = ::mkstemp(pattern.data());
    if (fd < 0) failWrite(std::strerror(errno));
    // As with the data folder's files, the rename makes the save atomic; no disk flush.
    bool ok = writeAll(fd, contents) && ::fchmod(fd, mode) == 0;
    int savedErrno = errno;
    ok = ::close(fd) == 0 && ok;
    if (ok && ::rename(pattern.c_str(), path.c_str()) == 0) return;
    if (ok) savedErrno = errno;
    ::unlink(pattern.c_str());
    failWrite(std::strerror(savedErrno));
}


std::string plistBytes(const PlistDictionary& root) {
    auto contents = xmlPropertyList(root);
    if (contents.empty()) failWrite("the property list could not be serialised");
    return contents;
}

} // namespace

std::optional<PlistDictionary> readPlistDictionary(const fs::path& path) {
    auto bytes = readPlistBytes(path);
    if (!bytes) return std::nullopt;
    return plistDictionaryFromBytes(*bytes);
}

void writePlistDictionary(const fs::path& path, const PlistDictionary& root) { writePlistBytes(path, plistBytes(root)); }

const PlistDictionary* PlistFileMemo::read() {
    auto bytes = readPlistBytes(path_);
    if (!bytes) {
        root_.reset();
        bytes_.clear();
        return nullptr;
    }
    if (!root_ || *bytes != bytes_) {
        root_.reset();
        root_ = plistDictionaryFromBytes(*bytes);
        bytes_ = std::move(*bytes);
    }
    return &*root_;
}

void PlistFileMemo::write(PlistDictionary root) {
    auto bytes = plistBytes(root);
    root_.reset();
    writePlistBytes(path_, bytes);
    bytes_ = std::move(bytes);
    root_ = std::move(root);
}

} // namespace corvane
