#include "CorvaneStorage/storage/StoragePath.hpp"

#include "CorvaneCore/support/Text.hpp"
#include "CorvaneFiles/DataFileError.hpp"

#include <algorithm>

namespace corvane::StoragePath {

namespace fs = std::filesystem;

fs::path resolvedDirectory(const Environment& environment, const InfoDictionary& info,
                           const fs::path& applicationSupport) {
    if (auto it = environment.find(std::string(directoryOverrideVariable));
        it != environment.end() && !text::trimmed(it->second).empty()) {
        const std::string& value = it->second;
        if (value.starts_with("~") && (value.size() == 1 || value[1] == '/')) {
            if (auto home = environment.find("HOME"); home != environment.end())
                return fs::path(home->second + value.substr(1));
        }
        return fs::path(value);
    }
    std::string name(appSupportDirectoryName);
    if (auto it = info.find(std::string(folderNameInfoKey)); it != info.end()) {
        if (auto text = std::get_if<std::string>(&it->second)) {
            std::string cleaned(text::trimmed(*text));
            cleaned.erase(std::remove(cleaned.begin(), cleaned.end(), '/'), cleaned.end());
            if (!cleaned.empty()) name = cleaned;
        }
    }
    return applicationSupport / name;
}

void createDirectory(const fs::path& directory) {
    std::error_code ec;
    fs::create_directories(directory, ec);
    if (ec) throw DataFileError(DataFileError::Operation::write, directory, ec.message());
}

} // namespace corvane::StoragePath
