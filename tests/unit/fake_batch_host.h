// FakeBatchHost: a FakeHost whose files can be opened hidden, read, saved under another name and
// checked by the security handler, as a batch run needs.
#pragma once

#include <map>
#include <memory>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "fake_host.h"

class FakeBatchHost : public FakeHost {
  public:
    // The files on the host's disk, by path; a missing path opens nothing.
    std::map<std::wstring, FakeDoc> files;
    std::set<std::wstring> unreadable;       // the reader refuses these
    std::set<std::wstring> securityRefuses;  // the security handler refuses changes
    std::vector<std::wstring> hiddenOpens;   // paths opened hidden, in order
    std::vector<std::wstring> closes;        // paths of closed documents, in order
    std::vector<std::pair<std::wstring, std::wstring>> savedAs;  // (document path, target)
    std::vector<int> gotoPages;
    std::vector<std::pair<std::wstring, int>> messageBoxes;  // (text, buttons)
    int liveHidden = 0;
    int liveReaders = 0;
    int liveHandlers = 0;

    int HostMessageBox(const wchar_t* text, int buttons, const wchar_t*, int*,
                       HostWindow) override {
        messageBoxes.emplace_back(text, buttons);
        return 1;
    }
    HostWindow HostAppGetMainWindow() override { return reinterpret_cast<HostWindow>(0x77); }
    HostDoc HostDocOpenHidden(const wchar_t* path, const HostOpenHiddenOptions* options) override;
    void HostDocClose(HostDoc doc, int, int, int) override;
    int HostDocGetPermission(HostDoc doc, uint32_t bit) override {
        return (Doc(doc).permissions & bit) != 0 ? 1 : 0;
    }
    int HostDocGetPageCount(HostDoc doc) override {
        return static_cast<int>(Doc(doc).pages.size());
    }
    NdxObject NDXDocGetRoot(NdxDoc doc) override { return reinterpret_cast<NdxObject>(doc); }
    NdxObject NDXDictGet(NdxObject dict, const char* key) override;
    HostReader HostReaderCreate() override;
    int HostReaderOpen(HostReader reader, const wchar_t* path, int flags) override;
    void HostReaderDestroy(HostReader) override { --liveReaders; }
    HostSecurityHandler HostSecurityHandlerCreate() override;
    int HostSecurityHandlerCheck(HostSecurityHandler, NdxDoc doc, int) override;
    void HostSecurityHandlerDestroy(HostSecurityHandler) override { --liveHandlers; }
    int HostDocSaveAs(HostDoc doc, const wchar_t* path, int a, int b,
                      const HostSaveAsOptions* options) override;
    HostDocView HostDocGetView(HostDoc doc) override { return reinterpret_cast<HostDocView>(doc); }
    HostPageView HostDocViewGetCurrentPageView(HostDocView view) override {
        return HostDocGetPageView(reinterpret_cast<HostDoc>(view), 0);
    }
    void HostDocViewGotoPage(HostDocView, int pageIndex) override {
        gotoPages.push_back(pageIndex);
    }

  private:
    std::vector<std::unique_ptr<FakeDoc>> hidden_;
    int readerCount_ = 0;
};
