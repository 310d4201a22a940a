// The Linux platform layer of the plug-in, over Qt.
#include <dlfcn.h>

#include <memory>

#include "app/platform_services.h"
#include "host_page_connection.h"
#include "util/utf.h"

namespace {

class QtPlatformServices final : public PlatformServices {
  public:
    std::wstring ModulePath() override {
        Dl_info info{};
        if (dladdr(reinterpret_cast<void*>(&CreatePlatformServices), &info) == 0 ||
            info.dli_fname == nullptr) {
            return {};
        }
        return FromUtf8(info.dli_fname);
    }

    std::unique_ptr<PageConnection> ConnectHostPageChannel() override {
        QObject* channel = HostPageConnection::FindHostChannel();
        if (channel == nullptr)
            return nullptr;
        return std::make_unique<HostPageConnection>(channel);
    }
};

}  // namespace

std::unique_ptr<PlatformServices> CreatePlatformServices() {
    return std::make_unique<QtPlatformServices>();
}
