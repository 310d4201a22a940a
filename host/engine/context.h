#pragma once

#include <cstddef>
#include <string>
#include <vector>

struct fz_context;

namespace pdfhost::engine {

// Owns one MuPDF context with the document handlers registered. MuPDF's warnings and error
// messages are kept here instead of being printed. Not copyable or movable: documents refer
// to their context, which must outlive them. One thread at a time.
class Context {
  public:
    Context();  // throws Error when MuPDF cannot allocate its context
    ~Context();
    Context(const Context&) = delete;
    Context& operator=(const Context&) = delete;

    fz_context* get() const { return ctx_; }

    // Warnings MuPDF reported since the last call (e.g. "repairing PDF document"), oldest
    // first; at most kMaxWarnings are kept.
    std::vector<std::string> TakeWarnings();

    static constexpr std::size_t kMaxWarnings = 64;

  private:
    static void OnWarning(void* self, const char* message);
    static void OnError(void* self, const char* message);

    fz_context* ctx_ = nullptr;
    std::vector<std::string> warnings_;
};

}  // namespace pdfhost::engine
