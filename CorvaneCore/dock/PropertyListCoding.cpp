#include "CorvaneCore/dock/PropertyListCoding.hpp"

#include <plist/plist.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <string_view>
#include <limits>
#include <memory>

namespace corvane {

namespace {

struct NodeDeleter {
    void operator()(plist_t node) const { plist_free(node); }
};
using Node = std::unique_ptr<void, NodeDeleter>;

// Every buffer the library hands out comes from malloc; its own release functions changed
// names across 2.x, so plain free() serves all of them.
struct MallocDeleter {
    void operator()(void* pointer) const { std::free(pointer); }
};
template <typename T> using Malloced = std::unique_ptr<T, MallocDeleter>;

// The date calls are deprecated in later 2.x releases in favour of Unix-time ones that 2.2 lacks;
// the old ones remain in every release.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wdeprecated-declarations"
Date dateValue(plist_t node) {
    int32_t seconds = 0, microseconds = 0;
    plist_get_date_val(node, &seconds, &microseconds);
    // A date beyond the 32-bit seconds comes out of the library as garbage, the fraction too; the
    // whole seconds alone at least write back as they were read.
    if (microseconds <= -1000000 || microseconds >= 1000000) microseconds = 0;
    return Date{seconds + microseconds / 1e6};
}

// These calls carry whole seconds in 32 bits, about 68 years either side of 2001; a date beyond
// is pinned to the nearest one they can carry rather than wrapped around. The split truncates
// toward zero, as the library's own does, so that a date read from it is written back unchanged.
plist_t newDate(Date date) {
    constexpr double earliest = std::numeric_limits<int32_t>::min(), latest = std::numeric_limits<int32_t>::max();
    const double seconds = std::isnan(date.sinceReferenceDate) ? 0 : date.sinceReferenceDate;
    double whole = std::trunc(seconds);
    long microseconds = std::lround((seconds - whole) * 1e6);
    if (whole < earliest || whole > latest) {
        whole = std::clamp(whole, earliest, latest);
        microseconds = 0;
    }
    return plist_new_date(static_cast<int32_t>(whole), static_cast<int32_t>(std::clamp(microseconds, -999999L, 999999L)));
}
#pragma GCC diagnostic pop

plist_t newInteger(std::int64_t value) {
#ifdef PLIST_IS_INT
    // Releases with signed integers mark a large unsigned value as 16 bytes wide; negative values
    // must go through the signed call there.
    return plist_new_int(value);
#else
    return plist_new_uint(static_cast<uint64_t>(value));
#endif
}

/// The bytes of the UTF-8 sequence a lead byte opens; 0 for a byte that opens none.
std::size_t sequenceLength(unsigned char lead) {
    if (lead < 0x80) return 1;
    if (lead >= 0xC2 && lead <= 0xDF) return 2;
    if (lead >= 0xE0 && lead <= 0xEF) return 3;
    if (lead >= 0xF0 && lead <= 0xF4) return 4;
    return 0;
}

/// The text as valid UTF-8 without NUL characters: each malformed byte and each NUL becomes
/// U+FFFD. The library hands over whatever bytes a file held, and both its own writers and every
/// JSON file downstream need real text; a NUL would also be cut off at the next write.
std::string cleanText(const char* data, std::size_t length) {
    static constexpr std::string_view replacement = "\xEF\xBF\xBD";
    std::string text;
    text.reserve(length);
    const auto* bytes = reinterpret_cast<const unsigned char*>(data);
    for (std::size_t i = 0; i < length;) {
        const unsigned char lead = bytes[i];
        const std::size_t size = sequenceLength(lead);
        bool valid = size != 0 && i + size <= length;
        for (std::size_t k = 1; valid && k < size; ++k) valid = (bytes[i + k] & 0xC0) == 0x80;
        if (valid && size == 3) {
            const unsigned char second = bytes[i + 1];
            valid = !(lead == 0xE0 && second < 0xA0) && !(lead == 0xED && second >= 0xA0); // overlong, surrogate
        }
        if (valid && size == 4) {
            const unsigned char second = bytes[i + 1];
            valid = !(lead == 0xF0 && second < 0x90) && !(lead == 0xF4 && second >= 0x90); // overlong, above U+10FFFF
        }
        if (!valid || lead == 0) {
            text += replacement;
            i += 1;
            continue;
        }
        text.append(data + i, size);
        i += size;
    }
    return text;
}

std::uint64_t bigEndian(const unsigned char* bytes, std::size_t size) {
    std::uint64_t value = 0;
    for (std::size_t i = 0; i < size; ++i) value = value << 8 | bytes[i];
    return value;
}

/// A copy of a binary property list whose UTF-16 strings hold no NUL character (it becomes
/// U+FFFD). The library aborts the whole process on reading such a string as a dictionary key.
/// Anything that does not look like a well-formed object table is left for the library to reject.
std::string withoutUtf16Nul(std::string_view bytes) {
    std::string copy(bytes);
    constexpr std::size_t headerSize = 8, trailerSize = 32;
    if (copy.size() < headerSize + trailerSize) return copy;
    auto* data = reinterpret_cast<unsigned char*>(copy.data());
    const auto* trailer = data + copy.size() - trailerSize;
    const std::size_t offsetSize = trailer[6];
    const std::uint64_t objects = bigEndian(trailer + 8, 8);
    const std::uint64_t tableOffset = bigEndian(trailer + 24, 8);
    const std::uint64_t end = copy.size() - trailerSize;
    if (offsetSize < 1 || offsetSize > 8 || tableOffset > end || objects > (end - tableOffset) / offsetSize) return copy;
    for (std::uint64_t i = 0; i < objects; ++i) {
        const std::uint64_t offset = bigEndian(data + tableOffset + i * offsetSize, offsetSize);
        if (offset < headerSize || offset >= end || data[offset] >> 4 != 0x6) continue;
        std::uint64_t units = data[offset] & 0x0F;
        std::uint64_t start = offset + 1;
        if (units == 0x0F) { // the count follows as an integer object: 0x1N and 2^N bytes
            if (start >= end || data[start] >> 4 != 0x1 || (data[start] & 0x0F) > 3) continue;
            const std::size_t countSize = std::size_t{1} << (data[start] & 0x0F);
            if (start + 1 + countSize > end) continue;
            units = bigEndian(data + start + 1, countSize);
            start += 1 + countSize;
        }
        if (units > (end - start) / 2) continue;
        for (std::uint64_t unit = 0; unit < units; ++unit) {
            auto* at = data + start + 2 * unit;
            if (at[0] == 0 && at[1] == 0) {
                at[0] = 0xFF;
                at[1] = 0xFD;
            }
        }
    }
    return copy;
}

PlistValue fromNode(plist_t node);

PlistDictionary dictionaryFromNode(plist_t node) {
    PlistDictionary dictionary;
    plist_dict_iter iterator = nullptr;
    plist_dict_new_iter(node, &iterator);
    if (!iterator) return dictionary;
    Malloced<void> ownedIterator(iterator);
    for (;;) {
        char* rawKey = nullptr;
        plist_t item = nullptr;
        plist_dict_next_item(node, iterator, &rawKey, &item);
        Malloced<char> key(rawKey);
        if (!item) break;
        if (key) dictionary.insert_or_assign(cleanText(key.get(), std::strlen(key.get())), fromNode(item));
    }
    return dictionary;
}

PlistValue fromNode(plist_t node) {
    switch (plist_get_node_type(node)) {
    case PLIST_DICT: return dictionaryFromNode(node);
    case PLIST_ARRAY: {
        PlistArray array;
        const auto count = plist_array_get_size(node);
        array.reserve(count);
        for (uint32_t i = 0; i < count; ++i) array.push_back(fromNode(plist_array_get_item(node, i)));
        return array;
    }
    case PLIST_STRING: {
        // Not plist_get_string_val: it aborts the process on a string holding a NUL.
        uint64_t length = 0;
        const char* text = plist_get_string_ptr(node, &length);
        return text ? cleanText(text, length) : std::string{};
    }
    case PLIST_KEY: {
        char* raw = nullptr;
        plist_get_key_val(node, &raw);
        Malloced<char> text(raw);
        return text ? cleanText(text.get(), std::strlen(text.get())) : std::string{};
    }
    case PLIST_UINT: {
        uint64_t value = 0;
        plist_get_uint_val(node, &value);
        return static_cast<std::int64_t>(value);
    }
    case PLIST_REAL: {
        double value = 0;
        plist_get_real_val(node, &value);
        return value;
    }
    case PLIST_BOOLEAN: {
        uint8_t value = 0;
        plist_get_bool_val(node, &value);
        return value != 0;
    }
    case PLIST_DATE: return dateValue(node);
    case PLIST_DATA: {
        char* raw = nullptr;
        uint64_t length = 0;
        plist_get_data_val(node, &raw, &length);
        Malloced<char> data(raw);
        auto begin = reinterpret_cast<const std::uint8_t*>(raw);
        return raw ? Bytes(begin, begin + length) : Bytes{};
    }
    case PLIST_UID: {
        uint64_t value = 0;
        plist_get_uid_val(node, &value);
        return PlistUid{value};
    }
    default: return PlistDictionary{};
    }
}

Node toNode(const PlistValue& value) {
    struct Visitor {
        plist_t operator()(const PlistDictionary& dictionary) const {
            plist_t node = plist_new_dict();
            for (const auto& [key, item] : dictionary) plist_dict_set_item(node, key.c_str(), toNode(item).release());
            return node;
        }
        plist_t operator()(const PlistArray& array) const {
            plist_t node = plist_new_array();
            for (const auto& item : array) plist_array_append_item(node, toNode(item).release());
            return node;
        }
        plist_t operator()(const std::string& text) const { return plist_new_string(text.c_str()); }
        plist_t operator()(std::int64_t integer) const { return newInteger(integer); }
        plist_t operator()(double real) const { return plist_new_real(real); }
        plist_t operator()(bool flag) const { return plist_new_bool(flag ? 1 : 0); }
        plist_t operator()(Date date) const { return newDate(date); }
        plist_t operator()(const Bytes& data) const {
            return plist_new_data(reinterpret_cast<const char*>(data.data()), data.size());
        }
        plist_t operator()(PlistUid uid) const { return plist_new_uid(uid.value); }
    };
    return Node(std::visit(Visitor{}, value.storage));
}

} // namespace

std::optional<PlistValue> parsePropertyList(std::string_view bytes) {
    if (bytes.empty() || bytes.size() > std::numeric_limits<uint32_t>::max()) return std::nullopt;
    const auto length = static_cast<uint32_t>(bytes.size());
    plist_t raw = nullptr;
    // Told apart here rather than by the library's own sniffing call, whose signature changed
    // between 2.x releases.
    if (plist_is_binary(bytes.data(), length)) {
        auto safe = withoutUtf16Nul(bytes);
        plist_from_bin(safe.data(), length, &raw);
    } else {
        plist_from_xml(bytes.data(), length, &raw);
    }
    Node node(raw);
    if (!node) return std::nullopt;
    return fromNode(node.get());
}

std::optional<PlistValue> parsePropertyList(const Bytes& bytes) {
    return parsePropertyList(std::string_view(reinterpret_cast<const char*>(bytes.data()), bytes.size()));
}

std::string xmlPropertyList(const PlistValue& value) {
    auto node = toNode(value);
    char* raw = nullptr;
    uint32_t length = 0;
    plist_to_xml(node.get(), &raw, &length);
    Malloced<char> text(raw);
    return raw ? std::string(raw, length) : std::string{};
}

std::optional<Bytes> binaryPropertyList(const PlistValue& value) {
    auto node = toNode(value);
    char* raw = nullptr;
    uint32_t length = 0;
    plist_to_bin(node.get(), &raw, &length);
    Malloced<char> data(raw);
    if (!raw || length == 0) return std::nullopt;
    auto begin = reinterpret_cast<const std::uint8_t*>(raw);
    return Bytes(begin, begin + length);
}

} // namespace corvane
