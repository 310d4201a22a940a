#include "engine/context.h"

#include <mupdf/fitz.h>

#include "engine/error.h"
#include "engine/mupdf_call.h"

namespace pdfhost::engine {

Context::Context() : ctx_(fz_new_context(nullptr, nullptr, FZ_STORE_DEFAULT)) {
    if (ctx_ == nullptr)
        throw Error("cannot create the MuPDF context");
    fz_set_warning_callback(ctx_, &Context::OnWarning, this);
    fz_set_error_callback(ctx_, &Context::OnError, this);
    try {
        CallMupdf(ctx_, "cannot register the document handlers",
                  [this] { fz_register_document_handlers(ctx_); });
    } catch (...) {
        fz_drop_context(ctx_);
        throw;
    }
}

Context::~Context() {
    fz_drop_context(ctx_);
}

std::vector<std::string> Context::TakeWarnings() {
    std::vector<std::string> taken;
    taken.swap(warnings_);
    return taken;
}

// Called from inside MuPDF: must not throw.
void Context::OnWarning(void* self, const char* message) {
    auto* context = static_cast<Context*>(self);
    try {
        if (context->warnings_.size() < kMaxWarnings)
            context->warnings_.emplace_back(message);
    } catch (...) {
        // Out of memory while keeping a warning: the warning is lost, nothing else.
    }
}

// Errors reach callers as exceptions; MuPDF's own printing of them is not wanted.
void Context::OnError(void*, const char*) {}

}  // namespace pdfhost::engine
