#include "platform/posix/PlistFile.hpp"

#include "CorvaneCore/dock/PropertyListCoding.hpp"
#include "CorvaneFiles/AtomicFile.hpp"
#include "CorvaneFiles/DataFileError.hpp"

namespace corvane {

namespace fs = std::filesystem;

std::optional<PlistDictionary> readPlistDictionary(const fs::path& path) {
    std::optional<std::string> contents;
    try {
        contents = readFileIfExists(path);
    } catch (const DataFileError& error) {
        throw PlistFileError(PlistFileError::Kind::unreadable, error.reason);
    }
    if (!contents) return std::nullopt;

    auto value = parsePropertyList(*contents);
    if (!value) throw PlistFileError(PlistFileError::Kind::notPropertyList, "it is not a property list");
    auto root = value->dictionary();
    if (!root) throw PlistFileError(PlistFileError::Kind::notDictionary, "root is not a dictionary");
    return std::move(*root);
}

void writePlistDictionary(const fs::path& path, const PlistDictionary& root) {
    const auto contents = xmlPropertyList(root);
    if (contents.empty())
        throw PlistFileError(PlistFileError::Kind::unwritable, "the property list could not be serialised");
    try {
        // The Dock's own file keeps the mode its owner gave it; a new one (a backup) is private.
        writeFileAtomically(path, contents, 0600, ExistingFileMode::kept);
    } catch (const DataFileError& error) {
        throw PlistFileError(PlistFileError::Kind::unwritable, error.reason);
    }
}

} // namespace corvane
