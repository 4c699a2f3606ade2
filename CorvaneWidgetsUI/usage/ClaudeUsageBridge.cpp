#include "CorvaneWidgetsUI/usage/ClaudeUsageBridge.hpp"

#include "CorvaneCore/looks/LenientJson.hpp"
#include "CorvaneCore/support/JsonCoding.hpp"
#include "CorvaneCore/support/Text.hpp"
#include "CorvaneStorage/storage/AtomicFile.hpp"
#include "CorvaneStorage/storage/StoragePath.hpp"

#include <chrono>
#include <fstream>
#include <sstream>

namespace corvane {

namespace fs = std::filesystem;

namespace {

constexpr std::string_view scriptHeader = R"(#!/bin/sh
# Written by Corvane for its Claude widget.
#
# Claude Code hands a status line command the session as JSON,
# rate_limits included. This keeps the last of those payloads for
# Corvane to read and passes the same text on to the status line
# that was here before, so nothing in your terminal changes.
#
# Corvane's widget settings put this back the way it was.
PREVIOUS=')";

constexpr std::string_view scriptMiddle = "'\nPAYLOAD='";
/// After the payload line in scripts that keep the status line's own refresh interval; scripts
/// written before it was kept have no such line.
constexpr std::string_view intervalPrefix = "PREVIOUS_REFRESH_INTERVAL='";

/// `value` between single quotes for the shell: each quote inside becomes '\''.
std::string shellQuoted(std::string_view value) {
    std::string quoted;
    for (char c : value) {
        if (c == '\'') quoted += "'\\''";
        else quoted += c;
    }
    return quoted;
}

/// The single-quoted shell value that begins the line `prefix` starts (after the opening
/// quote), read back to what was quoted: '\'' is a quote, and the value may span lines.
std::optional<std::string> quotedValue(std::string_view script, std::string_view prefix) {
    std::size_t at = script.starts_with(prefix) ? 0 : script.find("\n" + std::string(prefix));
    if (at == std::string_view::npos) return std::nullopt;
    std::size_t i = at + (at == 0 ? 0 : 1) + prefix.size();
    std::string value;
    while (i < script.size()) {
        if (script[i] != '\'') {
            value += script[i++];
            continue;
        }
        if (script.substr(i, 4) == "'\\''") {
            value += '\'';
            i += 4;
            continue;
        }
        return value;
    }
    return std::nullopt; // no closing quote: not a script of ours
}

constexpr std::string_view scriptBody = R"SH('

input=$(cat)
mkdir -p "$(dirname "$PAYLOAD")"
printf '%s' "$input" > "$PAYLOAD.tmp" && mv "$PAYLOAD.tmp" "$PAYLOAD"

if [ -n "$PREVIOUS" ]; then
  printf '%s' "$input" | sh -c "$PREVIOUS"
  exit $?
fi

# No status line was set, so draw a plain one rather than leaving
# the line empty.
printf '%s' "$input" | /usr/bin/python3 -c '
import json, sys, time
try:
    d = json.load(sys.stdin)
except Exception:
    sys.exit(0)
parts = []
model = (d.get("model") or {}).get("display_name")
if model:
    parts.append(model)
folder = (d.get("workspace") or {}).get("current_dir")
if folder:
    parts.append(folder.rstrip("/").split("/")[-1])
window = (d.get("rate_limits") or {}).get("five_hour") or {}
if window.get("used_percentage") is not None:
    left = ""
    resets = window.get("resets_at")
    if resets:
        seconds = int(resets - time.time())
        if seconds > 0:
            left = " · %dh %dm left" % (seconds // 3600, (seconds % 3600) // 60)
    parts.append("%d%%%s" % (round(window["used_percentage"]), left))
sys.stdout.write(" · ".join(parts))
'
)SH";

std::string_view describe(ClaudeUsageBridge::BridgeError::Kind kind) {
    using Kind = ClaudeUsageBridge::BridgeError::Kind;
    switch (kind) {
    case Kind::noClaudeFolder: return "Failed to find ~/.claude because Claude Code has not run here.";
    case Kind::settingsUnreadable: return "Failed to read ~/.claude/settings.json because it is not valid JSON.";
    case Kind::notConnected: return "Failed to disconnect because the status line is not Corvane's.";
    case Kind::statusLineNotAnObject:
        return "Failed to connect because \"statusLine\" in ~/.claude/settings.json is not an object; it was left as it is.";
    }
    return {};
}

// Claude Code's own files are read plainly: any failure reads as no file.
std::optional<std::string> readQuietly(const fs::path& path) {
    std::ifstream stream(path, std::ios::binary);
    if (!stream) return std::nullopt;
    std::ostringstream contents;
    contents << stream.rdbuf();
    if (stream.bad()) return std::nullopt;
    return std::move(contents).str();
}

std::optional<Json> parseObject(const std::string& text) {
    auto value = lenient::document(text);
    if (value && value->is_object()) return value;
    return std::nullopt;
}

std::optional<std::string> statusCommand(const Json& settings) {
    auto line = settings.find("statusLine");
    if (line == settings.end() || !line->is_object()) return std::nullopt;
    auto command = line->find("command");
    if (command == line->end() || !command->is_string()) return std::nullopt;
    return command->get<std::string>();
}

Json statusLineObject(const Json& settings) {
    auto line = settings.find("statusLine");
    return line != settings.end() && line->is_object() ? *line : Json::object();
}

} // namespace

ClaudeUsageBridge::BridgeError::BridgeError(Kind errorKind) : std::runtime_error(std::string(describe(errorKind))), kind(errorKind) {}

ClaudeUsageBridge::ClaudeUsageBridge(fs::path home, fs::path support) : home_(std::move(home)), support_(std::move(support)) {}

fs::path ClaudeUsageBridge::backupURL() const {
    auto path = settingsURL();
    path += backupSuffix;
    return path;
}

std::string ClaudeUsageBridge::script(std::string_view previous, const fs::path& payload,
                                      std::optional<std::string_view> previousInterval) {
    std::string text(scriptHeader);
    text += shellQuoted(previous);
    text += scriptMiddle;
    text += payload.string();
    if (previousInterval) {
        text += "'\n";
        text += intervalPrefix;
        text += shellQuoted(*previousInterval);
    }
    text += scriptBody;
    return text;
}

std::optional<Json> ClaudeUsageBridge::readSettings() const {
    auto text = readQuietly(settingsURL());
    if (!text) return std::nullopt;
    auto parsed = parseObject(*text);
    if (!parsed) throw BridgeError(BridgeError::Kind::settingsUnreadable);
    return parsed;
}

void ClaudeUsageBridge::connect() const {
    std::error_code error;
    if (!fs::is_directory(home_ / ".claude", error)) throw BridgeError(BridgeError::Kind::noClaudeFolder);
    auto settings = readSettings().value_or(Json::object());
    if (settings.contains("statusLine") && !settings["statusLine"].is_object())
        throw BridgeError(BridgeError::Kind::statusLineNotAnObject);
    auto line = statusLineObject(settings);
    std::string previous = statusCommand(settings).value_or("");
    std::optional<std::string> previousInterval;
    if (auto interval = line.find("refreshInterval"); interval != line.end()) previousInterval = interval->dump();
    // Connected already: what the script keeps is the person's, and the settings hold only ours.
    bool connected = previous == scriptURL().string();
    if (connected) {
        previous = chainedCommand().value_or("");
        previousInterval = chainedRefreshInterval();
    }

    StoragePath::createDirectory(support_);
    writeFileAtomically(scriptURL(), script(previous, payloadURL(), previousInterval), 0755);
    fs::permissions(scriptURL(), static_cast<fs::perms>(0755));

    line["type"] = "command";
    line["command"] = scriptURL().string();
    line["refreshInterval"] = 30;
    settings["statusLine"] = std::move(line);
    save(settings, !connected);
}

void ClaudeUsageBridge::disconnect() const {
    auto settings = readSettings();
    if (!settings || statusCommand(*settings) != scriptURL().string()) throw BridgeError(BridgeError::Kind::notConnected);

    if (auto previous = chainedCommand()) {
        auto line = statusLineObject(*settings);
        line["type"] = "command";
        line["command"] = *previous;
        // The person's own interval comes back; where they had none, the one connect set stays.
        if (auto interval = chainedRefreshInterval()) {
            if (auto value = lenient::document(*interval)) line["refreshInterval"] = *value;
        }
        (*settings)["statusLine"] = std::move(line);
    } else {
        settings->erase("statusLine");
    }
    // The backup keeps the settings from before connecting, not the connected ones.
    save(*settings, false);
    // A script someone already deleted is as good as deleted; other failures throw.
    fs::remove(scriptURL());
}

void ClaudeUsageBridge::save(const Json& settings, bool backUp) const {
    // Keys sorted and slashes left alone, so the file stays readable and diffs stay small.
    auto text = prettyJson(settings);
    if (auto current = readQuietly(settingsURL()); current && backUp) {
        std::ofstream backup(backupURL(), std::ios::binary | std::ios::trunc);
        backup << *current; // a failed backup must not stop the change the user asked for
    }
    // People keep the file in a dotfiles folder and link it here: the link stays, its target changes.
    std::error_code error;
    auto target = fs::is_symlink(settingsURL(), error) ? fs::canonical(settingsURL()) : settingsURL();
    writeFileAtomically(target, text, 0644, ExistingFileMode::kept);
}

bool ClaudeUsageBridge::isConnected() const {
    auto text = readQuietly(settingsURL());
    auto settings = text ? parseObject(*text) : std::nullopt;
    return settings && statusCommand(*settings) == scriptURL().string();
}

std::optional<ClaudeUsageLimits> ClaudeUsageBridge::limits(Date now) const {
    auto payload = readQuietly(payloadURL());
    if (!payload) return std::nullopt;
    Date readAt = now;
    std::error_code error;
    auto modified = fs::last_write_time(payloadURL(), error);
    if (!error) {
        auto system = std::chrono::file_clock::to_sys(modified);
        readAt = Date::fromUnixTime(std::chrono::duration<double>(system.time_since_epoch()).count());
    }
    return ClaudeUsageLimitsFormat::limits(*payload, readAt);
}

std::optional<std::string> ClaudeUsageBridge::chainedCommand() const {
    auto text = readQuietly(scriptURL());
    if (!text) return std::nullopt;
    // Read as the shell reads it, so a quote or a line break in the command comes back as set.
    auto command = quotedValue(*text, "PREVIOUS='");
    if (!command || command->empty()) return std::nullopt;
    return command;
}

std::optional<std::string> ClaudeUsageBridge::chainedRefreshInterval() const {
    auto text = readQuietly(scriptURL());
    if (!text) return std::nullopt;
    auto interval = quotedValue(*text, intervalPrefix);
    if (!interval || interval->empty()) return std::nullopt;
    return interval;
}

} // namespace corvane
