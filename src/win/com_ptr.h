// An owned reference to a COM object: released when the owner goes, copied with AddRef.
#pragma once

#include <unknwn.h>

#include <utility>

template <typename T>
class ComPtr {
  public:
    ComPtr() = default;
    // Takes over a reference the caller already holds.
    explicit ComPtr(T* adopted) : pointer_(adopted) {}
    ComPtr(const ComPtr& other) : pointer_(other.pointer_) {
        if (pointer_ != nullptr)
            pointer_->AddRef();
    }
    ComPtr(ComPtr&& other) noexcept : pointer_(std::exchange(other.pointer_, nullptr)) {}
    ComPtr& operator=(ComPtr other) noexcept {
        std::swap(pointer_, other.pointer_);
        return *this;
    }
    ~ComPtr() { Reset(); }

    // A new reference to `borrowed`.
    static ComPtr Retain(T* borrowed) {
        if (borrowed != nullptr)
            borrowed->AddRef();
        return ComPtr(borrowed);
    }

    void Reset() {
        if (T* old = std::exchange(pointer_, nullptr))
            old->Release();
    }
    // The out-parameter of a call that hands back a new reference.
    T** Put() {
        Reset();
        return &pointer_;
    }
    T* Get() const { return pointer_; }
    T* operator->() const { return pointer_; }
    explicit operator bool() const { return pointer_ != nullptr; }

    // The object's interface `iid` as U; null with the failed status in `status`.
    template <typename U>
    ComPtr<U> As(const IID& iid, HRESULT* status = nullptr) const {
        ComPtr<U> other;
        const HRESULT result =
            pointer_ == nullptr
                ? E_POINTER
                : pointer_->QueryInterface(iid, reinterpret_cast<void**>(other.Put()));
        if (status != nullptr)
            *status = result;
        return other;
    }

  private:
    T* pointer_ = nullptr;
};
