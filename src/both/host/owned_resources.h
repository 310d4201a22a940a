// OwnedResources: owner of a host resource handle, destroyed with the host's own function.
#pragma once

#include <utility>

#include "host_api.h"

class OwnedResources {
  public:
    OwnedResources() = default;
    OwnedResources(HostApi& host, HostResources handle) : host_(&host), handle_(handle) {}
    ~OwnedResources() { reset(); }
    OwnedResources(OwnedResources&& other) noexcept
        : host_(other.host_), handle_(std::exchange(other.handle_, nullptr)) {}
    OwnedResources& operator=(OwnedResources&& other) noexcept {
        if (this != &other) {
            reset();
            host_ = other.host_;
            handle_ = std::exchange(other.handle_, nullptr);
        }
        return *this;
    }

    HostResources get() const { return handle_; }
    explicit operator bool() const { return handle_ != nullptr; }
    void reset() {
        if (handle_ != nullptr)
            host_->HostResourcesDestroy(std::exchange(handle_, nullptr));
    }

  private:
    HostApi* host_ = nullptr;
    HostResources handle_ = nullptr;
};
