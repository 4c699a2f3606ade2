#include "CorvaneCore/dock/DockBookmark.hpp"

#include <cstdint>

namespace corvane::DockBookmark {

namespace {

// Every read is bounds-checked: the data comes from a preferences file anyone may have edited.
struct Reader {
    const Bytes& data;

    std::optional<std::uint32_t> littleEndian32(std::size_t at) const {
        if (at > data.size() || data.size() - at < 4) return std::nullopt;
        return std::uint32_t{data[at]} | std::uint32_t{data[at + 1]} << 8 | std::uint32_t{data[at + 2]} << 16 |
               std::uint32_t{data[at + 3]} << 24;
    }
    std::optional<std::uint16_t> bigEndian16(std::size_t at) const {
        if (at > data.size() || data.size() - at < 2) return std::nullopt;
        return static_cast<std::uint16_t>(data[at] << 8 | data[at + 1]);
    }
    std::optional<std::string> text(std::size_t at, std::size_t length) const {
        if (at > data.size() || data.size() - at < length) return std::nullopt;
        return std::string(data.begin() + static_cast<std::ptrdiff_t>(at),
                           data.begin() + static_cast<std::ptrdiff_t>(at + length));
    }
};

constexpr std::uint32_t pathComponentsKey = 0x1004;
constexpr std::uint32_t arrayType = 0x0601;
constexpr std::uint32_t stringType = 0x0101;
constexpr std::uint32_t tableOfContentsMagic = 0xfffffffe;

// "book": a header whose fourth word is the offset of the data area; every offset after it is
// relative to that area. The area opens with the offset of the first table of contents, a
// chain of tables of (key, offset, flags) entries. The path is the array item under key
// 0x1004, whose elements point at one UTF-8 string item per component.
std::optional<std::string> bookmarkPath(const Reader& in) {
    auto base = in.littleEndian32(12);
    if (!base) return std::nullopt;
    auto item = [&](std::uint32_t offset) { return std::size_t{*base} + offset; };
    auto toc = in.littleEndian32(*base);
    // A table that points back at itself would loop; real data has one or two tables.
    for (int hops = 0; toc && *toc != 0 && hops < 16; ++hops) {
        auto at = item(*toc);
        auto magic = in.littleEndian32(at + 4);
        auto count = in.littleEndian32(at + 16);
        if (!magic || *magic != tableOfContentsMagic || !count) return std::nullopt;
        for (std::uint32_t i = 0; i < *count && i < 4096; ++i) {
            auto entry = at + 20 + std::size_t{i} * 12;
            auto key = in.littleEndian32(entry);
            auto offset = in.littleEndian32(entry + 4);
            if (!key || !offset) return std::nullopt;
            if (*key != pathComponentsKey) continue;
            auto length = in.littleEndian32(item(*offset));
            auto type = in.littleEndian32(item(*offset) + 4);
            if (!length || !type || *type != arrayType) return std::nullopt;
            std::string path;
            for (std::uint32_t k = 0; k < *length / 4; ++k) {
                auto component = in.littleEndian32(item(*offset) + 8 + std::size_t{k} * 4);
                if (!component) return std::nullopt;
                auto size = in.littleEndian32(item(*component));
                auto kind = in.littleEndian32(item(*component) + 4);
                if (!size || !kind || *kind != stringType) return std::nullopt;
                auto name = in.text(item(*component) + 8, *size);
                if (!name) return std::nullopt;
                path += "/" + *name;
                // Each component is stored once, so a longer path means elements that repeat.
                if (path.size() > in.data.size()) return std::nullopt;
            }
            return path.empty() ? std::string("/") : path;
        }
        toc = in.littleEndian32(at + 12);
    }
    return std::nullopt;
}

constexpr std::int16_t posixPathTag = 18;
constexpr std::int16_t volumeMountPointTag = 19;

// Alias record: a big-endian header (version 2 or 3, of fixed length per version) followed by
// tagged fields, each padded to an even length, ended by tag -1. The path inside the volume
// (tag 18, without a leading slash) joined to the volume's mount point (tag 19) is the path.
std::optional<std::string> aliasPath(const Reader& in) {
    auto version = in.bigEndian16(6);
    if (!version || (*version != 2 && *version != 3)) return std::nullopt;
    std::size_t at = *version == 2 ? 150 : 58;
    std::optional<std::string> inVolume, mountPoint;
    while (auto tag = in.bigEndian16(at)) {
        if (static_cast<std::int16_t>(*tag) == -1) break;
        auto length = in.bigEndian16(at + 2);
        if (!length) break;
        auto value = in.text(at + 4, *length);
        if (!value) break;
        if (static_cast<std::int16_t>(*tag) == posixPathTag) inVolume = value;
        if (static_cast<std::int16_t>(*tag) == volumeMountPointTag) mountPoint = value;
        at += 4 + *length + (*length & 1u);
    }
    if (!inVolume) return std::nullopt;
    auto root = mountPoint ? *mountPoint : std::string("/");
    if (!root.ends_with('/')) root += '/';
    return root + *inVolume;
}

} // namespace

std::optional<std::string> path(const Bytes& data) {
    Reader in{data};
    if (in.text(0, 4) == "book") return bookmarkPath(in);
    return aliasPath(in);
}

} // namespace corvane::DockBookmark
