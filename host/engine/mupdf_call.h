#pragma once

#include <exception>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

#include "engine/error.h"

struct fz_context;

namespace pdfhost::engine {

namespace detail {
// Runs body(arg) inside fz_try. Returns null on success, else MuPDF's error message.
const char* RunGuarded(fz_context* ctx, void (*body)(void*), void* arg) noexcept;
}  // namespace detail

// Calls fn, which calls MuPDF, and turns a MuPDF error into Error("<what>: <message>").
// A MuPDF error leaves fn by longjmp, so fn may hold only trivially destructible locals
// (pointers, numbers, MuPDF values); keep C++ objects outside and pass results out.
// A C++ exception thrown by fn is carried across and rethrown as is.
template <class Fn>
auto CallMupdf(fz_context* ctx, std::string_view what, Fn&& fn) -> std::invoke_result_t<Fn&> {
    using Result = std::invoke_result_t<Fn&>;
    static_assert(std::is_void_v<Result> || (std::is_trivially_copyable_v<Result> &&
                                             std::is_default_constructible_v<Result>),
                  "MuPDF calls return plain values");
    struct Frame {
        std::remove_reference_t<Fn>* fn;
        std::conditional_t<std::is_void_v<Result>, bool, Result> result{};
        std::exception_ptr thrown;
    } frame{&fn, {}, {}};
    const char* failure = detail::RunGuarded(
        ctx,
        [](void* arg) {
            auto* f = static_cast<Frame*>(arg);
            try {
                if constexpr (std::is_void_v<Result>) {
                    (*f->fn)();
                } else {
                    f->result = (*f->fn)();
                }
            } catch (...) {
                f->thrown = std::current_exception();
            }
        },
        &frame);
    if (frame.thrown)
        std::rethrow_exception(frame.thrown);
    if (failure != nullptr)
        throw Error(std::string(what) + ": " + failure);
    if constexpr (!std::is_void_v<Result>)
        return frame.result;
}

}  // namespace pdfhost::engine
