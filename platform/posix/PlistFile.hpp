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
/// the new one: a temporary file in the same folder is written, flushed and renamed over it,
/// then the folder is flushed. An existing file keeps its permissions; a new one is private to
/// the user. Throws `PlistFileError` (unwritable).
void writePlistDictionary(const std::filesystem::path& path, const PlistDictionary& root);

} // namespace corvane
