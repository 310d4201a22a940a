// Host strings, containers, resources and extension tables through the host's tables.
#include "host_test_support.h"

namespace pdfhost::testing {
namespace {

class ValueTables : public HostFixture {};

TEST_F(ValueTables, WideStringsHoldTextAndCompare) {
    HostWideString text = Call<HostWideStringNew>();
    HostWideString tail = Call<HostWideStringNew>();
    ASSERT_NE(text, nullptr);
    EXPECT_EQ(Call<HostWideStringGetLength>(text), 0);
    EXPECT_EQ(WideText(text), L"");

    Call<HostWideStringSet>(text, L"en-");
    Call<HostWideStringSet>(tail, L"US");
    Call<HostWideStringAppend>(text, tail);
    EXPECT_EQ(WideText(text), L"en-US");
    EXPECT_EQ(Call<HostWideStringCompareText>(text, L"en-US"), 0);
    EXPECT_LT(Call<HostWideStringCompareText>(text, L"en-USA"), 0);
    EXPECT_GT(Call<HostWideStringCompareText>(text, L"de-DE"), 0);

    Call<HostWideStringAppend>(text, text);
    EXPECT_EQ(WideText(text), L"en-USen-US");
    Call<HostWideStringAppendText>(text, L" \u00e9\U0001F600");
    EXPECT_EQ(Call<HostWideStringGetLength>(text), 13);
    Call<HostWideStringAppendText>(text, nullptr);
    Call<HostWideStringSet>(tail, nullptr);
    EXPECT_EQ(WideText(tail), L"");
    Call<HostWideStringClear>(text);
    EXPECT_EQ(WideText(text), L"");

    Call<HostWideStringDelete>(text);
    Call<HostWideStringDelete>(tail);
}

TEST_F(ValueTables, ByteStringsKeepBytesAndConvertFromUtf8) {
    HostByteString bytes = Call<HostByteStringNew>();
    HostByteString other = Call<HostByteStringNew>();
    EXPECT_EQ(Call<HostByteStringIsEmpty>(bytes), 1);
    EXPECT_EQ(Call<HostByteStringEquals>(bytes, other), 1);

    Call<HostByteStringSet>(bytes, "Redact");
    Call<HostByteStringSet>(other, "Red");
    EXPECT_EQ(Call<HostByteStringEquals>(bytes, other), 0);
    Call<HostByteStringAppendText>(other, "act");
    EXPECT_EQ(Call<HostByteStringEquals>(bytes, other), 1);
    Call<HostByteStringAppend>(bytes, other);
    EXPECT_EQ(ByteText(bytes), "RedactRedact");
    EXPECT_EQ(Call<HostByteStringIsEmpty>(bytes), 0);

    Call<HostByteStringSet>(bytes, "caf\xc3\xa9");
    EXPECT_EQ(ReadWide([&](HostWideString wide) { Call<HostByteStringToWide>(bytes, wide); }),
              L"caf\u00e9");

    for (auto handle : {bytes, other})
        Call<HostByteStringDelete>(handle);
}

TEST_F(ValueTables, StaleAndForeignHandlesGiveNeutralResults) {
    HostWideString text = Call<HostWideStringNew>();
    Call<HostWideStringSet>(text, L"gone");
    Call<HostWideStringDelete>(text);
    Call<HostWideStringDelete>(text);  // twice: nothing happens
    EXPECT_EQ(Call<HostWideStringData>(text), nullptr);
    EXPECT_EQ(Call<HostWideStringGetLength>(text), 0);
    EXPECT_NE(Call<HostWideStringCompareText>(text, L""), 0);
    Call<HostWideStringSet>(text, L"x");
    EXPECT_EQ(Call<HostWideStringData>(nullptr), nullptr);

    // A byte string is no wide string, and a number is no handle.
    HostByteString bytes = Call<HostByteStringNew>();
    EXPECT_EQ(Call<HostWideStringData>(reinterpret_cast<HostWideString>(bytes)), nullptr);
    EXPECT_EQ(Call<HostByteStringData>(reinterpret_cast<HostByteString>(uintptr_t{12345})),
              nullptr);
    EXPECT_EQ(Call<HostByteStringIsEmpty>(nullptr), 0);
    Call<HostByteStringDelete>(bytes);
}

TEST_F(ValueTables, ArraysGrowAndAnswerNeutrallyOutOfRange) {
    HostPtrArray pointers = Call<HostPtrArrayNew>();
    int first = 0;
    int second = 0;
    Call<HostPtrArrayAdd>(pointers, &first);
    Call<HostPtrArrayAdd>(pointers, &second);
    EXPECT_EQ(Call<HostPtrArrayGetCount>(pointers), 2);
    EXPECT_EQ(Call<HostPtrArrayGetAt>(pointers, 1), &second);
    EXPECT_EQ(Call<HostPtrArrayGetAt>(pointers, 2), nullptr);
    EXPECT_EQ(Call<HostPtrArrayGetAt>(pointers, -1), nullptr);
    Call<HostPtrArrayDestroy>(pointers);
    EXPECT_EQ(Call<HostPtrArrayGetCount>(pointers), 0);

    NdxRectArray rects = Call<NDXRectArrayNew>();
    Call<NDXRectArrayAdd>(rects, 1.f, 2.f, 3.f, 4.f);
    EXPECT_EQ(Call<NDXRectArrayGetCount>(rects), 1);
    EXPECT_EQ(Corners(Call<NDXRectArrayGetAt>(rects, 0)), (std::vector<float>{1, 2, 3, 4}));
    EXPECT_EQ(Call<NDXRectArrayGetAt>(rects, 1).right, 0.f);
    Call<NDXRectArrayDestroy>(rects);

    HostStringArray strings = Call<HostStringArrayNew>();
    EXPECT_EQ(Call<HostStringArrayCount>(strings), 0);
    EXPECT_EQ(
        ReadWide([&](HostWideString out) { Call<HostStringArrayGet>(strings, 0, out); }, L"stale"),
        L"");
    Call<HostStringArrayDestroy>(strings);
}

TEST_F(ValueTables, ExtensionTablesAreFoundByNameAndVersion) {
    EXPECT_EQ(Call<HostExtensionFind>("sample", 7), nullptr);
    EXPECT_EQ(Call<HostExtensionFind>(nullptr, 0), nullptr);

    const HostFunction zero = reinterpret_cast<HostFunction>(+[] { return 0; });
    const HostFunction one = reinterpret_cast<HostFunction>(+[] { return 1; });
    const HostExtTable table = app_.Extensions().Add("sample", 7, {zero, one});
    EXPECT_EQ(Call<HostExtensionFind>("sample", 7), table);
    EXPECT_EQ(Call<HostExtensionFind>("sample", 6), nullptr);
    EXPECT_EQ(Call<HostExtensionGetFunction>(table, 1), one);
    EXPECT_EQ(Call<HostExtensionGetFunction>(table, 2), nullptr);
    EXPECT_EQ(Call<HostExtensionGetFunction>(nullptr, 0), nullptr);
}

TEST_F(ValueTables, ApplicationFactsComeFromTheOptions) {
    const std::filesystem::path userData(
        ReadWide([](HostWideString s) { Call<HostAppGetUserDataFolder>(s); }));
    EXPECT_EQ(userData, profile_.Path() / "userdata");
    EXPECT_TRUE(std::filesystem::is_directory(userData));
    EXPECT_EQ(ReadBytes([](HostByteString s) { Call<HostAppGetName>(s); }), "pdfhost");

    EXPECT_EQ(Call<HostResourcesGetLanguage>(), 0x0409);
    HostResources resources = Call<HostResourcesNew>(L"/some/module.tpi");
    EXPECT_NE(resources, nullptr);
    Call<HostResourcesDestroy>(resources);
}

}  // namespace
}  // namespace pdfhost::testing
