// Shared helpers of the host tests: temporary folders, test PDFs, and calls into the host's
// tables through the same lookup a plug-in uses.
#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <functional>
#include <string>

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

// Runs the event loop until `done` holds or `milliseconds` have passed; whether it held.
bool ProcessEventsUntil(const std::function<bool()>& done, int milliseconds = 5000);

// Calls a host operation through the ABI lookup, as plug-in `pluginId` would.
template <hostops::Op op, typename... Args>
auto CallHost(Args... args) {
    using Traits = hostops::OpTraits<op>;
    HostFunction found =
        TableManager::Abi()->lookup(Traits::category, Traits::selector, /*pluginId=*/0);
    EXPECT_NE(found, nullptr) << Traits::name << " is not registered";
    return reinterpret_cast<typename Traits::Fn*>(found)(args...);
}

// The text of a host wide string, read through the tables.
std::wstring WideText(HostWideString text);
std::string ByteText(HostByteString text);

// A headless host on a fresh profile folder (kept in the fixture).
class HostFixture : public ::testing::Test {
  protected:
    HostFixture();
    HostOptions Options() const;

    TempFolder profile_;
    TempFolder files_;
    HostApp app_;
};

}  // namespace pdfhost::testing
