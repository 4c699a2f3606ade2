#pragma once

#include "CorvaneCore/dock/PlistValue.hpp"

#include <filesystem>
#include <optional>
#include <stdexcept>

namespace corvane {

/// A property-list file that could not be used; `what()` is the reason alone, without the path.
class PlistFileError : public std::runtime_error {
public:
    enum class Kind { unreadable, notPropertyList, notDictionary, unwritable };

    PlistFileError(Kind kind_, const std::string& reason) : std::runtime_error(reason), kind(kind_) {}

    Kind kind;
};

/// The root dictionary of an XML or binary property-list file; none when there is no file.
/// Throws `PlistFileError`.
std::optional<PlistDictionary> readPlistDictionary(const std::filesystem::path& path);

/// Replaces the file with `root` as an XML property list, so that a reader sees the old file or
/// the new one: a temporary file in the same folder is written, closed and renamed over it. An existing file keeps its permissions; a new one is private to
/// the user. Throws `PlistFileError` (unwritable).
void writePlistDictionary(const std::filesystem::path& path, const PlistDictionary& root);

/// One property-list file read and written again and again, as the Dock's preferences are
/// during a switch: the root last read or written is kept with the file's bytes, and reading
/// bytes that have not changed since skips the parse. Comparing bytes rather than time stamps
/// catches every change, even one within the file system's clock tick.
class PlistFileMemo {
public:
    explicit PlistFileMemo(std::filesystem::path path) : path_(std::move(path)) {}

    /// The file's root dictionary; none when there is no file. Valid until the next call.
    /// Throws `PlistFileError`.
    const PlistDictionary* read();
    /// As `writePlistDictionary`, then remembers `root`. Throws `PlistFileError`.
    void write(PlistDictionary root);

private:
    std::filesystem::path path_;
    std::string bytes_;
    std::optional<PlistDictionary> root_;
};

} // namespace corvane
