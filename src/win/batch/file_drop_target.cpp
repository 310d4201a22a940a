#include "file_drop_target.h"

#include "dropped_data.h"

HRESULT STDMETHODCALLTYPE FileDropTarget::QueryInterface(REFIID iid, void** object) {
    if (object == nullptr)
        return E_POINTER;
    if (IsEqualIID(iid, IID_IUnknown) || IsEqualIID(iid, IID_IDropTarget)) {
        *object = static_cast<IDropTarget*>(this);
        AddRef();
        return S_OK;
    }
    *object = nullptr;
    return E_NOINTERFACE;
}

ULONG STDMETHODCALLTYPE FileDropTarget::Release() {
    const ULONG left = --references_;
    if (left == 0)
        delete this;
    return left;
}

bool FileDropTarget::Takes(IDataObject* data) const {
    if (data == nullptr || handlers_.busy())
        return false;
    return !DroppedFilePaths(*data).empty() || HasMailAttachments(*data);
}

HRESULT STDMETHODCALLTYPE FileDropTarget::DragEnter(IDataObject* data, DWORD, POINTL,
                                                    DWORD* effect) {
    takes_ = Takes(data);
    *effect = takes_ ? DROPEFFECT_COPY : DROPEFFECT_NONE;
    return S_OK;
}

HRESULT STDMETHODCALLTYPE FileDropTarget::DragOver(DWORD, POINTL, DWORD* effect) {
    *effect = takes_ && !handlers_.busy() ? DROPEFFECT_COPY : DROPEFFECT_NONE;
    return S_OK;
}

// Files dropped are added as named; a drop without files is a mail program's attachments.
HRESULT STDMETHODCALLTYPE FileDropTarget::Drop(IDataObject* data, DWORD, POINTL, DWORD* effect) {
    takes_ = false;
    *effect = DROPEFFECT_NONE;
    if (!Takes(data))
        return S_OK;
    *effect = DROPEFFECT_COPY;
    const std::vector<std::wstring> paths = DroppedFilePaths(*data);
    if (!paths.empty())
        handlers_.addPaths(paths);
    else
        handlers_.addAttachments(SaveMailAttachments(*data, tempFolder_));
    return S_OK;
}
