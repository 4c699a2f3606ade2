#include "CorvaneApp/looks/IconOverrides.hpp"

#include "CorvaneStorage/looks/IconChoicesStore.hpp"
#include "CorvaneStorage/storage/AtomicFile.hpp"
#include "CorvaneStorage/storage/StoragePath.hpp"

#include <algorithm>
#include <stdexcept>

namespace corvane {

namespace {

// Custom icon files are named after their key, which may be a path: every byte outside a safe
// set is percent-escaped, so the name maps back to the key. A leading dot is escaped too, so no
// custom icon is a hidden file.
std::string fileName(const std::string& key) {
    static constexpr char kHex[] = "0123456789ABCDEF";
    std::string name;
    for (std::size_t i = 0; i < key.size(); ++i) {
        auto c = static_cast<unsigned char>(key[i]);
        bool safe = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '-' ||
                    c == '_' || (c == '.' && i > 0);
        if (safe) {
            name.push_back(static_cast<char>(c));
        } else {
            name.push_back('%');
            name.push_back(kHex[c >> 4]);
            name.push_back(kHex[c & 0xF]);
        }
    }
    return name + ".png";
}

std::string keyOf(const std::string& stem) {
    auto digit = [](char c) { return c >= 'A' ? (c & ~0x20) - 'A' + 10 : c - '0'; };
    std::string key;
    for (std::size_t i = 0; i < stem.size(); ++i) {
        if (stem[i] == '%' && i + 2 < stem.size()) {
            key.push_back(static_cast<char>(digit(stem[i + 1]) * 16 + digit(stem[i + 2])));
            i += 2;
        } else {
            key.push_back(stem[i]);
        }
    }
    return key;
}

std::vector<std::filesystem::directory_entry> sortedEntries(const std::filesystem::path& folder) {
    std::vector<std::filesystem::directory_entry> entries;
    std::error_code error;
    for (std::filesystem::directory_iterator it(folder, error);
         !error && it != std::filesystem::directory_iterator(); it.increment(error))
        entries.push_back(*it);
    std::sort(entries.begin(), entries.end());
    return entries;
}

} // namespace

IconOverrides::IconOverrides(std::filesystem::path dataDirectory) : dataDirectory_(std::move(dataDirectory)) {
    reload();
}

IconOverrides::~IconOverrides() = default;

void IconOverrides::reload() {
    auto store = std::make_unique<IconChoicesStore>(StoragePath::iconChoicesFileURL(dataDirectory_));
    std::vector<IconPack> packs;
    std::map<std::string, WidgetStyle> widgetThemes;
    for (const auto& entry : sortedEntries(StoragePath::iconPacksDirectory(dataDirectory_))) {
        std::error_code error;
        if (!entry.is_directory(error)) continue;
        try {
            packs.push_back(IconPack::load(entry.path()));
        } catch (const IconPackError&) {
            continue; // one unreadable pack must not hide the others
        }
        if (packs.back().widgetStyle) widgetThemes.emplace(packs.back().id, *packs.back().widgetStyle);
    }
    std::map<std::string, std::filesystem::path> customIcons;
    for (const auto& entry : sortedEntries(StoragePath::customIconsDirectory(dataDirectory_))) {
        std::error_code error;
        if (entry.is_regular_file(error) && entry.path().extension() == ".png")
            customIcons.emplace(keyOf(entry.path().stem().string()), entry.path());
    }
    store_ = std::move(store);
    packs_ = std::move(packs);
    widgetThemes_ = std::move(widgetThemes);
    customIcons_ = std::move(customIcons);
    images_.clear();
    changed();
}

const IconChoices& IconOverrides::choices() const {
    return store_->choices();
}

const IconPack* IconOverrides::pack(const std::string& id) const {
    auto it = std::find_if(packs_.begin(), packs_.end(), [&](const IconPack& pack) { return pack.id == id; });
    return it == packs_.end() ? nullptr : &*it;
}

std::string IconOverrides::key(const AppBundle& app, const std::string& appPath) {
    return app.bundleIdentifier ? *app.bundleIdentifier : appPath;
}

IconOverrides::Resolution IconOverrides::resolve(const std::string& appPath) const {
    using Source = Resolution::Source;
    using Reason = Resolution::Reason;
    Resolution result{.app = AppBundle::read(appPath)};
    result.key = key(result.app, appPath);
    if (auto custom = customIcons_.find(result.key); custom != customIcons_.end()) {
        result.source = Source::custom;
        result.reason = Reason::customIcon;
        result.file = custom->second;
        return result;
    }
    const auto& choices = store_->choices();
    if (auto entry = choices.perApp.find(result.key); entry != choices.perApp.end()) {
        auto id = entry->second.packID();
        if (!id) {
            result.reason = Reason::originalChosen;
            return result;
        }
        result.packID = *id;
        result.reason = Reason::chosenForApp;
    } else if (choices.defaultPackID) {
        result.packID = choices.defaultPackID;
        result.reason = Reason::defaultPack;
    } else {
        result.reason = Reason::noPackChosen;
        return result;
    }
    auto chosen = pack(*result.packID);
    if (!chosen) {
        result.reason = Reason::packNotInstalled;
        return result;
    }
    auto found = chosen->find(result.app.bundleIdentifier, result.app.name);
    if (!found) {
        result.reason = Reason::noIconInPack;
        return result;
    }
    result.source = Source::pack;
    result.file = found->file;
    result.match = found->match;
    result.padding = chosen->padding;
    return result;
}

std::optional<IconImage> IconOverrides::image(const std::string& appPath) {
    auto resolution = resolve(appPath);
    if (resolution.source == Resolution::Source::system) return std::nullopt;
    // A custom icon is the user's own picture, drawn as it is.
    return finished(*resolution.file, resolution.source == Resolution::Source::pack ? resolution.padding : 0);
}

std::optional<IconImage> IconOverrides::image(const IconPack& pack, const std::string& appPath) {
    auto app = AppBundle::read(appPath);
    auto file = pack.iconURL(app.bundleIdentifier, app.name);
    if (!file) return std::nullopt;
    return finished(*file, pack.padding);
}

std::optional<IconImage> IconOverrides::finished(const std::filesystem::path& file, double padding) {
    if (auto cached = images_.find(file); cached != images_.end()) return cached->second;
    auto image = IconImage::load(file);
    if (image && padding > 0) image = image->padded(padding);
    images_.emplace(file, image); // a file that does not decode is not tried again until reload
    return image;
}

IconOverrides::Selection IconOverrides::selection(const std::string& appPath) const {
    auto key = IconOverrides::key(AppBundle::read(appPath), appPath);
    if (customIcons_.contains(key)) return Selection::custom();
    const auto& choices = store_->choices();
    if (auto entry = choices.perApp.find(key); entry != choices.perApp.end()) {
        if (auto id = entry->second.packID()) return Selection::pack(*id);
        return Selection::original();
    }
    return choices.defaultPackID ? Selection::pack(*choices.defaultPackID) : Selection::original();
}

void IconOverrides::select(const Selection& selection, const std::string& appPath) {
    auto key = IconOverrides::key(AppBundle::read(appPath), appPath);
    // A custom icon itself comes from `setCustomIcon`; as a choice it means "not from a pack".
    if (selection.kind == Selection::Kind::pack)
        store_->set(IconChoices::Choice::pack(selection.packID), key);
    else
        store_->set(IconChoices::Choice::original(), key);
    changed();
}

std::vector<const IconPack*> IconOverrides::packsCovering(const std::string& appPath) const {
    auto app = AppBundle::read(appPath);
    std::vector<const IconPack*> covering;
    for (const auto& pack : packs_)
        if (pack.find(app.bundleIdentifier, app.name)) covering.push_back(&pack);
    return covering;
}

void IconOverrides::useForAllApps(std::optional<std::string> packID) {
    store_->useForAllApps(std::move(packID));
    changed();
}

void IconOverrides::setCustomIcon(const std::string& appPath, const std::filesystem::path& file) {
    if (!IconImage::load(file)) throw std::runtime_error(file.string() + " is not a PNG image");
    auto contents = readFileIfExists(file);
    if (!contents) throw std::runtime_error(file.string() + " is not a PNG image");
    auto key = IconOverrides::key(AppBundle::read(appPath), appPath);
    auto copy = StoragePath::customIconsDirectory(dataDirectory_) / fileName(key);
    writeFileAtomically(copy, *contents);
    customIcons_[key] = copy;
    images_.erase(copy);
    changed();
}

void IconOverrides::removeCustomIcon(const std::string& key) {
    auto custom = customIcons_.find(key);
    if (custom == customIcons_.end()) return;
    std::error_code error;
    std::filesystem::remove(custom->second, error);
    images_.erase(custom->second);
    customIcons_.erase(custom);
    changed();
}

void IconOverrides::restoreSystemIcons() {
    for (const auto& [key, file] : customIcons_) {
        std::error_code error;
        std::filesystem::remove(file, error);
    }
    customIcons_.clear();
    images_.clear();
    store_->clear();
    changed();
}

void IconOverrides::changed() {
    ++revision_;
}

} // namespace corvane
