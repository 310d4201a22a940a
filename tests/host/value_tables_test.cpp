// Host strings, containers, resources and extension tables through the host's tables.
#include "host_test_support.h"

namespace pdfhost {
namespace {

using hostops::Op;
using testing::ByteText;
using testing::CallHost;
using testing::WideText;

class ValueTables : public testing::HostFixture {};

TEST_F(ValueTables, WideStringsHoldTextAndCompare) {
    HostWideString text = CallHost<Op::HostWideStringNew>();
    HostWideString tail = CallHost<Op::HostWideStringNew>();
    ASSERT_NE(text, nullptr);
    EXPECT_EQ(CallHost<Op::HostWideStringGetLength>(text), 0);
    EXPECT_EQ(WideText(text), L"");

    CallHost<Op::HostWideStringSet>(text, L"en-");
    CallHost<Op::HostWideStringSet>(tail, L"US");
    CallHost<Op::HostWideStringAppend>(text, tail);
    EXPECT_EQ(WideText(text), L"en-US");
    EXPECT_EQ(CallHost<Op::HostWideStringCompareText>(text, L"en-US"), 0);
    EXPECT_LT(CallHost<Op::HostWideStringCompareText>(text, L"en-USA"), 0);
    EXPECT_GT(CallHost<Op::HostWideStringCompareText>(text, L"de-DE"), 0);

    CallHost<Op::HostWideStringAppend>(text, text);
    EXPECT_EQ(WideText(text), L"en-USen-US");
    CallHost<Op::HostWideStringAppendText>(text, L" \u00e9\U0001F600");
    EXPECT_EQ(CallHost<Op::HostWideStringGetLength>(text), 13);
    CallHost<Op::HostWideStringAppendText>(text, nullptr);
    CallHost<Op::HostWideStringSet>(tail, nullptr);
    EXPECT_EQ(WideText(tail), L"");
    CallHost<Op::HostWideStringClear>(text);
    EXPECT_EQ(WideText(text), L"");

    CallHost<Op::HostWideStringDelete>(text);
    CallHost<Op::HostWideStringDelete>(tail);
}

TEST_F(ValueTables, ByteStringsKeepBytesAndConvertFromUtf8) {
    HostByteString bytes = CallHost<Op::HostByteStringNew>();
    HostByteString other = CallHost<Op::HostByteStringNew>();
    EXPECT_EQ(CallHost<Op::HostByteStringIsEmpty>(bytes), 1);
    EXPECT_EQ(CallHost<Op::HostByteStringEquals>(bytes, other), 1);

    CallHost<Op::HostByteStringSet>(bytes, "Redact");
    CallHost<Op::HostByteStringSet>(other, "Red");
    EXPECT_EQ(CallHost<Op::HostByteStringEquals>(bytes, other), 0);
    CallHost<Op::HostByteStringAppendText>(other, "act");
    EXPECT_EQ(CallHost<Op::HostByteStringEquals>(bytes, other), 1);
    CallHost<Op::HostByteStringAppend>(bytes, other);
    EXPECT_EQ(ByteText(bytes), "RedactRedact");
    EXPECT_EQ(CallHost<Op::HostByteStringIsEmpty>(bytes), 0);

    CallHost<Op::HostByteStringSet>(bytes, "caf\xc3\xa9");
    HostWideString wide = CallHost<Op::HostWideStringNew>();
    CallHost<Op::HostByteStringToWide>(bytes, wide);
    EXPECT_EQ(WideText(wide), L"caf\u00e9");

    for (auto handle : {bytes, other})
        CallHost<Op::HostByteStringDelete>(handle);
    CallHost<Op::HostWideStringDelete>(wide);
}

TEST_F(ValueTables, StaleAndForeignHandlesGiveNeutralResults) {
    HostWideString text = CallHost<Op::HostWideStringNew>();
    CallHost<Op::HostWideStringSet>(text, L"gone");
    CallHost<Op::HostWideStringDelete>(text);
    CallHost<Op::HostWideStringDelete>(text);  // twice: nothing happens
    EXPECT_EQ(CallHost<Op::HostWideStringData>(text), nullptr);
    EXPECT_EQ(CallHost<Op::HostWideStringGetLength>(text), 0);
    EXPECT_NE(CallHost<Op::HostWideStringCompareText>(text, L""), 0);
    CallHost<Op::HostWideStringSet>(text, L"x");
    EXPECT_EQ(CallHost<Op::HostWideStringData>(nullptr), nullptr);

    // A byte string is no wide string, and a number is no handle.
    HostByteString bytes = CallHost<Op::HostByteStringNew>();
    EXPECT_EQ(CallHost<Op::HostWideStringData>(reinterpret_cast<HostWideString>(bytes)), nullptr);
    EXPECT_EQ(CallHost<Op::HostByteStringData>(reinterpret_cast<HostByteString>(uintptr_t{12345})),
              nullptr);
    EXPECT_EQ(CallHost<Op::HostByteStringIsEmpty>(nullptr), 0);
    CallHost<Op::HostByteStringDelete>(bytes);
}

TEST_F(ValueTables, ArraysGrowAndAnswerNeutrallyOutOfRange) {
    HostPtrArray pointers = CallHost<Op::HostPtrArrayNew>();
    int first = 0;
    int second = 0;
    CallHost<Op::HostPtrArrayAdd>(pointers, &first);
    CallHost<Op::HostPtrArrayAdd>(pointers, &second);
    EXPECT_EQ(CallHost<Op::HostPtrArrayGetCount>(pointers), 2);
    EXPECT_EQ(CallHost<Op::HostPtrArrayGetAt>(pointers, 1), &second);
    EXPECT_EQ(CallHost<Op::HostPtrArrayGetAt>(pointers, 2), nullptr);
    EXPECT_EQ(CallHost<Op::HostPtrArrayGetAt>(pointers, -1), nullptr);
    CallHost<Op::HostPtrArrayDestroy>(pointers);
    EXPECT_EQ(CallHost<Op::HostPtrArrayGetCount>(pointers), 0);

    NdxRectArray rects = CallHost<Op::NDXRectArrayNew>();
    CallHost<Op::NDXRectArrayAdd>(rects, 1.f, 2.f, 3.f, 4.f);
    EXPECT_EQ(CallHost<Op::NDXRectArrayGetCount>(rects), 1);
    const NdxRect rect = CallHost<Op::NDXRectArrayGetAt>(rects, 0);
    EXPECT_EQ(std::vector<float>({rect.left, rect.bottom, rect.right, rect.top}),
              std::vector<float>({1.f, 2.f, 3.f, 4.f}));
    EXPECT_EQ(CallHost<Op::NDXRectArrayGetAt>(rects, 1).right, 0.f);
    CallHost<Op::NDXRectArrayDestroy>(rects);

    HostStringArray strings = CallHost<Op::HostStringArrayNew>();
    EXPECT_EQ(CallHost<Op::HostStringArrayCount>(strings), 0);
    HostWideString out = CallHost<Op::HostWideStringNew>();
    CallHost<Op::HostWideStringSet>(out, L"stale");
    CallHost<Op::HostStringArrayGet>(strings, 0, out);
    EXPECT_EQ(WideText(out), L"");
    CallHost<Op::HostStringArrayDestroy>(strings);
    CallHost<Op::HostWideStringDelete>(out);
}

TEST_F(ValueTables, ExtensionTablesAreFoundByNameAndVersion) {
    EXPECT_EQ(CallHost<Op::HostExtensionFind>("sample", 7), nullptr);
    EXPECT_EQ(CallHost<Op::HostExtensionFind>(nullptr, 0), nullptr);

    const HostFunction zero = reinterpret_cast<HostFunction>(+[] { return 0; });
    const HostFunction one = reinterpret_cast<HostFunction>(+[] { return 1; });
    const HostExtTable table = app_.Extensions().Add("sample", 7, {zero, one});
    EXPECT_EQ(CallHost<Op::HostExtensionFind>("sample", 7), table);
    EXPECT_EQ(CallHost<Op::HostExtensionFind>("sample", 6), nullptr);
    EXPECT_EQ(CallHost<Op::HostExtensionGetFunction>(table, 1), one);
    EXPECT_EQ(CallHost<Op::HostExtensionGetFunction>(table, 2), nullptr);
    EXPECT_EQ(CallHost<Op::HostExtensionGetFunction>(nullptr, 0), nullptr);
}

TEST_F(ValueTables, ApplicationFactsComeFromTheOptions) {
    HostWideString text = CallHost<Op::HostWideStringNew>();
    CallHost<Op::HostAppGetLanguage>(text);
    EXPECT_EQ(WideText(text), L"en-US");
    CallHost<Op::HostAppGetUserDataFolder>(text);
    const std::filesystem::path userData(WideText(text));
    EXPECT_EQ(userData, profile_.Path() / "userdata");
    EXPECT_TRUE(std::filesystem::is_directory(userData));
    CallHost<Op::HostWideStringDelete>(text);

    HostByteString name = CallHost<Op::HostByteStringNew>();
    CallHost<Op::HostAppGetName>(name);
    EXPECT_EQ(ByteText(name), "pdfhost");
    CallHost<Op::HostByteStringDelete>(name);

    EXPECT_EQ(CallHost<Op::HostResourcesGetLanguage>(), 0x0409);
    HostResources resources = CallHost<Op::HostResourcesNew>(L"/some/module.tpi");
    EXPECT_NE(resources, nullptr);
    CallHost<Op::HostResourcesDestroy>(resources);
}

}  // namespace
}  // namespace pdfhost
