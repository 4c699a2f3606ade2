#include "CorvaneApp/render/DownloadsTileAdding.hpp"

#include "CorvaneCore/bar/DownloadsTile.hpp"

namespace corvane {

DownloadsTileAdding downloadsTileAdding(const ProcessEnvironment& environment) {
    return [downloads = DownloadsTile::folder(environment).string()](const std::vector<DockItem>& others) {
        return DownloadsTile::adding(others, downloads);
    };
}

} // namespace corvane
