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

std::string ClaudeUsageBridge::script(std::string_view previous, const fs::path& payload) {
    std::string text(scriptHeader);
    for (char c : previous) {
        if (c == '\'')
            text += "'\\''";
        else
            text += c;
    }
    text += scriptMiddle;
    text += payload.string();
    text += scriptBody;
    return text;
}

void ClaudeUsageBridge::connect() const {
    std::error_code error;
    if (!fs::is_directory(home_ / ".claude", error)) throw BridgeError(BridgeError::Kind::noClaudeFolder);
    Json settings = Json::object();
    if (auto text = readQuietly(settingsURL())) {
        auto parsed = parseObject(*text);
        if (!parsed) throw BridgeError(BridgeError::Kind::settingsUnreadable);
        settings = std::move(*parsed);
    }
    auto previous = statusCommand(settings).value_or("");
    // Connecting twice must not chain the script to itself.
    if (previous == scriptURL().string()) previous.clear();

    StoragePath::createDirectory(support_);
    writeFileAtomically(scriptURL(), script(previous, payloadURL()), 0755);
    fs::permissions(scriptURL(), static_cast<fs::perms>(0755));

    auto line = statusLineObject(settings);
    line["type"] = "command";
    line["command"] = scriptURL().string();
    line["refreshInterval"] = 30;
    settings["statusLine"] = std::move(line);
    save(settings);
}

void ClaudeUsageBridge::disconnect() const {
    if (!isConnected()) throw BridgeError(BridgeError::Kind::notConnected);
    auto text = readQuietly(settingsURL());
    auto settings = text ? parseObject(*text) : std::nullopt;
    if (!settings) throw BridgeError(BridgeError::Kind::settingsUnreadable);

    if (auto previous = chainedCommand()) {
        // The interval connect set stays: it suits any status line and the user may rely on it.
        auto line = statusLineObject(*settings);
        line["type"] = "command";
        line["command"] = *previous;
        (*settings)["statusLine"] = std::move(line);
    } else {
        settings->erase("statusLine");
    }
    save(*settings);
    // A script someone already deleted is as good as deleted; other failures throw.
    fs::remove(scriptURL());
}

void ClaudeUsageBridge::save(const Json& settings) const {
    // Keys sorted and slashes left alone, so the file stays readable and diffs stay small.
    auto text = prettyJson(settings);
    if (auto current = readQuietly(settingsURL())) {
        std::ofstream backup(backupURL(), std::ios::binary | std::ios::trunc);
        backup << *current; // a failed backup must not stop the change the user asked for
    }
    writeFileAtomically(settingsURL(), text);
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
    for (const auto& line : text::split(*text, '\n')) {
        if (!line.starts_with("PREVIOUS=")) continue;
        // Only the quotes that open and close the value go: the "'\''" of a quote inside the
        // command stays as the script line holds it, so what comes back is what the line says.
        // Stripping every quote at the ends would cut "'\''" at the end of a command in half.
        std::string_view command(line);
        command.remove_prefix(9);
        if (command.starts_with('\'')) command.remove_prefix(1);
        if (command.ends_with('\'')) command.remove_suffix(1);
        if (command.empty()) return std::nullopt;
        return std::string(command);
    }
    return std::nullopt;
}

} // namespace corvane
