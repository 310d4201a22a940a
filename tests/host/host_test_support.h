// Shared helpers of the host tests: temporary folders, test PDFs, calls into the host's tables
// through the same lookup a plug-in uses, and the host strings and rectangles they fill.
#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "engine/context.h"
#include "engine/pdf_factory.h"
#include "host_app.h"
#include "table_manager.h"

namespace pdfhost::testing {

// A fresh folder, removed with everything in it at the end of the test.
class TempFolder {
  public:
    TempFolder();
    ~TempFolder();
    TempFolder(const TempFolder&) = delete;
    TempFolder& operator=(const TempFolder&) = delete;
    const std::filesystem::path& Path() const { return path_; }
    std::filesystem::path operator/(const std::string& name) const { return path_ / name; }

  private:
    std::filesystem::path path_;
};

// Writes a PDF described by `layout` into `folder` and gives its path.
std::string WritePdf(const TempFolder& folder, const std::string& name,
                     const engine::PdfDescription& layout);
// Three pages of text.
engine::PdfDescription ThreePages();

// Options of a host on `profile`, headless unless told otherwise.
HostOptions OptionsOn(const std::filesystem::path& profile, bool headless = true);

// Runs the event loop until `done` holds or `milliseconds` have passed; whether it held.
bool ProcessEventsUntil(const std::function<bool()>& done, int milliseconds = 5000);

using enum hostops::Op;

// Calls a host operation through the ABI lookup, as plug-in 0 would.
template <hostops::Op op, typename... Args>
auto Call(Args... args) {
    using Traits = hostops::OpTraits<op>;
    HostFunction found =
        TableManager::Abi()->lookup(Traits::category, Traits::selector, /*pluginId=*/0);
    EXPECT_NE(found, nullptr) << Traits::name << " is not registered";
    return reinterpret_cast<typename Traits::Fn*>(found)(args...);
}

// Stores `hook`, a lambda without captures, in word `key` of a callback record as the plain
// function it converts to.
template <typename Record, typename Hook>
void SetHook(Record& record, std::size_t key, Hook hook) {
    record.setWord(key, reinterpret_cast<void*>(+hook));
}

// The text of a host wide string, read through the tables.
std::wstring WideText(HostWideString text);
std::string ByteText(HostByteString text);

// What `fill` writes into a fresh host wide string (holding `start` before), then deleted.
template <typename Fill>
std::wstring ReadWide(Fill&& fill, const wchar_t* start = nullptr) {
    const HostWideString out = Call<HostWideStringNew>();
    if (start != nullptr)
        Call<HostWideStringSet>(out, start);
    fill(out);
    std::wstring text = WideText(out);
    Call<HostWideStringDelete>(out);
    return text;
}
// The same for a host byte string.
template <typename Fill>
std::string ReadBytes(Fill&& fill, const char* start = nullptr) {
    const HostByteString out = Call<HostByteStringNew>();
    if (start != nullptr)
        Call<HostByteStringSet>(out, start);
    fill(out);
    std::string text = ByteText(out);
    Call<HostByteStringDelete>(out);
    return text;
}

// The four numbers of a rectangle: left, bottom, right, top.
std::vector<float> Corners(const NdxRect& rect);
// The page that page view `index` of `doc` shows.
NdxPage PageOf(HostDoc doc, int index);
// A page of the caller's own over page `index` of `pdf`, parsed unless told otherwise.
NdxPage LoadPage(NdxDoc pdf, int index, bool parse = true);
// Opens `path` as a hidden document, quietly.
HostDoc OpenQuietly(const std::string& path, bool readOnly = false, bool keepHidden = false);
// Calls function `op` of an extension table as a plug-in does: found by name, version and index.
template <hostops::ExtOp op, typename... Args>
auto CallExt(Args... args) {
    using Traits = hostops::ExtOpTraits<op>;
    const hostops::ExtTableInfo& info = hostops::InfoOf(Traits::table);
    const HostFunction fn = Call<HostExtensionGetFunction>(
        Call<HostExtensionFind>(info.name, info.version), Traits::index);
    EXPECT_NE(fn, nullptr) << Traits::name;
    return reinterpret_cast<typename Traits::Fn*>(fn)(args...);
}
// Selects `rects` on page `page` of `document` through its text select tool.
void SelectRects(const HostDocument& document, int page, const std::vector<NdxRect>& rects);
// The whole content of a file.
std::string FileBytes(const std::string& path);

// Matches a text that holds every one of `kept` and none of `gone`.
::testing::Matcher<std::string> HoldsWords(const std::vector<std::string>& kept,
                                           const std::vector<std::string>& gone);

// A headless host on a fresh profile folder (kept in the fixture).
class HostFixture : public ::testing::Test {
  protected:
    HostFixture();
    HostOptions Options() const;

    // Opens `path` in a tab (or hidden and quiet); a failure fails the test.
    HostDocument& OpenPath(const std::string& path, bool shown = true);
    // Writes `layout` into a file of its own and opens it.
    HostDocument& Open(const engine::PdfDescription& layout, bool shown = true);

    TempFolder profile_;
    TempFolder files_;
    HostApp app_;
    int written_ = 0;
};

}  // namespace pdfhost::testing
