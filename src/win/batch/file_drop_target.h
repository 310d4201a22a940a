// The file list's drop target: it takes a drop of local files or of a mail program's attachments,
// unless the list is busy checking rows, and hands the files on.
#pragma once

#include <oleidl.h>

#include <atomic>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "batch/mail_attachment_drop.h"

struct FileDropHandlers {
    std::function<bool()> busy;
    std::function<void(const std::vector<std::wstring>&)> addPaths;
    std::function<void(const std::vector<DroppedAttachment>&)> addAttachments;
};

class FileDropTarget final : public IDropTarget {
  public:
    // A new target with one reference, which the caller owns.
    FileDropTarget(FileDropHandlers handlers, std::filesystem::path tempFolder)
        : handlers_(std::move(handlers)), tempFolder_(std::move(tempFolder)) {}

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override;
    ULONG STDMETHODCALLTYPE AddRef() override { return ++references_; }
    ULONG STDMETHODCALLTYPE Release() override;

    HRESULT STDMETHODCALLTYPE DragEnter(IDataObject* data, DWORD keys, POINTL point,
                                        DWORD* effect) override;
    HRESULT STDMETHODCALLTYPE DragOver(DWORD keys, POINTL point, DWORD* effect) override;
    HRESULT STDMETHODCALLTYPE DragLeave() override { return S_OK; }
    HRESULT STDMETHODCALLTYPE Drop(IDataObject* data, DWORD keys, POINTL point,
                                   DWORD* effect) override;

  private:
    ~FileDropTarget() = default;
    bool Takes(IDataObject* data) const;

    FileDropHandlers handlers_;
    std::filesystem::path tempFolder_;
    bool takes_ = false;  // what DragEnter decided for the drag under way
    std::atomic<ULONG> references_{1};
};
