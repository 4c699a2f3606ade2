#include "platform/macos/CFPlistBridge.hpp"

#include <vector>

namespace corvane {

std::optional<std::string> stringFromCF(CFTypeRef value) {
    if (!value || CFGetTypeID(value) != CFStringGetTypeID()) return std::nullopt;
    auto string = static_cast<CFStringRef>(value);
    if (const char* fast = CFStringGetCStringPtr(string, kCFStringEncodingUTF8)) return std::string(fast);
    CFIndex size = CFStringGetMaximumSizeForEncoding(CFStringGetLength(string), kCFStringEncodingUTF8) + 1;
    std::vector<char> buffer(static_cast<std::size_t>(size));
    if (!CFStringGetCString(string, buffer.data(), size, kCFStringEncodingUTF8)) return std::nullopt;
    return std::string(buffer.data());
}

CFRef<CFStringRef> cfString(const std::string& text) {
    return adoptCF(CFStringCreateWithBytes(kCFAllocatorDefault, reinterpret_cast<const UInt8*>(text.data()),
                                           static_cast<CFIndex>(text.size()), kCFStringEncodingUTF8, false));
}

std::optional<PlistValue> plistValueFromCF(CFTypeRef value) {
    if (!value) return std::nullopt;
    const CFTypeID type = CFGetTypeID(value);
    if (type == CFStringGetTypeID()) {
        if (auto text = stringFromCF(value)) return PlistValue(*text);
        return std::nullopt;
    }
    // Booleans are checked before numbers: both answer to some number calls.
    if (type == CFBooleanGetTypeID()) return PlistValue(CFBooleanGetValue(static_cast<CFBooleanRef>(value)) != 0);
    if (type == CFNumberGetTypeID()) {
        auto number = static_cast<CFNumberRef>(value);
        if (CFNumberIsFloatType(number)) {
            double real = 0;
            CFNumberGetValue(number, kCFNumberDoubleType, &real);
            return PlistValue(real);
        }
        std::int64_t integer = 0;
        CFNumberGetValue(number, kCFNumberSInt64Type, &integer);
        return PlistValue(integer);
    }
    if (type == CFDateGetTypeID()) return PlistValue(Date{CFDateGetAbsoluteTime(static_cast<CFDateRef>(value))});
    if (type == CFDataGetTypeID()) {
        auto data = static_cast<CFDataRef>(value);
        const UInt8* bytes = CFDataGetBytePtr(data);
        return PlistValue(Bytes(bytes, bytes + CFDataGetLength(data)));
    }
    if (type == CFArrayGetTypeID()) {
        auto array = static_cast<CFArrayRef>(value);
        PlistArray items;
        for (CFIndex i = 0, count = CFArrayGetCount(array); i < count; ++i)
            if (auto item = plistValueFromCF(CFArrayGetValueAtIndex(array, i))) items.push_back(std::move(*item));
        return PlistValue(std::move(items));
    }
    if (type == CFDictionaryGetTypeID()) {
        auto dictionary = static_cast<CFDictionaryRef>(value);
        const CFIndex count = CFDictionaryGetCount(dictionary);
        std::vector<const void*> keys(static_cast<std::size_t>(count)), values(static_cast<std::size_t>(count));
        CFDictionaryGetKeysAndValues(dictionary, keys.data(), values.data());
        PlistDictionary entries;
        for (CFIndex i = 0; i < count; ++i) {
            auto key = stringFromCF(keys[static_cast<std::size_t>(i)]);
            auto item = plistValueFromCF(values[static_cast<std::size_t>(i)]);
            if (key && item) entries.insert_or_assign(*key, std::move(*item));
        }
        return PlistValue(std::move(entries));
    }
    return std::nullopt;
}

CFRef<CFTypeRef> cfFromPlistValue(const PlistValue& value) {
    struct Visitor {
        CFTypeRef operator()(const PlistDictionary& entries) const {
            CFMutableDictionaryRef dictionary = CFDictionaryCreateMutable(
                kCFAllocatorDefault, 0, &kCFTypeDictionaryKeyCallBacks, &kCFTypeDictionaryValueCallBacks);
            if (!dictionary) return nullptr;
            for (const auto& [key, item] : entries) {
                auto cfKey = cfString(key);
                auto cfItem = cfFromPlistValue(item);
                if (cfKey && cfItem) CFDictionarySetValue(dictionary, cfKey.get(), cfItem.get());
            }
            return dictionary;
        }
        CFTypeRef operator()(const PlistArray& items) const {
            CFMutableArrayRef array = CFArrayCreateMutable(kCFAllocatorDefault, 0, &kCFTypeArrayCallBacks);
            if (!array) return nullptr;
            for (const auto& item : items)
                if (auto cfItem = cfFromPlistValue(item)) CFArrayAppendValue(array, cfItem.get());
            return array;
        }
        CFTypeRef operator()(const std::string& text) const {
            return CFStringCreateWithBytes(kCFAllocatorDefault, reinterpret_cast<const UInt8*>(text.data()),
                                           static_cast<CFIndex>(text.size()), kCFStringEncodingUTF8, false);
        }
        CFTypeRef operator()(std::int64_t integer) const {
            return CFNumberCreate(kCFAllocatorDefault, kCFNumberSInt64Type, &integer);
        }
        CFTypeRef operator()(double real) const { return CFNumberCreate(kCFAllocatorDefault, kCFNumberDoubleType, &real); }
        // The two boolean constants are never released; retaining one balances the owner's release.
        CFTypeRef operator()(bool flag) const { return CFRetain(flag ? kCFBooleanTrue : kCFBooleanFalse); }
        CFTypeRef operator()(Date date) const { return CFDateCreate(kCFAllocatorDefault, date.sinceReferenceDate); }
        CFTypeRef operator()(const Bytes& bytes) const {
            return CFDataCreate(kCFAllocatorDefault, bytes.data(), static_cast<CFIndex>(bytes.size()));
        }
        // CoreFoundation has no public UID type; such a value cannot be written back.
        CFTypeRef operator()(PlistUid) const { return nullptr; }
    };
    return adoptCF(std::visit(Visitor{}, value.storage));
}

} // namespace corvane
