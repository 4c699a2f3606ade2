#include "CorvaneApp/api/HttpServer.hpp"

#include <dlfcn.h>

#include <filesystem>
#include <system_error>

#ifdef __APPLE__
#include <mach-o/dyld.h>
#endif

#ifndef CORVANE_HTTP_MODULE_NAME
#define CORVANE_HTTP_MODULE_NAME ""
#endif
#ifndef CORVANE_HTTP_MODULE_BUILD_DIR
#define CORVANE_HTTP_MODULE_BUILD_DIR ""
#endif

namespace corvane {

namespace {

std::filesystem::path programFolder() {
#ifdef __APPLE__
    char path[4096];
    std::uint32_t size = sizeof path;
    if (_NSGetExecutablePath(path, &size) != 0) return {};
    std::error_code error;
    auto resolved = std::filesystem::canonical(path, error);
    return error ? std::filesystem::path() : resolved.parent_path();
#else
    std::error_code error;
    auto resolved = std::filesystem::read_symlink("/proc/self/exe", error);
    return error ? std::filesystem::path() : resolved.parent_path();
#endif
}

} // namespace

std::unique_ptr<HttpServer> loadHttpServer(std::string& error) {
    using Make = HttpServer* (*)();
    static Make make = []() -> Make {
        // Beside the program where it is installed; in the build folder for the programs made there.
        for (const auto& folder : {programFolder(), std::filesystem::path(CORVANE_HTTP_MODULE_BUILD_DIR)}) {
            if (folder.empty()) continue;
            auto path = folder / CORVANE_HTTP_MODULE_NAME;
            if (void* module = ::dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL))
                return reinterpret_cast<Make>(::dlsym(module, "corvaneMakeHttpServer"));
        }
        return nullptr;
    }();
    if (!make) {
        error = std::string("its module ") + CORVANE_HTTP_MODULE_NAME + " is missing beside the program";
        return nullptr;
    }
    return std::unique_ptr<HttpServer>(make());
}

} // namespace corvane
