#include "CorvaneApp/render/CairoLibrary.hpp"

#include <dlfcn.h>

#include <memory>
#include <stdexcept>
#include <string>
#include <type_traits>
#include <vector>

// The folder the build found Cairo in; the build passes it.
#ifndef CORVANE_CAIRO_LIBRARY_DIR
#define CORVANE_CAIRO_LIBRARY_DIR ""
#endif

namespace corvane {

namespace {

void* openCairo() {
    // A program that links Cairo (the Mac app) draws with that copy: surfaces of a second copy
    // would not be the first's.
    if (::dlsym(RTLD_DEFAULT, "cairo_create")) return RTLD_DEFAULT;
    std::vector<std::string> names{"libcairo.so.2", "libcairo.2.dylib"};
    // Homebrew's libraries are outside the folders the loader searches for a bare name.
    if (std::string directory = CORVANE_CAIRO_LIBRARY_DIR; !directory.empty())
        names.insert(names.begin() + 1, directory + "/libcairo.2.dylib");
    for (const auto& name : names)
        if (void* library = ::dlopen(name.c_str(), RTLD_NOW | RTLD_LOCAL)) return library;
    return nullptr;
}

std::unique_ptr<const CairoLibrary> loadCairo() {
    void* library = openCairo();
    if (!library) return nullptr;
    auto api = std::make_unique<CairoLibrary>();
    bool complete = true;
    auto bind = [&](auto& function, const char* symbol) {
        function = reinterpret_cast<std::remove_reference_t<decltype(function)>>(::dlsym(library, symbol));
        complete = complete && function;
    };
#define CORVANE_CAIRO_BIND(name) bind(api->name, #name);
    CORVANE_CAIRO_FUNCTIONS(CORVANE_CAIRO_BIND)
#undef CORVANE_CAIRO_BIND
    if (!complete) return nullptr;
    return api;
}

} // namespace

const CairoLibrary& cairoLibrary() {
    static const std::unique_ptr<const CairoLibrary> loaded = loadCairo();
    if (!loaded) throw std::runtime_error("cannot draw without Cairo (libcairo 2), which is not installed");
    return *loaded;
}

} // namespace corvane
