#include "engine/mupdf_call.h"

#include <mupdf/fitz.h>

namespace pdfhost::engine::detail {

const char* RunGuarded(fz_context* ctx, void (*body)(void*), void* arg) noexcept {
    const char* volatile failure = nullptr;
    fz_try(ctx) {
        body(arg);
    }
    fz_catch(ctx) {
        failure = fz_caught_message(ctx);
    }
    return failure;
}

}  // namespace pdfhost::engine::detail
