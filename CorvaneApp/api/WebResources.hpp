#pragma once

#include <span>
#include <string_view>

namespace corvane {

/// One file of the window's pages, compiled into the program from CorvaneApp/web.
struct WebResource {
    /// Its path under the web folder, without a leading slash ("index.html", "pages/workspaces.js").
    std::string_view path;
    std::string_view contentType;
    std::string_view bytes;
};

std::span<const WebResource> webResources();
/// The file at `path` ("/" and "" name "index.html"); null when there is none.
const WebResource* findWebResource(std::string_view path);

} // namespace corvane
