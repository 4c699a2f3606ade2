#include "CorvaneCore/looks/IconPack.hpp"

#include "CorvaneCore/looks/LenientJson.hpp"
#include "CorvaneCore/support/Text.hpp"

#include <algorithm>
#include <fstream>
#include <sstream>
#include <vector>

namespace corvane {

namespace {

// Lower case for the scripts whose letters `text::isLetterOrDigit` knows to have case: ASCII,
// Latin-1, Latin Extended-A, Greek and Cyrillic.
char32_t lowercase(char32_t c) {
    if ((c >= 'A' && c <= 'Z') || (c >= 0xC0 && c <= 0xDE && c != 0xD7) ||
        (c >= 0x391 && c <= 0x3AB && c != 0x3A2) || (c >= 0x410 && c <= 0x42F))
        return c + 32;
    if (c >= 0x400 && c <= 0x40F) return c + 80;
    if (c >= 0x100 && c <= 0x17F && c != 0x130 && c != 0x138 && c != 0x149 && c != 0x17F) {
        // Pairs: upper case on even code points up to U+0137, on odd ones from U+0139 to U+0148
        // and again on even ones from U+014A, except U+0178 (Ÿ) and the odd U+0179…U+017E.
        bool upper = c <= 0x137 ? c % 2 == 0 : c <= 0x148 ? c % 2 == 1 : c <= 0x177 ? c % 2 == 0 : false;
        if (upper) return c + 1;
        if (c == 0x178) return 0xFF;
        if (c >= 0x179 && c <= 0x17E && c % 2 == 1) return c + 1;
    }
    return c;
}

std::string lowercased(std::string_view text) {
    std::string out;
    out.reserve(text.size());
    for (auto character : text::utf8Characters(text)) {
        auto c = text::codePoint(character);
        auto lower = lowercase(c);
        if (lower == c)
            out.append(character);
        else
            out += text::utf8Encode(lower);
    }
    return out;
}

struct Manifest {
    std::optional<std::string> name, author, version;
    std::optional<double> padding;
    std::vector<std::pair<std::string, std::string>> icons;
    std::optional<nlohmann::json> widget;
};

Manifest readManifest(const nlohmann::json& json) {
    Manifest manifest;
    manifest.name = lenient::string(json, "name");
    manifest.author = lenient::string(json, "author");
    manifest.version = lenient::string(json, "version");
    manifest.padding = lenient::number(json, "padding");
    if (auto icons = lenient::value(json, "icons"); icons && icons->is_object())
        for (const auto& [app, file] : icons->items())
            if (file.is_string()) manifest.icons.emplace_back(app, file.get<std::string>());
    if (auto widget = lenient::value(json, "widget"); widget && widget->is_object()) manifest.widget = *widget;
    return manifest;
}

// A missing manifest reads as an empty one.
std::string manifestText(const std::filesystem::path& folder) {
    std::ifstream stream(folder / IconPack::manifestFileName, std::ios::binary);
    if (!stream) return {};
    std::ostringstream text;
    text << stream.rdbuf();
    return text.str();
}

bool isImage(const std::filesystem::path& file) {
    auto extension = text::lowercased(file.extension().string());
    return std::any_of(
        IconPack::imageExtensions.begin(), IconPack::imageExtensions.end(),
        [&](std::string_view wanted) { return extension.size() > 1 && extension.substr(1) == wanted; });
}

/// The pack's images below `folder`, outside "_widget/". The walk order is the file system's;
/// sorting them (shallowest first, then by path) makes the winner among images with the same
/// key the same on every disk.
std::vector<std::filesystem::path> images(const std::filesystem::path& folder) {
    std::vector<std::filesystem::path> found;
    std::error_code error;
    std::filesystem::recursive_directory_iterator it(
        folder, std::filesystem::directory_options::skip_permission_denied, error);
    for (; !error && it != std::filesystem::recursive_directory_iterator(); it.increment(error)) {
        auto relative = it->path().lexically_relative(folder);
        if (*relative.begin() == IconPack::widgetFolderName) {
            it.disable_recursion_pending();
            continue;
        }
        std::error_code ignored;
        if (it->is_regular_file(ignored) && isImage(relative)) found.push_back(relative);
    }
    if (error) throw IconPackError("cannot read icon pack " + folder.string() + ": " + error.message());
    auto depth = [](const std::filesystem::path& path) { return std::distance(path.begin(), path.end()); };
    std::sort(found.begin(), found.end(), [&](const auto& a, const auto& b) {
        auto da = depth(a), db = depth(b);
        return da != db ? da < db : a.generic_string() < b.generic_string();
    });
    return found;
}

} // namespace

std::string IconPack::key(std::string_view name) {
    auto lower = lowercased(name);
    if (lower.ends_with(".app")) lower.resize(lower.size() - 4);
    std::string key;
    for (auto character : text::utf8Characters(lower))
        if (text::isLetterOrDigit(character)) key.append(character);
    return key;
}

IconPack IconPack::load(const std::filesystem::path& folder) {
    return load(folder, manifestText(folder));
}

IconPack IconPack::load(const std::filesystem::path& folder, std::string_view manifestBytes) {
    IconPack pack;
    pack.id = folder.filename().string();
    if (pack.id.empty()) pack.id = folder.parent_path().filename().string();
    for (const auto& relative : images(folder)) {
        auto key = IconPack::key(relative.stem().string());
        if (!key.empty()) pack.icons.emplace(key, folder / relative);
    }
    // A broken manifest is a missing one.
    auto manifest = readManifest(nlohmann::json::parse(manifestBytes, nullptr, false));
    for (const auto& [app, relative] : manifest.icons) {
        auto key = IconPack::key(app);
        if (key.empty()) continue;
        if (auto file = fileInside(folder, relative)) pack.icons[key] = *file;
    }
    pack.name = manifest.name.value_or(pack.id);
    pack.author = manifest.author;
    pack.version = manifest.version;
    pack.padding = std::clamp(manifest.padding.value_or(0), 0.0, maximumPadding);
    if (manifest.widget) pack.widgetStyle = decodeWidgetStyle(*manifest.widget, folder);
    return pack;
}

std::optional<IconPack::Found> IconPack::find(std::optional<std::string_view> bundleIdentifier,
                                              std::string_view appName) const {
    auto lookup = [&](std::string key, Match match) -> std::optional<Found> {
        auto it = icons.find(key);
        if (key.empty() || it == icons.end()) return std::nullopt;
        return Found{it->second, match, std::move(key)};
    };
    if (bundleIdentifier)
        if (auto found = lookup(key(*bundleIdentifier), Match::bundleIdentifier)) return found;
    if (auto found = lookup(key(appName), Match::name)) return found;
    if (bundleIdentifier) {
        auto dot = bundleIdentifier->rfind('.');
        auto last = dot == std::string_view::npos ? *bundleIdentifier : bundleIdentifier->substr(dot + 1);
        // Short last parts ("io", "app") would match unrelated icons.
        if (text::utf8Characters(last).size() >= 3)
            if (auto found = lookup(key(last), Match::bundleIdentifierLastPart)) return found;
    }
    return std::nullopt;
}

std::optional<std::filesystem::path> IconPack::iconURL(std::optional<std::string_view> bundleIdentifier,
                                                       std::string_view appName) const {
    auto found = find(bundleIdentifier, appName);
    if (!found) return std::nullopt;
    return found->file;
}

std::string_view describe(IconPack::Match match) {
    switch (match) {
    case IconPack::Match::bundleIdentifier:
        return "bundle identifier";
    case IconPack::Match::name:
        return "name";
    case IconPack::Match::bundleIdentifierLastPart:
        return "last part of the bundle identifier";
    }
    return "name";
}

} // namespace corvane
