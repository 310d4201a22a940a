// The extension tables pdfhost offers itself: the outside browser and text recognition.

#include <memory>

#include "engine/ocr_recognizer.h"
#include "host_test_support.h"
#include "script_lines.h"
#include "wide_text.h"

namespace pdfhost::testing {
namespace {

using hostops::ExtOp;
using ::testing::HasSubstr;

class ExtensionTablesTest : public HostFixture {
  protected:
    ExtensionTablesTest() { app_.LoadPlugins(); }

    Scripted script_{app_};
};

TEST_F(ExtensionTablesTest, AnAddressOpensOutsideAndHeadlessOnlyPrintsIt) {
    const auto open = [](auto... args) { return CallExt<ExtOp::BrowserExtOpenUrl>(args...); };
    HostBrowserTabRecord record;
    void* tab = nullptr;
    ::testing::internal::CaptureStderr();
    EXPECT_EQ(open(L"https://example.com/help?page=2", 0, 0, &record, &tab), 1);
    const std::string printed = ::testing::internal::GetCapturedStderr();
    EXPECT_NE(tab, nullptr);
    EXPECT_THAT(printed, HasSubstr("pdfhost: open https://example.com/help?page=2"));

    void* none = nullptr;
    EXPECT_EQ(open(L"", 0, 0, &record, &none), 0);
    EXPECT_EQ(open(L"http://[broken", 0, 0, &record, &none), 0);
    EXPECT_EQ(none, nullptr);
}

TEST_F(ExtensionTablesTest, TheRecognitionDialogIsAnsweredLikeOtherDialogs) {
    const auto show = [](auto... args) { return CallExt<ExtOp::OcrShowDialog>(args...); };
    std::vector<std::wstring> confirmed;  // "<language> <flag>" for each confirmation
    HostOcrDialogCallback callback{&confirmed,
                                   [](void* client, const wchar_t* language, uint8_t flag) {
                                       static_cast<std::vector<std::wstring>*>(client)->push_back(
                                           std::wstring(language) + L" " + std::to_wstring(flag));
                                   }};
    HostOcrOptions options{L"English", 1};
    const HostWindow window = Call<HostAppGetMainWindow>();

    app_.Answers().Queue("ocr", true);
    EXPECT_EQ(show(window, &options, &callback), 1);
    EXPECT_EQ(confirmed, std::vector<std::wstring>{L"English 1"});

    app_.Answers().Queue("ocr", false);
    EXPECT_EQ(show(window, &options, &callback), 0);
    EXPECT_EQ(show(window, &options, &callback), 0);
    EXPECT_EQ(confirmed.size(), 1u);
    EXPECT_EQ(script_.TakeTexts(),
              (std::vector<std::string>{R"({"answer":true,"dialog":"ocr","language":"English"})",
                                        R"({"answer":false,"dialog":"ocr","language":"English"})",
                                        R"({"answer":null,"dialog":"ocr","language":"English"})",
                                        R"({"unanswered":"ocr"})"}));
}

TEST_F(ExtensionTablesTest, RecognitionMakesAScannedPageSearchable) {
    if (!engine::OcrRecognizer::FindDataFolder("eng").has_value())
        GTEST_SKIP() << "no English recognition data installed";
    // A page that shows its text only as a picture.
    engine::Context context;
    engine::PageDescription typed;
    typed.Add(engine::TextItem{.x = 72, .y = 700, .size = 24, .text = "ACCOUNT 55120 CLOSED"});
    auto picture = std::make_shared<engine::RgbImage>(
        engine::PdfFactory(context).Build(engine::PdfDescription{.pages = {typed}}).Render(0, 150));
    engine::PageDescription scan;
    scan.Add(engine::ImageItem{.placement = {0, 0, 612, 792}, .picture = std::move(picture)});
    const std::string path = WritePdf(files_, "scan.pdf", engine::PdfDescription{.pages = {scan}});
    const HostDoc doc = app_.OpenDocument(path).document->Handle();

    const auto recognize = [](auto... args) { return CallExt<ExtOp::OcrRecognizePage>(args...); };
    HostOcrOptions options{L"English", 1};
    const NdxPage page = PageOf(doc, 0);
    EXPECT_EQ(recognize(page, &options, 0), 1);
    EXPECT_EQ(Call<HostDocIsModified>(doc), 1);
    // A page with text keeps it as it is: a second run doubles nothing.
    EXPECT_EQ(recognize(page, &options, 0), 1);
    EXPECT_EQ(recognize(nullptr, &options, 0), 0);

    const NdxDoc pdf = Call<HostDocGetPdfDoc>(doc);
    const HostStringArray lines = Call<HostStringArrayNew>();
    Call<NDXPageGetTextLines>(lines, pdf, Call<NDXDocGetPage>(pdf, 0), 10, 15);
    ASSERT_EQ(Call<HostStringArrayCount>(lines), 1);
    EXPECT_EQ(ReadWide([&](HostWideString line) { Call<HostStringArrayGet>(lines, 0, line); }),
              L"ACCOUNT 55120 CLOSED");
    Call<HostStringArrayDestroy>(lines);
}

}  // namespace
}  // namespace pdfhost::testing
