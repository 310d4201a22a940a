// Bases for fakes of the browser runtime's interfaces: every member answers E_NOTIMPL, so that a
// fake overrides only what the browser window calls.
#pragma once

#include "webview2_interfaces.h"

struct UnimplementedCoreWebView2_2 : ICoreWebView2_2 {
    HRESULT STDMETHODCALLTYPE get_Settings(ICoreWebView2Settings**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE get_Source(LPWSTR*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE Navigate(LPCWSTR) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE NavigateToString(LPCWSTR) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE add_NavigationStarting(ICoreWebView2NavigationStartingEventHandler*,
                                                     EventRegistrationToken*) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE remove_NavigationStarting(EventRegistrationToken) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE add_ContentLoading(ICoreWebView2ContentLoadingEventHandler*,
                                                 EventRegistrationToken*) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE remove_ContentLoading(EventRegistrationToken) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE add_SourceChanged(ICoreWebView2SourceChangedEventHandler*,
                                                EventRegistrationToken*) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE remove_SourceChanged(EventRegistrationToken) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE add_HistoryChanged(ICoreWebView2HistoryChangedEventHandler*,
                                                 EventRegistrationToken*) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE remove_HistoryChanged(EventRegistrationToken) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE add_NavigationCompleted(ICoreWebView2NavigationCompletedEventHandler*,
                                                      EventRegistrationToken*) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE remove_NavigationCompleted(EventRegistrationToken) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE add_FrameNavigationStarting(
        ICoreWebView2NavigationStartingEventHandler*, EventRegistrationToken*) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE remove_FrameNavigationStarting(EventRegistrationToken) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE add_FrameNavigationCompleted(
        ICoreWebView2NavigationCompletedEventHandler*, EventRegistrationToken*) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE remove_FrameNavigationCompleted(EventRegistrationToken) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE add_ScriptDialogOpening(ICoreWebView2ScriptDialogOpeningEventHandler*,
                                                      EventRegistrationToken*) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE remove_ScriptDialogOpening(EventRegistrationToken) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE add_PermissionRequested(ICoreWebView2PermissionRequestedEventHandler*,
                                                      EventRegistrationToken*) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE remove_PermissionRequested(EventRegistrationToken) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE add_ProcessFailed(ICoreWebView2ProcessFailedEventHandler*,
                                                EventRegistrationToken*) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE remove_ProcessFailed(EventRegistrationToken) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE AddScriptToExecuteOnDocumentCreated(
        LPCWSTR, ICoreWebView2AddScriptToExecuteOnDocumentCreatedCompletedHandler*) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE RemoveScriptToExecuteOnDocumentCreated(LPCWSTR) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE ExecuteScript(LPCWSTR,
                                            ICoreWebView2ExecuteScriptCompletedHandler*) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE
    CapturePreview(COREWEBVIEW2_CAPTURE_PREVIEW_IMAGE_FORMAT, IStream*,
                   ICoreWebView2CapturePreviewCompletedHandler*) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE Reload() override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE PostWebMessageAsJson(LPCWSTR) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE PostWebMessageAsString(LPCWSTR) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE add_WebMessageReceived(ICoreWebView2WebMessageReceivedEventHandler*,
                                                     EventRegistrationToken*) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE remove_WebMessageReceived(EventRegistrationToken) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE CallDevToolsProtocolMethod(
        LPCWSTR, LPCWSTR, ICoreWebView2CallDevToolsProtocolMethodCompletedHandler*) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE get_BrowserProcessId(UINT32*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE get_CanGoBack(BOOL*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE get_CanGoForward(BOOL*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GoBack() override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GoForward() override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetDevToolsProtocolEventReceiver(
        LPCWSTR, ICoreWebView2DevToolsProtocolEventReceiver**) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE Stop() override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE add_NewWindowRequested(ICoreWebView2NewWindowRequestedEventHandler*,
                                                     EventRegistrationToken*) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE remove_NewWindowRequested(EventRegistrationToken) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE add_DocumentTitleChanged(
        ICoreWebView2DocumentTitleChangedEventHandler*, EventRegistrationToken*) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE remove_DocumentTitleChanged(EventRegistrationToken) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE get_DocumentTitle(LPWSTR*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE AddHostObjectToScript(LPCWSTR, VARIANT*) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE RemoveHostObjectFromScript(LPCWSTR) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE OpenDevToolsWindow() override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE
    add_ContainsFullScreenElementChanged(ICoreWebView2ContainsFullScreenElementChangedEventHandler*,
                                         EventRegistrationToken*) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE
    remove_ContainsFullScreenElementChanged(EventRegistrationToken) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE get_ContainsFullScreenElement(BOOL*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE add_WebResourceRequested(
        ICoreWebView2WebResourceRequestedEventHandler*, EventRegistrationToken*) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE remove_WebResourceRequested(EventRegistrationToken) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE
    AddWebResourceRequestedFilter(const LPCWSTR, const COREWEBVIEW2_WEB_RESOURCE_CONTEXT) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE RemoveWebResourceRequestedFilter(
        const LPCWSTR, const COREWEBVIEW2_WEB_RESOURCE_CONTEXT) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE add_WindowCloseRequested(
        ICoreWebView2WindowCloseRequestedEventHandler*, EventRegistrationToken*) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE remove_WindowCloseRequested(EventRegistrationToken) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE add_WebResourceResponseReceived(
        ICoreWebView2WebResourceResponseReceivedEventHandler*, EventRegistrationToken*) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE remove_WebResourceResponseReceived(EventRegistrationToken) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE
    NavigateWithWebResourceRequest(ICoreWebView2WebResourceRequest*) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE add_DOMContentLoaded(ICoreWebView2DOMContentLoadedEventHandler*,
                                                   EventRegistrationToken*) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE remove_DOMContentLoaded(EventRegistrationToken) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE get_CookieManager(ICoreWebView2CookieManager**) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE get_Environment(ICoreWebView2Environment**) override {
        return E_NOTIMPL;
    }
};

struct UnimplementedCoreWebView2Environment2 : ICoreWebView2Environment2 {
    HRESULT STDMETHODCALLTYPE CreateCoreWebView2Controller(
        HWND, ICoreWebView2CreateCoreWebView2ControllerCompletedHandler*) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE CreateWebResourceResponse(
        IStream*, int, LPCWSTR, LPCWSTR, ICoreWebView2WebResourceResponse**) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE get_BrowserVersionString(LPWSTR*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE add_NewBrowserVersionAvailable(
        ICoreWebView2NewBrowserVersionAvailableEventHandler*, EventRegistrationToken*) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE remove_NewBrowserVersionAvailable(EventRegistrationToken) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE CreateWebResourceRequest(LPCWSTR, LPCWSTR, IStream*, LPCWSTR,
                                                       ICoreWebView2WebResourceRequest**) override {
        return E_NOTIMPL;
    }
};

struct UnimplementedCoreWebView2Controller : ICoreWebView2Controller {
    HRESULT STDMETHODCALLTYPE get_IsVisible(BOOL*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE put_IsVisible(BOOL) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE get_Bounds(RECT*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE put_Bounds(RECT) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE get_ZoomFactor(double*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE put_ZoomFactor(double) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE add_ZoomFactorChanged(ICoreWebView2ZoomFactorChangedEventHandler*,
                                                    EventRegistrationToken*) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE remove_ZoomFactorChanged(EventRegistrationToken) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE SetBoundsAndZoomFactor(RECT, double) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE MoveFocus(COREWEBVIEW2_MOVE_FOCUS_REASON) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE add_MoveFocusRequested(ICoreWebView2MoveFocusRequestedEventHandler*,
                                                     EventRegistrationToken*) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE remove_MoveFocusRequested(EventRegistrationToken) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE add_GotFocus(ICoreWebView2FocusChangedEventHandler*,
                                           EventRegistrationToken*) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE remove_GotFocus(EventRegistrationToken) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE add_LostFocus(ICoreWebView2FocusChangedEventHandler*,
                                            EventRegistrationToken*) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE remove_LostFocus(EventRegistrationToken) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE add_AcceleratorKeyPressed(
        ICoreWebView2AcceleratorKeyPressedEventHandler*, EventRegistrationToken*) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE remove_AcceleratorKeyPressed(EventRegistrationToken) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE get_ParentWindow(HWND*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE put_ParentWindow(HWND) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE NotifyParentWindowPositionChanged() override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE Close() override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE get_CoreWebView2(ICoreWebView2**) override { return E_NOTIMPL; }
};

struct UnimplementedCoreWebView2Settings : ICoreWebView2Settings {
    HRESULT STDMETHODCALLTYPE get_IsScriptEnabled(BOOL*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE put_IsScriptEnabled(BOOL) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE get_IsWebMessageEnabled(BOOL*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE put_IsWebMessageEnabled(BOOL) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE get_AreDefaultScriptDialogsEnabled(BOOL*) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE put_AreDefaultScriptDialogsEnabled(BOOL) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE get_IsStatusBarEnabled(BOOL*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE put_IsStatusBarEnabled(BOOL) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE get_AreDevToolsEnabled(BOOL*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE put_AreDevToolsEnabled(BOOL) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE get_AreDefaultContextMenusEnabled(BOOL*) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE put_AreDefaultContextMenusEnabled(BOOL) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE get_AreHostObjectsAllowed(BOOL*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE put_AreHostObjectsAllowed(BOOL) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE get_IsZoomControlEnabled(BOOL*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE put_IsZoomControlEnabled(BOOL) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE get_IsBuiltInErrorPageEnabled(BOOL*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE put_IsBuiltInErrorPageEnabled(BOOL) override { return E_NOTIMPL; }
};

struct UnimplementedCoreWebView2WebMessageReceivedEventArgs
    : ICoreWebView2WebMessageReceivedEventArgs {
    HRESULT STDMETHODCALLTYPE get_Source(LPWSTR*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE get_WebMessageAsJson(LPWSTR*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE TryGetWebMessageAsString(LPWSTR*) override { return E_NOTIMPL; }
};

struct UnimplementedCoreWebView2NavigationStartingEventArgs
    : ICoreWebView2NavigationStartingEventArgs {
    HRESULT STDMETHODCALLTYPE get_Uri(LPWSTR*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE get_IsUserInitiated(BOOL*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE get_IsRedirected(BOOL*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE get_RequestHeaders(ICoreWebView2HttpRequestHeaders**) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE get_Cancel(BOOL*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE put_Cancel(BOOL) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE get_NavigationId(UINT64*) override { return E_NOTIMPL; }
};
