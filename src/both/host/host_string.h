// RAII owners of host strings: made with ...New, filled by host operations through their out
// argument, deleted in the destructor.
#pragma once

#include <string>

#include "host_api.h"

class HostWide {
  public:
    explicit HostWide(HostApi& api) : api_(&api), handle_(api.HostWideStringNew()) {}
    HostWide(HostApi& api, const std::wstring& text) : HostWide(api) {
        api_->HostWideStringSet(handle_, text.c_str());
    }
    ~HostWide() {
        if (handle_ != nullptr)
            api_->HostWideStringDelete(handle_);
    }
    HostWide(const HostWide&) = delete;
    HostWide& operator=(const HostWide&) = delete;

    HostWideString get() const { return handle_; }
    operator HostWideString() const { return handle_; }

    // The text the host holds; empty when the handle or its data is null.
    std::wstring Text() const {
        const wchar_t* data = handle_ != nullptr ? api_->HostWideStringData(handle_) : nullptr;
        return data != nullptr ? std::wstring(data) : std::wstring();
    }

  private:
    HostApi* api_;
    HostWideString handle_;
};

class HostBytes {
  public:
    explicit HostBytes(HostApi& api) : api_(&api), handle_(api.HostByteStringNew()) {}
    ~HostBytes() {
        if (handle_ != nullptr)
            api_->HostByteStringDelete(handle_);
    }
    HostBytes(const HostBytes&) = delete;
    HostBytes& operator=(const HostBytes&) = delete;

    HostByteString get() const { return handle_; }
    operator HostByteString() const { return handle_; }

    // The bytes the host holds, embedded zeros included.
    std::string Bytes() const {
        if (handle_ == nullptr)
            return {};
        const char* data = api_->HostByteStringData(handle_);
        const int length = api_->HostByteStringGetLength(handle_);
        return data != nullptr && length > 0 ? std::string(data, static_cast<std::size_t>(length))
                                             : std::string();
    }

  private:
    HostApi* api_;
    HostByteString handle_;
};
