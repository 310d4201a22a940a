#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <stdexcept>

#include "engine/context.h"
#include "engine/error.h"
#include "engine/mupdf_call.h"
#include "engine/mupdf_types.h"

namespace pdfhost::engine {
namespace {

using ::testing::HasSubstr;
using ::testing::ThrowsMessage;

TEST(MupdfCallTest, MupdfErrorsBecomeExceptionsAndTheContextStaysUsable) {
    Context context;
    fz_context* ctx = context.get();
    // Far more failures than MuPDF's error stack is deep: each one must unwind it fully.
    for (int i = 0; i < 1000; ++i) {
        EXPECT_THAT(
            [&] {
                CallMupdf(ctx, "opening a missing file",
                          [&] { return pdf_open_document(ctx, "/nonexistent/x.pdf"); });
            },
            ThrowsMessage<Error>(HasSubstr("opening a missing file: ")));
    }
    EXPECT_EQ(CallMupdf(ctx, "arithmetic", [] { return 6 * 7; }), 42);
    DocumentPtr doc(ctx, CallMupdf(ctx, "create", [&] { return pdf_create_document(ctx); }));
    EXPECT_EQ(CallMupdf(ctx, "count", [&] { return pdf_count_pages(ctx, doc.get()); }), 0);
}

TEST(MupdfCallTest, CppExceptionsPassThroughUnchanged) {
    Context context;
    EXPECT_THAT([&] { CallMupdf(context.get(), "work", [] { throw std::out_of_range("mine"); }); },
                ThrowsMessage<std::out_of_range>("mine"));
    const auto named = [] { return 1; };
    EXPECT_EQ(CallMupdf(context.get(), "after", named), 1);
}

}  // namespace
}  // namespace pdfhost::engine
