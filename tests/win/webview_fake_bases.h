// Bases for fakes of the browser runtime's interfaces: every member answers E_NOTIMPL, so that a
// fake overrides only what the browser window calls.
#pragma once

#include "webview2_interfaces.h"

// A member that answers E_NOTIMPL.
#define NOT_IMPLEMENTED(Name, ...)                         \
    HRESULT STDMETHODCALLTYPE Name(__VA_ARGS__) override { \
        return E_NOTIMPL;                                  \
    }
// An event's add and remove members, both answering E_NOTIMPL.
#define NOT_IMPLEMENTED_EVENT(Name, Handler)                       \
    NOT_IMPLEMENTED(add_##Name, Handler*, EventRegistrationToken*) \
    NOT_IMPLEMENTED(remove_##Name, EventRegistrationToken)

struct UnimplementedCoreWebView2_2 : ICoreWebView2_2 {
    NOT_IMPLEMENTED(get_Settings, ICoreWebView2Settings**)
    NOT_IMPLEMENTED(get_Source, LPWSTR*)
    NOT_IMPLEMENTED(Navigate, LPCWSTR)
    NOT_IMPLEMENTED(NavigateToString, LPCWSTR)
    NOT_IMPLEMENTED_EVENT(NavigationStarting, ICoreWebView2NavigationStartingEventHandler)
    NOT_IMPLEMENTED_EVENT(ContentLoading, ICoreWebView2ContentLoadingEventHandler)
    NOT_IMPLEMENTED_EVENT(SourceChanged, ICoreWebView2SourceChangedEventHandler)
    NOT_IMPLEMENTED_EVENT(HistoryChanged, ICoreWebView2HistoryChangedEventHandler)
    NOT_IMPLEMENTED_EVENT(NavigationCompleted, ICoreWebView2NavigationCompletedEventHandler)
    NOT_IMPLEMENTED_EVENT(FrameNavigationStarting, ICoreWebView2NavigationStartingEventHandler)
    NOT_IMPLEMENTED_EVENT(FrameNavigationCompleted, ICoreWebView2NavigationCompletedEventHandler)
    NOT_IMPLEMENTED_EVENT(ScriptDialogOpening, ICoreWebView2ScriptDialogOpeningEventHandler)
    NOT_IMPLEMENTED_EVENT(PermissionRequested, ICoreWebView2PermissionRequestedEventHandler)
    NOT_IMPLEMENTED_EVENT(ProcessFailed, ICoreWebView2ProcessFailedEventHandler)
    NOT_IMPLEMENTED(AddScriptToExecuteOnDocumentCreated, LPCWSTR,
                    ICoreWebView2AddScriptToExecuteOnDocumentCreatedCompletedHandler*)
    NOT_IMPLEMENTED(RemoveScriptToExecuteOnDocumentCreated, LPCWSTR)
    NOT_IMPLEMENTED(ExecuteScript, LPCWSTR, ICoreWebView2ExecuteScriptCompletedHandler*)
    NOT_IMPLEMENTED(CapturePreview, COREWEBVIEW2_CAPTURE_PREVIEW_IMAGE_FORMAT, IStream*,
                    ICoreWebView2CapturePreviewCompletedHandler*)
    NOT_IMPLEMENTED(Reload)
    NOT_IMPLEMENTED(PostWebMessageAsJson, LPCWSTR)
    NOT_IMPLEMENTED(PostWebMessageAsString, LPCWSTR)
    NOT_IMPLEMENTED_EVENT(WebMessageReceived, ICoreWebView2WebMessageReceivedEventHandler)
    NOT_IMPLEMENTED(CallDevToolsProtocolMethod, LPCWSTR, LPCWSTR,
                    ICoreWebView2CallDevToolsProtocolMethodCompletedHandler*)
    NOT_IMPLEMENTED(get_BrowserProcessId, UINT32*)
    NOT_IMPLEMENTED(get_CanGoBack, BOOL*)
    NOT_IMPLEMENTED(get_CanGoForward, BOOL*)
    NOT_IMPLEMENTED(GoBack)
    NOT_IMPLEMENTED(GoForward)
    NOT_IMPLEMENTED(GetDevToolsProtocolEventReceiver, LPCWSTR,
                    ICoreWebView2DevToolsProtocolEventReceiver**)
    NOT_IMPLEMENTED(Stop)
    NOT_IMPLEMENTED_EVENT(NewWindowRequested, ICoreWebView2NewWindowRequestedEventHandler)
    NOT_IMPLEMENTED_EVENT(DocumentTitleChanged, ICoreWebView2DocumentTitleChangedEventHandler)
    NOT_IMPLEMENTED(get_DocumentTitle, LPWSTR*)
    NOT_IMPLEMENTED(AddHostObjectToScript, LPCWSTR, VARIANT*)
    NOT_IMPLEMENTED(RemoveHostObjectFromScript, LPCWSTR)
    NOT_IMPLEMENTED(OpenDevToolsWindow)
    NOT_IMPLEMENTED_EVENT(ContainsFullScreenElementChanged,
                          ICoreWebView2ContainsFullScreenElementChangedEventHandler)
    NOT_IMPLEMENTED(get_ContainsFullScreenElement, BOOL*)
    NOT_IMPLEMENTED_EVENT(WebResourceRequested, ICoreWebView2WebResourceRequestedEventHandler)
    NOT_IMPLEMENTED(AddWebResourceRequestedFilter, const LPCWSTR,
                    const COREWEBVIEW2_WEB_RESOURCE_CONTEXT)
    NOT_IMPLEMENTED(RemoveWebResourceRequestedFilter, const LPCWSTR,
                    const COREWEBVIEW2_WEB_RESOURCE_CONTEXT)
    NOT_IMPLEMENTED_EVENT(WindowCloseRequested, ICoreWebView2WindowCloseRequestedEventHandler)
    NOT_IMPLEMENTED_EVENT(WebResourceResponseReceived,
                          ICoreWebView2WebResourceResponseReceivedEventHandler)
    NOT_IMPLEMENTED(NavigateWithWebResourceRequest, ICoreWebView2WebResourceRequest*)
    NOT_IMPLEMENTED_EVENT(DOMContentLoaded, ICoreWebView2DOMContentLoadedEventHandler)
    NOT_IMPLEMENTED(get_CookieManager, ICoreWebView2CookieManager**)
    NOT_IMPLEMENTED(get_Environment, ICoreWebView2Environment**)
};

struct UnimplementedCoreWebView2Environment2 : ICoreWebView2Environment2 {
    NOT_IMPLEMENTED(CreateCoreWebView2Controller, HWND,
                    ICoreWebView2CreateCoreWebView2ControllerCompletedHandler*)
    NOT_IMPLEMENTED(CreateWebResourceResponse, IStream*, int, LPCWSTR, LPCWSTR,
                    ICoreWebView2WebResourceResponse**)
    NOT_IMPLEMENTED(get_BrowserVersionString, LPWSTR*)
    NOT_IMPLEMENTED_EVENT(NewBrowserVersionAvailable,
                          ICoreWebView2NewBrowserVersionAvailableEventHandler)
    NOT_IMPLEMENTED(CreateWebResourceRequest, LPCWSTR, LPCWSTR, IStream*, LPCWSTR,
                    ICoreWebView2WebResourceRequest**)
};

struct UnimplementedCoreWebView2Controller : ICoreWebView2Controller {
    NOT_IMPLEMENTED(get_IsVisible, BOOL*)
    NOT_IMPLEMENTED(put_IsVisible, BOOL)
    NOT_IMPLEMENTED(get_Bounds, RECT*)
    NOT_IMPLEMENTED(put_Bounds, RECT)
    NOT_IMPLEMENTED(get_ZoomFactor, double*)
    NOT_IMPLEMENTED(put_ZoomFactor, double)
    NOT_IMPLEMENTED_EVENT(ZoomFactorChanged, ICoreWebView2ZoomFactorChangedEventHandler)
    NOT_IMPLEMENTED(SetBoundsAndZoomFactor, RECT, double)
    NOT_IMPLEMENTED(MoveFocus, COREWEBVIEW2_MOVE_FOCUS_REASON)
    NOT_IMPLEMENTED_EVENT(MoveFocusRequested, ICoreWebView2MoveFocusRequestedEventHandler)
    NOT_IMPLEMENTED_EVENT(GotFocus, ICoreWebView2FocusChangedEventHandler)
    NOT_IMPLEMENTED_EVENT(LostFocus, ICoreWebView2FocusChangedEventHandler)
    NOT_IMPLEMENTED_EVENT(AcceleratorKeyPressed, ICoreWebView2AcceleratorKeyPressedEventHandler)
    NOT_IMPLEMENTED(get_ParentWindow, HWND*)
    NOT_IMPLEMENTED(put_ParentWindow, HWND)
    NOT_IMPLEMENTED(NotifyParentWindowPositionChanged)
    NOT_IMPLEMENTED(Close)
    NOT_IMPLEMENTED(get_CoreWebView2, ICoreWebView2**)
};

struct UnimplementedCoreWebView2Settings : ICoreWebView2Settings {
    NOT_IMPLEMENTED(get_IsScriptEnabled, BOOL*)
    NOT_IMPLEMENTED(put_IsScriptEnabled, BOOL)
    NOT_IMPLEMENTED(get_IsWebMessageEnabled, BOOL*)
    NOT_IMPLEMENTED(put_IsWebMessageEnabled, BOOL)
    NOT_IMPLEMENTED(get_AreDefaultScriptDialogsEnabled, BOOL*)
    NOT_IMPLEMENTED(put_AreDefaultScriptDialogsEnabled, BOOL)
    NOT_IMPLEMENTED(get_IsStatusBarEnabled, BOOL*)
    NOT_IMPLEMENTED(put_IsStatusBarEnabled, BOOL)
    NOT_IMPLEMENTED(get_AreDevToolsEnabled, BOOL*)
    NOT_IMPLEMENTED(put_AreDevToolsEnabled, BOOL)
    NOT_IMPLEMENTED(get_AreDefaultContextMenusEnabled, BOOL*)
    NOT_IMPLEMENTED(put_AreDefaultContextMenusEnabled, BOOL)
    NOT_IMPLEMENTED(get_AreHostObjectsAllowed, BOOL*)
    NOT_IMPLEMENTED(put_AreHostObjectsAllowed, BOOL)
    NOT_IMPLEMENTED(get_IsZoomControlEnabled, BOOL*)
    NOT_IMPLEMENTED(put_IsZoomControlEnabled, BOOL)
    NOT_IMPLEMENTED(get_IsBuiltInErrorPageEnabled, BOOL*)
    NOT_IMPLEMENTED(put_IsBuiltInErrorPageEnabled, BOOL)
};

struct UnimplementedCoreWebView2WebMessageReceivedEventArgs
    : ICoreWebView2WebMessageReceivedEventArgs {
    NOT_IMPLEMENTED(get_Source, LPWSTR*)
    NOT_IMPLEMENTED(get_WebMessageAsJson, LPWSTR*)
    NOT_IMPLEMENTED(TryGetWebMessageAsString, LPWSTR*)
};

struct UnimplementedCoreWebView2NavigationStartingEventArgs
    : ICoreWebView2NavigationStartingEventArgs {
    NOT_IMPLEMENTED(get_Uri, LPWSTR*)
    NOT_IMPLEMENTED(get_IsUserInitiated, BOOL*)
    NOT_IMPLEMENTED(get_IsRedirected, BOOL*)
    NOT_IMPLEMENTED(get_RequestHeaders, ICoreWebView2HttpRequestHeaders**)
    NOT_IMPLEMENTED(get_Cancel, BOOL*)
    NOT_IMPLEMENTED(put_Cancel, BOOL)
    NOT_IMPLEMENTED(get_NavigationId, UINT64*)
};

#undef NOT_IMPLEMENTED_EVENT
#undef NOT_IMPLEMENTED
