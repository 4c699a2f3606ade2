#pragma once

#include "CorvaneCore/widgets/usage/ClaudeUsageLimits.hpp"

#include <filesystem>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>

namespace corvane {

/// Installs a small script as Claude Code's status-line command. Claude Code hands that command
/// its session as JSON, plan limits included, on every redraw; the script keeps the last payload
/// in a file for the widget and passes the text on to the status line the user had before.
/// Holds only locations: every call works on the files. Any thread, one call at a time.
class ClaudeUsageBridge {
public:
    class BridgeError : public std::runtime_error {
    public:
        enum class Kind { noClaudeFolder, settingsUnreadable, notConnected, statusLineNotAnObject };
        explicit BridgeError(Kind kind);
        Kind kind;
    };

    static constexpr std::string_view scriptFileName = "claude-statusline.sh";
    static constexpr std::string_view payloadFileName = "claude-usage.json";
    static constexpr std::string_view backupSuffix = ".corvane-backup";

    /// `home` holds ".claude"; `support` is the application's own folder.
    ClaudeUsageBridge(std::filesystem::path home, std::filesystem::path support);

    const std::filesystem::path& support() const { return support_; }
    std::filesystem::path scriptURL() const { return support_ / scriptFileName; }
    std::filesystem::path payloadURL() const { return support_ / payloadFileName; }
    std::filesystem::path settingsURL() const { return home_ / ".claude" / "settings.json"; }
    std::filesystem::path backupURL() const;

    /// Writes the script and points "statusLine" at it, keeping the command that was there, and
    /// its refresh interval, in the script; connected already, it keeps what the script holds.
    /// The settings before are copied to `backupURL()`. A settings file that is a link is written
    /// through to its target, keeping the target's mode. Throws `BridgeError`, `DataFileError` or
    /// `std::filesystem::filesystem_error`, having changed nothing.
    void connect() const;
    /// Puts the kept command and interval back (or removes "statusLine" when there was none) and
    /// deletes the script; the payload stays and ages, and the backup keeps the settings as they
    /// were before connecting. Refuses a status line that is not ours.
    void disconnect() const;
    /// "statusLine"."command" is the script.
    bool isConnected() const;
    /// The last payload, read at its modification date (`now` when that is unknown).
    std::optional<ClaudeUsageLimits> limits(Date now) const;

    /// The status-line command the script passes its input on to, exactly as it was set.
    std::optional<std::string> chainedCommand() const;
    /// The "refreshInterval" the status line had before connecting, as JSON text.
    std::optional<std::string> chainedRefreshInterval() const;
    /// The whole script for a previous command (empty for none) and a payload path; with
    /// `previousInterval` (JSON text), the status line's own refresh interval is kept in it too.
    static std::string script(std::string_view previous, const std::filesystem::path& payload,
                              std::optional<std::string_view> previousInterval = std::nullopt);

private:
    /// Reads the settings: none when there is no file, an object, or `settingsUnreadable`.
    std::optional<nlohmann::json> readSettings() const;
    void save(const nlohmann::json& settings, bool backUp) const;

    std::filesystem::path home_;
    std::filesystem::path support_;
};

} // namespace corvane
