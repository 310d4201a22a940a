#include "common_controls_context.h"

// after windows.h, which it needs
#include <commctrl.h>

#include <memory>
#include <type_traits>

#include "system_paths.h"

namespace {

// The manifest of a library, as the resource compiler numbers it.
constexpr WORD kLibraryManifest = 2;

struct ActivationContextReleaser {
    void operator()(HANDLE context) const { ReleaseActCtx(context); }
};
using ActivationContext = std::unique_ptr<void, ActivationContextReleaser>;

ActivationContext MakeContext() {
    ACTCTXW description{};
    description.cbSize = sizeof description;
    description.dwFlags = ACTCTX_FLAG_HMODULE_VALID | ACTCTX_FLAG_RESOURCE_NAME_VALID;
    description.hModule = ThisModuleHandle();
    description.lpResourceName = MAKEINTRESOURCEW(kLibraryManifest);
    const HANDLE context = CreateActCtxW(&description);
    return context == INVALID_HANDLE_VALUE ? ActivationContext() : ActivationContext(context);
}

// Made once for the module, on first use.
HANDLE ModuleContext() {
    static const ActivationContext context = MakeContext();
    return context.get();
}

}  // namespace

CommonControlsContext::CommonControlsContext() {
    const HANDLE context = ModuleContext();
    active_ = context != nullptr && ActivateActCtx(context, &cookie_);
    INITCOMMONCONTROLSEX classes{sizeof classes, ICC_LISTVIEW_CLASSES | ICC_STANDARD_CLASSES};
    InitCommonControlsEx(&classes);
}

CommonControlsContext::~CommonControlsContext() {
    if (active_)
        DeactivateActCtx(0, cookie_);
}
