#include "CorvaneCore/dock/PropertyListCoding.hpp"

#include <plist/plist.h>

#include <cmath>
#include <cstdlib>
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
    return Date{seconds + microseconds / 1e6};
}

plist_t newDate(Date date) {
    double whole = std::floor(date.sinceReferenceDate);
    return plist_new_date(static_cast<int32_t>(whole),
                          static_cast<int32_t>(std::lround((date.sinceReferenceDate - whole) * 1e6)));
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
        if (key) dictionary.insert_or_assign(key.get(), fromNode(item));
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
    case PLIST_STRING:
    case PLIST_KEY: {
        char* raw = nullptr;
        if (plist_get_node_type(node) == PLIST_KEY) plist_get_key_val(node, &raw);
        else plist_get_string_val(node, &raw);
        Malloced<char> text(raw);
        return std::string(text ? text.get() : "");
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
    if (plist_is_binary(bytes.data(), length)) plist_from_bin(bytes.data(), length, &raw);
    else plist_from_xml(bytes.data(), length, &raw);
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
