#include "host_test_support.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <cstdlib>
#include <fstream>
#include <iterator>

#include "wide_text.h"

namespace pdfhost::testing {

TempFolder::TempFolder() {
    std::string pattern = (std::filesystem::temp_directory_path() / "pdfhost-test-XXXXXX").string();
    if (mkdtemp(pattern.data()) == nullptr)
        throw std::runtime_error("mkdtemp failed");
    path_ = pattern;
}

TempFolder::~TempFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
}

std::string WritePdf(const TempFolder& folder, const std::string& name,
                     const engine::PdfDescription& layout) {
    engine::Context context;
    const std::string path = (folder / name).string();
    engine::PdfFactory(context).Write(layout, path);
    return path;
}

engine::PdfDescription ThreePages() {
    return engine::PdfDescription{.pages = {engine::PageDescription::TextLines({"first page"}),
                                            engine::PageDescription::TextLines({"second page"}),
                                            engine::PageDescription::TextLines({"third page"})}};
}

std::wstring WideText(HostWideString text) {
    const wchar_t* data = Call<HostWideStringData>(text);
    return data != nullptr ? data : L"";
}

std::string ByteText(HostByteString text) {
    const char* data = Call<HostByteStringData>(text);
    const int length = Call<HostByteStringGetLength>(text);
    return data != nullptr ? std::string(data, static_cast<std::size_t>(length)) : "";
}

std::vector<float> Corners(const NdxRect& rect) {
    return {rect.left, rect.bottom, rect.right, rect.top};
}

NdxPage PageOf(HostDoc doc, int index) {
    return Call<HostPageViewGetPage>(Call<HostDocGetPageView>(doc, index));
}

NdxPage LoadPage(NdxDoc pdf, int index, bool parse) {
    const NdxPage page = Call<NDXPageNew>();
    Call<NDXPageLoad>(page, pdf, Call<NDXDocGetPage>(pdf, index), 0);
    if (parse)
        Call<NDXPageParse>(page, nullptr);
    return page;
}

HostDoc OpenQuietly(const std::string& path, bool readOnly, bool keepHidden) {
    HostOpenHiddenOptions options{};
    options.readOnly = readOnly ? 1 : 0;
    options.quiet = 1;
    options.keepHidden = keepHidden ? 1 : 0;
    return Call<HostDocOpenHidden>(WideOf(path).c_str(), &options);
}

void SelectRects(const HostDocument& document, int page, const std::vector<NdxRect>& rects) {
    const NdxRectArray array = Call<NDXRectArrayNew>();
    for (const NdxRect& r : rects)
        Call<NDXRectArrayAdd>(array, r.left, r.bottom, r.right, r.top);
    Call<HostTextSelectToolSelectRects>(Call<HostDocGetTextSelectTool>(document.Handle()),
                                        Call<HostDocGetPageView>(document.Handle(), page), array);
    Call<NDXRectArrayDestroy>(array);
}

std::string FileBytes(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

::testing::Matcher<std::string> HoldsWords(const std::vector<std::string>& kept,
                                           const std::vector<std::string>& gone) {
    std::vector<::testing::Matcher<std::string>> all;
    for (const std::string& word : kept)
        all.push_back(::testing::HasSubstr(word));
    for (const std::string& word : gone)
        all.push_back(::testing::Not(::testing::HasSubstr(word)));
    return ::testing::AllOfArray(all);
}

HostFixture::HostFixture() : app_(Options()) {}

HostDocument& HostFixture::OpenPath(const std::string& path, bool shown) {
    const HostApp::OpenResult opened =
        shown ? app_.OpenDocument(path) : app_.OpenHidden(path, "", true);
    if (opened.document == nullptr)
        throw std::runtime_error(opened.error);
    return *opened.document;
}

HostDocument& HostFixture::Open(const engine::PdfDescription& layout, bool shown) {
    return OpenPath(WritePdf(files_, "doc" + std::to_string(++written_) + ".pdf", layout), shown);
}

HostOptions OptionsOn(const std::filesystem::path& profile, bool headless) {
    HostOptions options;
    options.profile = profile;
    options.headless = headless;
    return options;
}

HostOptions HostFixture::Options() const {
    return OptionsOn(profile_.Path());
}

bool ProcessEventsUntil(const std::function<bool()>& done, int milliseconds) {
    QElapsedTimer clock;
    clock.start();
    while (!done()) {
        if (clock.elapsed() > milliseconds)
            return false;
        QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
    }
    return true;
}

}  // namespace pdfhost::testing

// Fontconfig, loaded by Qt when a window lays out text, keeps a cache allocation for the life of
// the process; the leak checker of sanitizer builds is told to ignore it.
extern "C" __attribute__((visibility("default"), used)) const char* __lsan_default_suppressions() {
    return "leak:libfontconfig.so\n";
}
