// Drops on the file list: local files, and a mail program's attachments served as storage or as
// memory, saved as ".msg" files and listed with their names as tips.
#include <gtest/gtest.h>
#include <windows.h>
// after windows.h, which they need
#include <commctrl.h>
#include <shlobj.h>

#include <filesystem>
#include <fstream>
#include <functional>
#include <map>

#include "batch/batch_control_ids.h"
#include "batch/batch_files_dialog.h"
#include "batch/file_drop_target.h"
#include "com_ptr.h"
#include "fake_batch_host.h"
#include "system_paths.h"
#include "win_handles.h"
#include "window_test_support.h"

namespace file_drop_test {
namespace {

using Serve = std::function<HRESULT(LONG index, STGMEDIUM& medium)>;

// A data object on the stack that serves the formats it was given.
class FakeDataObject final : public IDataObject {
  public:
    std::map<CLIPFORMAT, Serve> served;

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID, void**) override { return E_NOINTERFACE; }
    ULONG STDMETHODCALLTYPE AddRef() override { return 1; }
    ULONG STDMETHODCALLTYPE Release() override { return 1; }
    HRESULT STDMETHODCALLTYPE GetData(FORMATETC* format, STGMEDIUM* medium) override {
        const auto found = served.find(format->cfFormat);
        *medium = {};
        return found == served.end() ? DV_E_FORMATETC : found->second(format->lindex, *medium);
    }
    HRESULT STDMETHODCALLTYPE QueryGetData(FORMATETC* format) override {
        return served.contains(format->cfFormat) ? S_OK : DV_E_FORMATETC;
    }
    HRESULT STDMETHODCALLTYPE GetDataHere(FORMATETC*, STGMEDIUM*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetCanonicalFormatEtc(FORMATETC*, FORMATETC*) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE SetData(FORMATETC*, STGMEDIUM*, BOOL) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE EnumFormatEtc(DWORD, IEnumFORMATETC**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE DAdvise(FORMATETC*, DWORD, IAdviseSink*, DWORD*) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE DUnadvise(DWORD) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE EnumDAdvise(IEnumSTATDATA**) override { return E_NOTIMPL; }
};

CLIPFORMAT Format(const wchar_t* name) {
    return static_cast<CLIPFORMAT>(RegisterClipboardFormatW(name));
}

HGLOBAL GlobalOf(const std::string& bytes) {
    const HGLOBAL memory = GlobalAlloc(GHND, bytes.size());
    std::copy(bytes.begin(), bytes.end(), static_cast<char*>(GlobalLock(memory)));
    GlobalUnlock(memory);
    return memory;
}

Serve AsMemory(std::string bytes) {
    return [bytes](LONG, STGMEDIUM& medium) {
        medium.tymed = TYMED_HGLOBAL;
        medium.hGlobal = GlobalOf(bytes);
        return S_OK;
    };
}

// A compound file in memory with one stream "body" holding `text`, as a mail program serves an
// attachment; only the first attachment has contents.
Serve AsStorage(std::string text) {
    return [text](LONG index, STGMEDIUM& medium) {
        if (index != 0)
            return DV_E_LINDEX;
        ComPtr<ILockBytes> bytes;
        CreateILockBytesOnHGlobal(nullptr, TRUE, bytes.Put());
        IStorage* storage = nullptr;
        StgCreateDocfileOnILockBytes(
            bytes.Get(), STGM_CREATE | STGM_READWRITE | STGM_SHARE_EXCLUSIVE, 0, &storage);
        ComPtr<IStream> body;
        storage->CreateStream(L"body", STGM_CREATE | STGM_WRITE | STGM_SHARE_EXCLUSIVE, 0, 0,
                              body.Put());
        body->Write(text.data(), static_cast<ULONG>(text.size()), nullptr);
        storage->Commit(STGC_DEFAULT);
        medium.tymed = TYMED_ISTORAGE;
        medium.pstg = storage;
        return S_OK;
    };
}

// A group descriptor naming the attachments.
std::string DescriptorOf(const std::vector<std::wstring>& names) {
    std::string block(4 + 592 * names.size(), '\0');
    block[0] = static_cast<char>(names.size());
    for (std::size_t i = 0; i < names.size(); ++i) {
        for (std::size_t c = 0; c < names[i].size(); ++c)
            block[4 + 592 * i + 72 + 2 * c] = static_cast<char>(names[i][c]);
    }
    return block;
}

// The text of the "body" stream of the compound file at `path`; empty when it has none.
std::string StoredBody(const std::filesystem::path& path) {
    ComPtr<IStorage> storage;
    ComPtr<IStream> body;
    if (FAILED(StgOpenStorage(path.wstring().c_str(), nullptr, STGM_READ | STGM_SHARE_EXCLUSIVE,
                              nullptr, 0, storage.Put())) ||
        FAILED(
            storage->OpenStream(L"body", nullptr, STGM_READ | STGM_SHARE_EXCLUSIVE, 0, body.Put())))
        return {};
    char text[256] = {};
    ULONG read = 0;
    body->Read(text, sizeof text, &read);
    return std::string(text, read);
}

std::string FileBytes(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

class FileDropTest : public testing::Test {
  protected:
    FileDropTest() { std::filesystem::create_directories(temp); }
    ~FileDropTest() override {
        std::error_code ignored;
        std::filesystem::remove_all(temp, ignored);
    }

    const ComApartment apartment;
    const std::filesystem::path temp = std::filesystem::path(SystemTempFolder()) /
                                       (L"file-drop-" + std::to_wstring(GetCurrentProcessId()));
};

TEST_F(FileDropTest, TheTargetTakesFilesOrAttachmentsUnlessTheListIsBusy) {
    const std::string descriptor = DescriptorOf({L"Invoice.pdf", L"Notes.pdf"});
    const struct {
        const char* what;
        bool busy;
        std::vector<std::wstring> files;
        Serve contents;
        std::vector<std::string> saved;  // the attachments' files' contents
    } cases[] = {
        {"files", false, {L"C:\\in\\a.pdf", L"C:\\in\\b.pdf"}, nullptr, {}},
        {"busy", true, {L"C:\\in\\a.pdf"}, nullptr, {}},
        {"storage", false, {}, AsStorage("mail body"), {"mail body"}},
        {"memory", false, {}, AsMemory("flat"), {"flat", "flat"}},
        {"nothing", false, {}, nullptr, {}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        std::vector<std::wstring> paths;
        std::vector<DroppedAttachment> attachments;
        const ComPtr<IDropTarget> target(
            new FileDropTarget({[&] { return c.busy; }, [&](const auto& added) { paths = added; },
                                [&](const auto& added) { attachments = added; }},
                               temp));
        FakeDataObject data;
        if (!c.files.empty()) {
            data.served[CF_HDROP] = [&](LONG, STGMEDIUM& medium) {
                medium.tymed = TYMED_HGLOBAL;
                medium.hGlobal = FileDropOf(c.files);
                return S_OK;
            };
        }
        if (c.contents) {
            data.served[Format(L"FileGroupDescriptorW")] = AsMemory(descriptor);
            data.served[Format(L"FileContents")] = c.contents;
        }
        const bool takes = !c.busy && (!c.files.empty() || c.contents);
        DWORD effect = 0;
        target->DragEnter(&data, 0, {}, &effect);
        EXPECT_EQ(effect, takes ? DROPEFFECT_COPY : DROPEFFECT_NONE);
        target->Drop(&data, 0, {}, &effect);
        EXPECT_EQ(effect, takes ? DROPEFFECT_COPY : DROPEFFECT_NONE);
        EXPECT_EQ(paths, c.busy ? std::vector<std::wstring>{} : c.files);
        ASSERT_EQ(attachments.size(), c.saved.size());
        for (std::size_t i = 0; i < c.saved.size(); ++i) {
            const std::filesystem::path& file = attachments[i].file;
            EXPECT_EQ(attachments[i].name, i == 0 ? L"Invoice.pdf" : L"Notes.pdf");
            EXPECT_EQ(file.parent_path(), temp);
            EXPECT_EQ(file.extension(), L".msg");
            EXPECT_EQ(std::string(c.what) == "storage" ? StoredBody(file) : FileBytes(file),
                      c.saved[i]);
        }
    }
}

TEST_F(FileDropTest, AnAttachmentIsListedWithItsNameAsTipAndLeftOutWhenTheHostCantOpenIt) {
    const std::filesystem::path saved = temp / L"MSG0001.msg";
    std::ofstream(saved) << "compound file";
    FakeBatchHost host;
    BatchFilesDialog dialog(host);
    const HWND window = dialog.Create(nullptr);
    dialog.AddAttachments({{saved, L"Invoice.pdf"}});
    ASSERT_EQ(dialog.Rows().size(), 1u);
    EXPECT_EQ(dialog.Rows()[0].texts[kNameColumn], L"MSG0001.msg");
    EXPECT_EQ(dialog.Rows()[0].errorKey, "IDS_STR_PARSEERROR");
    wchar_t tip[64] = {};
    NMLVGETINFOTIPW ask{};
    ask.hdr = {GetDlgItem(window, kFileListView), kFileListView, LVN_GETINFOTIPW};
    ask.pszText = tip;
    ask.cchTextMax = 64;
    SendMessageW(window, WM_NOTIFY, kFileListView, reinterpret_cast<LPARAM>(&ask));
    EXPECT_STREQ(tip, L"Invoice.pdf");
}

}  // namespace
}  // namespace file_drop_test
