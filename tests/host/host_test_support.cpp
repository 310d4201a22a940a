#include "host_test_support.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <cstdlib>

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
    const wchar_t* data = CallHost<hostops::Op::HostWideStringData>(text);
    return data != nullptr ? data : L"";
}

std::string ByteText(HostByteString text) {
    const char* data = CallHost<hostops::Op::HostByteStringData>(text);
    const int length = CallHost<hostops::Op::HostByteStringGetLength>(text);
    return data != nullptr ? std::string(data, static_cast<std::size_t>(length)) : "";
}

HostFixture::HostFixture() : app_(Options()) {}

HostOptions HostFixture::Options() const {
    HostOptions options;
    options.profile = profile_.Path();
    return options;
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
