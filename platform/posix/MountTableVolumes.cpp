#include "platform/posix/MountTableVolumes.hpp"

#include <fstream>
#include <sstream>
#include <string>
#include <vector>

namespace corvane {

namespace {

// The table writes space, tab, newline and backslash inside a field as three octal digits.
std::string unescaped(std::string_view field) {
    std::string out;
    for (std::size_t i = 0; i < field.size(); ++i) {
        if (field[i] == '\\' && field.size() - i > 3) {
            auto octal = field.substr(i + 1, 3);
            if (octal.find_first_not_of("01234567") == std::string_view::npos) {
                out.push_back(
                    static_cast<char>((octal[0] - '0') * 64 + (octal[1] - '0') * 8 + (octal[2] - '0')));
                i += 3;
                continue;
            }
        }
        out.push_back(field[i]);
    }
    return out;
}

bool hasOption(std::string_view options, std::string_view wanted) {
    std::size_t start = 0;
    while (start <= options.size()) {
        auto end = options.find(',', start);
        if (end == std::string_view::npos) end = options.size();
        if (options.substr(start, end - start) == wanted) return true;
        start = end + 1;
    }
    return false;
}

} // namespace

std::vector<MountedVolume> MountTableVolumes::parse(std::string_view text) {
    std::vector<MountedVolume> volumes;
    std::istringstream lines{std::string(text)};
    std::string line;
    while (std::getline(lines, line)) {
        std::istringstream fields(line);
        std::string device, mountPoint, type, options;
        if (!(fields >> device >> mountPoint >> type >> options)) continue;
        if (!device.starts_with('/')) continue;
        volumes.push_back(MountedVolume{unescaped(mountPoint), hasOption(options, "ro")});
    }
    return volumes;
}

std::vector<MountedVolume> MountTableVolumes::volumes() const {
    std::ifstream stream(table_);
    if (!stream) return {};
    std::ostringstream text;
    text << stream.rdbuf();
    return parse(text.str());
}

} // namespace corvane
