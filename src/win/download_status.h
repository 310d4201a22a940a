// The binding callback of a download: it hands the begin, data and end statuses to a
// DownloadProgress, keeps the HTTP status of the answer and answers everything else as not
// implemented. It lives on the stack for the download, so its reference count does nothing.
#pragma once

#include <urlmon.h>

#include "app/platform_services.h"

class DownloadStatus final : public IBindStatusCallback, public IHttpNegotiate {
  public:
    explicit DownloadStatus(DownloadProgress& progress) : progress_(progress) {}

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override;
    ULONG STDMETHODCALLTYPE AddRef() override { return 0; }
    ULONG STDMETHODCALLTYPE Release() override { return 0; }

    HRESULT STDMETHODCALLTYPE OnStartBinding(DWORD, IBinding*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetPriority(LONG*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE OnLowResource(DWORD) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE OnProgress(ULONG progress, ULONG maximum, ULONG status,
                                         LPCWSTR text) override;
    HRESULT STDMETHODCALLTYPE OnStopBinding(HRESULT, LPCWSTR) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetBindInfo(DWORD*, BINDINFO*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE OnDataAvailable(DWORD, DWORD, FORMATETC*, STGMEDIUM*) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE OnObjectAvailable(REFIID, IUnknown*) override { return E_NOTIMPL; }

    HRESULT STDMETHODCALLTYPE BeginningTransaction(LPCWSTR, LPCWSTR, DWORD,
                                                   LPWSTR* additionalHeaders) override;
    HRESULT STDMETHODCALLTYPE OnResponse(DWORD responseCode, LPCWSTR, LPCWSTR,
                                         LPWSTR* additionalHeaders) override;

    // The HTTP status of the answer; 0 before one came and for addresses other than http(s).
    DWORD ResponseCode() const { return responseCode_; }

  private:
    DownloadProgress& progress_;
    DWORD responseCode_ = 0;
};
