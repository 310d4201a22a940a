// A COM completion or event handler made of a function: the runtime keeps its own references,
// and the object goes when the last of them is released.
#pragma once

#include <unknwn.h>

#include <atomic>
#include <functional>
#include <utility>

#include "com_ptr.h"

template <typename Interface, typename... Args>
class ComCallback final : public Interface {
  public:
    using Function = std::function<HRESULT(Args...)>;

    static ComPtr<Interface> Make(const IID& iid, Function function) {
        return ComPtr<Interface>(new ComCallback(iid, std::move(function)));
    }

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override {
        if (object == nullptr)
            return E_POINTER;
        if (IsEqualIID(iid, IID_IUnknown) || IsEqualIID(iid, iid_)) {
            *object = static_cast<Interface*>(this);
            AddRef();
            return S_OK;
        }
        *object = nullptr;
        return E_NOINTERFACE;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return ++references_; }
    ULONG STDMETHODCALLTYPE Release() override {
        const ULONG left = --references_;
        if (left == 0)
            delete this;
        return left;
    }
    HRESULT STDMETHODCALLTYPE Invoke(Args... args) override { return function_(args...); }

  private:
    ComCallback(const IID& iid, Function function) : iid_(iid), function_(std::move(function)) {}
    ~ComCallback() = default;

    const IID iid_;
    Function function_;
    std::atomic<ULONG> references_{1};
};
