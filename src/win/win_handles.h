// Owners of the system's handles that this layer opens: each is closed with its own function
// when its owner goes.
#pragma once

#include <windows.h>

#include <memory>
#include <type_traits>

struct ModuleFreer {
    void operator()(HMODULE module) const { FreeLibrary(module); }
};
using ModuleHandle = std::unique_ptr<std::remove_pointer_t<HMODULE>, ModuleFreer>;

struct RegistryKeyCloser {
    void operator()(HKEY key) const { RegCloseKey(key); }
};
using RegistryKey = std::unique_ptr<std::remove_pointer_t<HKEY>, RegistryKeyCloser>;

struct FindCloser {
    void operator()(HANDLE find) const { FindClose(find); }
};
using FindHandle = std::unique_ptr<void, FindCloser>;

struct GlobalStringFreer {
    void operator()(wchar_t* text) const { GlobalFree(text); }
};
// A string that a WinHTTP proxy query hands back.
using GlobalString = std::unique_ptr<wchar_t, GlobalStringFreer>;

struct CoTaskMemFreer {
    void operator()(void* memory) const { CoTaskMemFree(memory); }
};
// A string that a COM call hands back.
using CoTaskString = std::unique_ptr<wchar_t, CoTaskMemFreer>;

// COM initialised on this thread for the owner's lifetime, when it could be.
class ComApartment {
  public:
    explicit ComApartment(DWORD model = COINIT_APARTMENTTHREADED)
        : initialised_(SUCCEEDED(CoInitializeEx(nullptr, model))) {}
    ~ComApartment() {
        if (initialised_)
            CoUninitialize();
    }
    ComApartment(const ComApartment&) = delete;
    ComApartment& operator=(const ComApartment&) = delete;

  private:
    bool initialised_;
};
