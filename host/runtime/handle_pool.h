// Objects that the host hands out behind opaque handles. A handle is a number that is never used
// twice in the process, so a stale or foreign handle is simply not found: every table function
// answers it with a neutral result instead of touching freed memory.
#pragma once

#include <cstdint>
#include <memory>
#include <unordered_map>
#include <utility>

namespace pdfhost {

// A fresh handle value, unique in the process across all pools.
uintptr_t NextHandleValue();

template <typename Handle, typename T>
class HandlePool {
  public:
    template <typename... Args>
    Handle Emplace(Args&&... args) {
        return Add(std::make_unique<T>(std::forward<Args>(args)...));
    }

    Handle Add(std::unique_ptr<T> item) {
        const uintptr_t value = NextHandleValue();
        items_.emplace(value, std::move(item));
        return reinterpret_cast<Handle>(value);
    }

    // The object behind the handle, or null for null, stale and foreign handles.
    T* Find(Handle handle) const {
        const auto it = items_.find(reinterpret_cast<uintptr_t>(handle));
        return it == items_.end() ? nullptr : it->second.get();
    }

    bool Erase(Handle handle) { return items_.erase(reinterpret_cast<uintptr_t>(handle)) > 0; }

    template <typename Predicate>
    void EraseIf(Predicate predicate) {
        std::erase_if(items_, [&](const auto& entry) { return predicate(*entry.second); });
    }

    template <typename Visitor>
    void ForEach(Visitor visit) {
        for (auto& entry : items_)
            visit(*entry.second);
    }

    std::size_t Size() const { return items_.size(); }
    void Clear() { items_.clear(); }

  private:
    std::unordered_map<uintptr_t, std::unique_ptr<T>> items_;
};

}  // namespace pdfhost
