#include "platform/posix/PlistFile.hpp"

#include "CorvaneCore/dock/PropertyListCoding.hpp"
#include "CorvaneFiles/AtomicFile.hpp"
#include "CorvaneFiles/DataFileError.hpp"

namespace corvane {

namespace fs = std::filesystem;

namespace {

/// The file's bytes; none when there is no file.
std::optional<std::string> readPlistBytes(const fs::path& path) {
    try {
        return readFileIfExists(path);
    } catch (const DataFileError& error) {
        throw PlistFileError(PlistFileError::Kind::unreadable, error.reason);
    }
}

PlistDictionary plistDictionaryFromBytes(std::string_view bytes) {
    auto value = parsePropertyList(bytes);
    if (!value) throw PlistFileError(PlistFileError::Kind::notPropertyList, "it is not a property list");
    auto root = value->dictionary();
    if (!root) throw PlistFileError(PlistFileError::Kind::notDictionary, "root is not a dictionary");
    return std::move(*root);
}

std::string plistBytes(const PlistDictionary& root) {
    auto contents = xmlPropertyList(root);
    if (contents.empty())
        throw PlistFileError(PlistFileError::Kind::unwritable, "the property list could not be serialised");
    return contents;
}

void writePlistBytes(const fs::path& path, std::string_view contents) {
    try {
        // The Dock's own file keeps the mode its owner gave it; a new one (a backup) is private.
        writeFileAtomically(path, contents, 0600, ExistingFileMode::kept);
    } catch (const DataFileError& error) {
        throw PlistFileError(PlistFileError::Kind::unwritable, error.reason);
    }
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
