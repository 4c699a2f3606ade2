#pragma once

#include "CorvaneCore/bar/StackOptions.hpp"
#include "CorvaneCore/support/Date.hpp"

#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace corvane {

/// One entry of an opened folder stack.
struct StackItem {
    /// Also the item's identity.
    std::string path;
    std::string name;
    /// The type description; the path extension where the system gives none.
    std::string kind;
    Date dateAdded;
    bool isDirectory = false;

    const std::string& id() const { return path; }
    bool operator==(const StackItem&) const = default;
};

namespace FolderStack {

/// What a folder listing knows of one entry; each value is none when the system cannot tell.
struct Entry {
    std::filesystem::path path;
    std::optional<std::string> localizedName;
    std::optional<std::string> typeDescription;
    std::optional<Date> dateAdded;
    std::optional<Date> creationDate;
    std::optional<bool> isDirectory;
};

/// The visible direct contents of a folder; none when it cannot be listed.
using Lister = std::function<std::optional<std::vector<Entry>>(const std::filesystem::path& folder)>;

/// Lists through the file system, hidden files skipped. It knows no localized names, types or
/// added dates; the modification time stands in for the creation date.
std::optional<std::vector<Entry>> listFolder(const std::filesystem::path& folder);

/// The folder's contents as stack items, sorted; a folder that cannot be listed is empty.
std::vector<StackItem> items(const std::filesystem::path& folder, StackOptions::SortOrder order,
                             const Lister& list = listFolder);

/// Stable; names in the Finder's order, kinds then names, or newest first then names.
std::vector<StackItem> sorted(std::vector<StackItem> items, StackOptions::SortOrder order);

} // namespace FolderStack

} // namespace corvane
