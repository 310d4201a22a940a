#pragma once

#include <utility>

struct fz_context;

namespace pdfhost::engine {

// Owns one reference to a MuPDF object and drops it with `Drop` (which never throws).
template <class T, void (*Drop)(fz_context*, T*)>
class MupdfPtr {
  public:
    MupdfPtr() = default;
    MupdfPtr(fz_context* ctx, T* ptr) : ctx_(ctx), ptr_(ptr) {}
    MupdfPtr(MupdfPtr&& other) noexcept
        : ctx_(other.ctx_), ptr_(std::exchange(other.ptr_, nullptr)) {}
    MupdfPtr& operator=(MupdfPtr&& other) noexcept {
        if (this != &other) {
            Reset();
            ctx_ = other.ctx_;
            ptr_ = std::exchange(other.ptr_, nullptr);
        }
        return *this;
    }
    MupdfPtr(const MupdfPtr&) = delete;
    MupdfPtr& operator=(const MupdfPtr&) = delete;
    ~MupdfPtr() { Reset(); }

    T* get() const { return ptr_; }
    T* release() { return std::exchange(ptr_, nullptr); }
    explicit operator bool() const { return ptr_ != nullptr; }

  private:
    void Reset() {
        if (ptr_ != nullptr)
            Drop(ctx_, std::exchange(ptr_, nullptr));
    }

    fz_context* ctx_ = nullptr;
    T* ptr_ = nullptr;
};

}  // namespace pdfhost::engine
