// OwnedHandle: owner of one host object made by a ...New operation, released with the matching
// host operation when the owner goes. `release` hands the object over to whoever takes it.
#pragma once

#include <utility>

#include "host/host_api.h"

template <typename Handle, void (HostApi::*Destroy)(Handle)>
class OwnedHandle {
  public:
    OwnedHandle() = default;
    OwnedHandle(HostApi& host, Handle handle) : host_(&host), handle_(handle) {}
    ~OwnedHandle() { reset(); }
    OwnedHandle(OwnedHandle&& other) noexcept
        : host_(other.host_), handle_(std::exchange(other.handle_, nullptr)) {}
    OwnedHandle& operator=(OwnedHandle&& other) noexcept {
        if (this != &other) {
            reset();
            host_ = other.host_;
            handle_ = std::exchange(other.handle_, nullptr);
        }
        return *this;
    }

    Handle get() const { return handle_; }
    explicit operator bool() const { return handle_ != nullptr; }
    Handle release() { return std::exchange(handle_, nullptr); }
    void reset() {
        if (handle_ != nullptr)
            (host_->*Destroy)(std::exchange(handle_, nullptr));
    }

  private:
    HostApi* host_ = nullptr;
    Handle handle_ = nullptr;
};

using OwnedRectArray = OwnedHandle<NdxRectArray, &HostApi::NDXRectArrayDestroy>;
using OwnedPtrArray = OwnedHandle<HostPtrArray, &HostApi::HostPtrArrayDestroy>;
using OwnedMap = OwnedHandle<HostMap, &HostApi::HostMapDestroy>;
using OwnedParseOptions = OwnedHandle<NdxParseOptions, &HostApi::NDXParseOptionsDestroy>;
using OwnedTextPage = OwnedHandle<NdxTextPage, &HostApi::NDXTextPageDestroy>;
using OwnedTextFind = OwnedHandle<NdxTextFind, &HostApi::NDXTextFindDestroy>;
using OwnedFieldFind = OwnedHandle<NdxFieldFind, &HostApi::NDXFieldTextFindDestroy>;
using OwnedPdfObject = OwnedHandle<NdxObject, &HostApi::NDXObjectDestroy>;
using OwnedPdfPage = OwnedHandle<NdxPage, &HostApi::NDXPageDestroy>;
