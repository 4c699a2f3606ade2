#include "CorvaneApp/api/WebResources.hpp"

#include <algorithm>

namespace corvane {

const WebResource* findWebResource(std::string_view path) {
    while (path.starts_with("/")) path.remove_prefix(1);
    if (path.empty()) path = "index.html";
    auto all = webResources();
    auto found = std::find_if(all.begin(), all.end(), [&](const WebResource& each) { return each.path == path; });
    return found == all.end() ? nullptr : &*found;
}

} // namespace corvane
