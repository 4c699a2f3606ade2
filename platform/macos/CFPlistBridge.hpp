#pragma once

// Property-list values between CoreFoundation and the portable `PlistValue`. Written without a
// macOS compiler at hand; kept to plain CoreFoundation calls.

#include "CorvaneCore/dock/PlistValue.hpp"
#include "platform/macos/CFRef.hpp"

#include <optional>
#include <string>

namespace corvane {

/// None for a null reference or a type that is no property-list value. Dictionary entries whose
/// key is not text, or whose value has no portable form, are left out.
std::optional<PlistValue> plistValueFromCF(CFTypeRef value);

/// A new CoreFoundation value; empty when CoreFoundation cannot make one.
CFRef<CFTypeRef> cfFromPlistValue(const PlistValue& value);

CFRef<CFStringRef> cfString(const std::string& text);
/// None unless `value` is a CFString.
std::optional<std::string> stringFromCF(CFTypeRef value);

} // namespace corvane
