#include "download_status.h"

HRESULT STDMETHODCALLTYPE DownloadStatus::QueryInterface(REFIID iid, void** object) {
    if (object == nullptr)
        return E_POINTER;
    if (IsEqualIID(iid, IID_IUnknown) || IsEqualIID(iid, IID_IBindStatusCallback)) {
        *object = static_cast<IBindStatusCallback*>(this);
        return S_OK;
    }
    if (IsEqualIID(iid, IID_IHttpNegotiate)) {
        *object = static_cast<IHttpNegotiate*>(this);
        return S_OK;
    }
    *object = nullptr;
    return E_NOINTERFACE;
}

HRESULT STDMETHODCALLTYPE DownloadStatus::OnProgress(ULONG progress, ULONG maximum, ULONG status,
                                                     LPCWSTR) {
    switch (status) {
        case BINDSTATUS_BEGINDOWNLOADDATA:
        case BINDSTATUS_DOWNLOADINGDATA:
        case BINDSTATUS_ENDDOWNLOADDATA:
            progress_.OnProgress(progress, maximum, static_cast<int>(status));
            break;
        default:
            break;
    }
    return S_OK;
}

HRESULT STDMETHODCALLTYPE DownloadStatus::BeginningTransaction(LPCWSTR, LPCWSTR, DWORD,
                                                               LPWSTR* additionalHeaders) {
    if (additionalHeaders != nullptr)
        *additionalHeaders = nullptr;
    return S_OK;
}

HRESULT STDMETHODCALLTYPE DownloadStatus::OnResponse(DWORD responseCode, LPCWSTR, LPCWSTR,
                                                     LPWSTR* additionalHeaders) {
    if (additionalHeaders != nullptr)
        *additionalHeaders = nullptr;
    responseCode_ = responseCode;
    return S_OK;
}
