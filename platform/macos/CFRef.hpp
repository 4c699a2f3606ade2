#pragma once

#include <CoreFoundation/CoreFoundation.h>

#include <utility>

namespace corvane {

/// Owns one CoreFoundation reference. `adoptCF` takes the result of a Create or Copy call.
template <typename T> class CFRef {
public:
    CFRef() = default;
    explicit CFRef(T ref) : ref_(ref) {}
    CFRef(const CFRef& other) : ref_(other.ref_) {
        if (ref_) CFRetain(ref_);
    }
    CFRef(CFRef&& other) noexcept : ref_(std::exchange(other.ref_, nullptr)) {}
    CFRef& operator=(CFRef other) noexcept {
        std::swap(ref_, other.ref_);
        return *this;
    }
    ~CFRef() {
        if (ref_) CFRelease(ref_);
    }

    T get() const { return ref_; }
    explicit operator bool() const { return ref_ != nullptr; }

private:
    T ref_ = nullptr;
};

template <typename T> CFRef<T> adoptCF(T ref) { return CFRef<T>(ref); }

/// Retains a reference obtained under the Get rule.
template <typename T> CFRef<T> retainCF(T ref) {
    if (ref) CFRetain(ref);
    return CFRef<T>(ref);
}

} // namespace corvane
