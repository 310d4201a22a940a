// Calls from the host into a plug-in's code. Whatever a plug-in does wrong stays with it: an
// exception that escapes it is reported on standard error and the call counts as failed, so the
// editor and its open documents go on.
#pragma once

#include <exception>
#include <iostream>
#include <type_traits>
#include <utility>

namespace pdfhost {

// Calls `fn(args...)` and gives its result, or `failed` when it throws.
template <typename Result, typename Fn, typename... Args>
Result CallPlugin(const char* what, Result failed, Fn fn, Args&&... args) noexcept {
    try {
        return fn(std::forward<Args>(args)...);
    } catch (const std::exception& e) {
        std::cerr << "pdfhost: a plug-in's " << what << " failed: " << e.what() << '\n';
    } catch (...) {
        std::cerr << "pdfhost: a plug-in's " << what << " failed\n";
    }
    return failed;
}

// The same for calls without a result.
template <typename Fn, typename... Args>
void CallPluginVoid(const char* what, Fn fn, Args&&... args) noexcept {
    CallPlugin(what, 0, [&] {
        fn(std::forward<Args>(args)...);
        return 0;
    });
}

}  // namespace pdfhost
