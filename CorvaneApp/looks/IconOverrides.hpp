#pragma once

#include "CorvaneApp/looks/AppBundle.hpp"
#include "CorvaneApp/looks/IconImage.hpp"
#include "CorvaneCore/looks/IconChoices.hpp"
#include "CorvaneCore/looks/IconPack.hpp"

#include <cstdint>
#include <filesystem>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace corvane {

class IconChoicesStore;

/// The installed icon packs, the user's choices and custom icons, and the finished images the
/// bar draws instead of applications' own icons. Main thread. Everything lives in the data
/// folder: "IconPacks/" (one folder per pack), "CustomIcons/" and "icons.json".
class IconOverrides {
  public:
    /// What the icon picker shows as chosen for one application.
    struct Selection {
        enum class Kind { pack, original, custom };
        Kind kind = Kind::original;
        /// The pack's id for `pack`.
        std::string packID;

        static Selection pack(std::string id) { return {Kind::pack, std::move(id)}; }
        static Selection original() { return {Kind::original, {}}; }
        static Selection custom() { return {Kind::custom, {}}; }
        bool operator==(const Selection&) const = default;
    };

    /// Which image an application gets, and why: what `image` draws, without drawing it.
    struct Resolution {
        enum class Source { custom, pack, system };
        enum class Reason {
            customIcon,
            chosenForApp,
            defaultPack,
            noPackChosen,
            originalChosen,
            packNotInstalled,
            noIconInPack
        };
        AppBundle app;
        /// The key choices and custom icons are stored under.
        std::string key;
        Source source = Source::system;
        Reason reason = Reason::noPackChosen;
        std::optional<std::string> packID;
        std::optional<std::filesystem::path> file;
        /// How the pack matched the application.
        std::optional<IconPack::Match> match;
        double padding = 0;
    };

    /// Loads everything (`reload`); throws `DataFileError` when "icons.json" cannot be decoded.
    explicit IconOverrides(std::filesystem::path dataDirectory);
    ~IconOverrides();

    /// Re-reads the packs, the custom icons and the choices. A pack folder that cannot be read
    /// is left out.
    void reload();

    const std::vector<IconPack>& packs() const { return packs_; }
    const IconChoices& choices() const;
    /// Bumped on every change, so that views know to redraw.
    std::uint64_t revision() const { return revision_; }
    /// Key → custom image file.
    const std::map<std::string, std::filesystem::path>& customIcons() const { return customIcons_; }
    /// Pack id → the pack's widget style.
    const std::map<std::string, WidgetStyle>& widgetThemes() const { return widgetThemes_; }
    const IconPack* pack(const std::string& id) const;

    /// The key of the application at `appPath`: its bundle identifier, else the path itself.
    static std::string key(const AppBundle& app, const std::string& appPath);

    Resolution resolve(const std::string& appPath) const;
    /// The icon to draw instead of the application's own; none draws the system icon.
    std::optional<IconImage> image(const std::string& appPath);
    /// That pack's icon for the application, padded as the pack asks (for previews).
    std::optional<IconImage> image(const IconPack& pack, const std::string& appPath);

    Selection selection(const std::string& appPath) const;
    void select(const Selection& selection, const std::string& appPath);
    /// The installed packs that have an icon for the application.
    std::vector<const IconPack*> packsCovering(const std::string& appPath) const;
    /// None: original icons for every application; per-application choices are kept.
    void useForAllApps(std::optional<std::string> packID);

    /// Copies a PNG into "CustomIcons" and draws it for the application from now on. Throws
    /// `std::runtime_error` for a file that is no PNG, and changes nothing then.
    void setCustomIcon(const std::string& appPath, const std::filesystem::path& file);
    void removeCustomIcon(const std::string& key);
    /// Deletes every custom icon and forgets every choice.
    void restoreSystemIcons();

  private:
    std::optional<IconImage> finished(const std::filesystem::path& file, double padding);
    void changed();

    std::filesystem::path dataDirectory_;
    std::unique_ptr<IconChoicesStore> store_;
    std::vector<IconPack> packs_;
    std::map<std::string, std::filesystem::path> customIcons_;
    std::map<std::string, WidgetStyle> widgetThemes_;
    std::map<std::filesystem::path, std::optional<IconImage>> images_;
    std::uint64_t revision_ = 0;
};

} // namespace corvane
