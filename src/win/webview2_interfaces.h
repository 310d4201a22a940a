// The embedded browser runtime's COM interfaces that the browser window uses, declared with the
// runtime's own method order and interface ids so that the tables match a real runtime. Every
// member is declared, called here or not, so that each slot lines up.
#pragma once

#include <windows.h>
// after windows.h, which they need
#include <eventtoken.h>
#include <objidl.h>

enum COREWEBVIEW2_CAPTURE_PREVIEW_IMAGE_FORMAT : int;
enum COREWEBVIEW2_MOVE_FOCUS_REASON : int;
enum COREWEBVIEW2_WEB_ERROR_STATUS : int;
enum COREWEBVIEW2_WEB_RESOURCE_CONTEXT : int;

struct ICoreWebView2;
struct ICoreWebView2AcceleratorKeyPressedEventHandler;
struct ICoreWebView2AddScriptToExecuteOnDocumentCreatedCompletedHandler;
struct ICoreWebView2CallDevToolsProtocolMethodCompletedHandler;
struct ICoreWebView2CapturePreviewCompletedHandler;
struct ICoreWebView2ContainsFullScreenElementChangedEventHandler;
struct ICoreWebView2ContentLoadingEventHandler;
struct ICoreWebView2Controller;
struct ICoreWebView2CookieManager;
struct ICoreWebView2CreateCoreWebView2ControllerCompletedHandler;
struct ICoreWebView2CreateCoreWebView2EnvironmentCompletedHandler;
struct ICoreWebView2DOMContentLoadedEventHandler;
struct ICoreWebView2DevToolsProtocolEventReceiver;
struct ICoreWebView2DocumentTitleChangedEventHandler;
struct ICoreWebView2Environment;
struct ICoreWebView2Environment2;
struct ICoreWebView2ExecuteScriptCompletedHandler;
struct ICoreWebView2FocusChangedEventHandler;
struct ICoreWebView2HistoryChangedEventHandler;
struct ICoreWebView2HttpRequestHeaders;
struct ICoreWebView2MoveFocusRequestedEventHandler;
struct ICoreWebView2NavigationCompletedEventArgs;
struct ICoreWebView2NavigationCompletedEventHandler;
struct ICoreWebView2NavigationStartingEventArgs;
struct ICoreWebView2NavigationStartingEventHandler;
struct ICoreWebView2NewBrowserVersionAvailableEventHandler;
struct ICoreWebView2NewWindowRequestedEventHandler;
struct ICoreWebView2PermissionRequestedEventHandler;
struct ICoreWebView2ProcessFailedEventHandler;
struct ICoreWebView2ScriptDialogOpeningEventHandler;
struct ICoreWebView2Settings;
struct ICoreWebView2SourceChangedEventHandler;
struct ICoreWebView2WebMessageReceivedEventArgs;
struct ICoreWebView2WebMessageReceivedEventHandler;
struct ICoreWebView2WebResourceRequest;
struct ICoreWebView2WebResourceRequestedEventHandler;
struct ICoreWebView2WebResourceResponse;
struct ICoreWebView2WebResourceResponseReceivedEventHandler;
struct ICoreWebView2WindowCloseRequestedEventHandler;
struct ICoreWebView2ZoomFactorChangedEventHandler;
struct ICoreWebView2_2;

inline constexpr GUID IID_ICoreWebView2 = {
    0x76eceacb, 0x0462, 0x4d94, {0xac, 0x83, 0x42, 0x3a, 0x67, 0x93, 0x77, 0x5e}};
inline constexpr GUID IID_ICoreWebView2_2 = {
    0x9e8f0cf8, 0xe670, 0x4b5e, {0xb2, 0xbc, 0x73, 0xe0, 0x61, 0xe3, 0x18, 0x4c}};
inline constexpr GUID IID_ICoreWebView2Controller = {
    0x4d00c0d1, 0x9434, 0x4eb6, {0x80, 0x78, 0x86, 0x97, 0xa5, 0x60, 0x33, 0x4f}};
inline constexpr GUID IID_ICoreWebView2Environment = {
    0xb96d755e, 0x0319, 0x4e92, {0xa2, 0x96, 0x23, 0x43, 0x6f, 0x46, 0xa1, 0xfc}};
inline constexpr GUID IID_ICoreWebView2Environment2 = {
    0x41f3632b, 0x5ef4, 0x404f, {0xad, 0x82, 0x2d, 0x60, 0x6c, 0x5a, 0x9a, 0x21}};
inline constexpr GUID IID_ICoreWebView2Settings = {
    0xe562e4f0, 0xd7fa, 0x43ac, {0x8d, 0x71, 0xc0, 0x51, 0x50, 0x49, 0x9f, 0x00}};
inline constexpr GUID IID_ICoreWebView2WebMessageReceivedEventArgs = {
    0x0f99a40c, 0xe962, 0x4207, {0x9e, 0x92, 0xe3, 0xd5, 0x42, 0xef, 0xf8, 0x49}};
inline constexpr GUID IID_ICoreWebView2NavigationStartingEventArgs = {
    0x5b495469, 0xe119, 0x438a, {0x9b, 0x18, 0x76, 0x04, 0xf2, 0x5f, 0x2e, 0x49}};
inline constexpr GUID IID_ICoreWebView2NavigationCompletedEventArgs = {
    0x30d68b7d, 0x20d9, 0x4752, {0xa9, 0xca, 0xec, 0x84, 0x48, 0xfb, 0xb5, 0xc1}};
inline constexpr GUID IID_ICoreWebView2WebResourceRequest = {
    0x97055cd4, 0x512c, 0x4264, {0x8b, 0x5f, 0xe3, 0xf4, 0x46, 0xce, 0xa6, 0xa5}};
inline constexpr GUID IID_ICoreWebView2CreateCoreWebView2EnvironmentCompletedHandler = {
    0x4e8a3389, 0xc9d8, 0x4bd2, {0xb6, 0xb5, 0x12, 0x4f, 0xee, 0x6c, 0xc1, 0x4d}};
inline constexpr GUID IID_ICoreWebView2CreateCoreWebView2ControllerCompletedHandler = {
    0x6c4819f3, 0xc9b7, 0x4260, {0x81, 0x27, 0xc9, 0xf5, 0xbd, 0xe7, 0xf6, 0x8c}};
inline constexpr GUID IID_ICoreWebView2WebMessageReceivedEventHandler = {
    0x57213f19, 0x00e6, 0x49fa, {0x8e, 0x07, 0x89, 0x8e, 0xa0, 0x1e, 0xcb, 0xd2}};
inline constexpr GUID IID_ICoreWebView2NavigationStartingEventHandler = {
    0x9adbe429, 0xf36d, 0x432b, {0x9d, 0xdc, 0xf8, 0x88, 0x1f, 0xbd, 0x76, 0xe3}};
inline constexpr GUID IID_ICoreWebView2NavigationCompletedEventHandler = {
    0xd33a35bf, 0x1c49, 0x4f98, {0x93, 0xab, 0x00, 0x6e, 0x05, 0x33, 0xfe, 0x1c}};
inline constexpr GUID IID_ICoreWebView2ExecuteScriptCompletedHandler = {
    0x49511172, 0xcc67, 0x4bca, {0x99, 0x23, 0x13, 0x71, 0x12, 0xf4, 0xc4, 0xcc}};

struct ICoreWebView2 : public IUnknown {
    virtual HRESULT STDMETHODCALLTYPE get_Settings(ICoreWebView2Settings** settings) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_Source(LPWSTR* uri) = 0;
    virtual HRESULT STDMETHODCALLTYPE Navigate(LPCWSTR uri) = 0;
    virtual HRESULT STDMETHODCALLTYPE NavigateToString(LPCWSTR htmlContent) = 0;
    virtual HRESULT STDMETHODCALLTYPE
    add_NavigationStarting(ICoreWebView2NavigationStartingEventHandler* eventHandler,
                           EventRegistrationToken* token) = 0;
    virtual HRESULT STDMETHODCALLTYPE remove_NavigationStarting(EventRegistrationToken token) = 0;
    virtual HRESULT STDMETHODCALLTYPE add_ContentLoading(
        ICoreWebView2ContentLoadingEventHandler* eventHandler, EventRegistrationToken* token) = 0;
    virtual HRESULT STDMETHODCALLTYPE remove_ContentLoading(EventRegistrationToken token) = 0;
    virtual HRESULT STDMETHODCALLTYPE add_SourceChanged(
        ICoreWebView2SourceChangedEventHandler* eventHandler, EventRegistrationToken* token) = 0;
    virtual HRESULT STDMETHODCALLTYPE remove_SourceChanged(EventRegistrationToken token) = 0;
    virtual HRESULT STDMETHODCALLTYPE add_HistoryChanged(
        ICoreWebView2HistoryChangedEventHandler* eventHandler, EventRegistrationToken* token) = 0;
    virtual HRESULT STDMETHODCALLTYPE remove_HistoryChanged(EventRegistrationToken token) = 0;
    virtual HRESULT STDMETHODCALLTYPE
    add_NavigationCompleted(ICoreWebView2NavigationCompletedEventHandler* eventHandler,
                            EventRegistrationToken* token) = 0;
    virtual HRESULT STDMETHODCALLTYPE remove_NavigationCompleted(EventRegistrationToken token) = 0;
    virtual HRESULT STDMETHODCALLTYPE
    add_FrameNavigationStarting(ICoreWebView2NavigationStartingEventHandler* eventHandler,
                                EventRegistrationToken* token) = 0;
    virtual HRESULT STDMETHODCALLTYPE
    remove_FrameNavigationStarting(EventRegistrationToken token) = 0;
    virtual HRESULT STDMETHODCALLTYPE
    add_FrameNavigationCompleted(ICoreWebView2NavigationCompletedEventHandler* eventHandler,
                                 EventRegistrationToken* token) = 0;
    virtual HRESULT STDMETHODCALLTYPE
    remove_FrameNavigationCompleted(EventRegistrationToken token) = 0;
    virtual HRESULT STDMETHODCALLTYPE
    add_ScriptDialogOpening(ICoreWebView2ScriptDialogOpeningEventHandler* eventHandler,
                            EventRegistrationToken* token) = 0;
    virtual HRESULT STDMETHODCALLTYPE remove_ScriptDialogOpening(EventRegistrationToken token) = 0;
    virtual HRESULT STDMETHODCALLTYPE
    add_PermissionRequested(ICoreWebView2PermissionRequestedEventHandler* eventHandler,
                            EventRegistrationToken* token) = 0;
    virtual HRESULT STDMETHODCALLTYPE remove_PermissionRequested(EventRegistrationToken token) = 0;
    virtual HRESULT STDMETHODCALLTYPE add_ProcessFailed(
        ICoreWebView2ProcessFailedEventHandler* eventHandler, EventRegistrationToken* token) = 0;
    virtual HRESULT STDMETHODCALLTYPE remove_ProcessFailed(EventRegistrationToken token) = 0;
    virtual HRESULT STDMETHODCALLTYPE AddScriptToExecuteOnDocumentCreated(
        LPCWSTR javaScript,
        ICoreWebView2AddScriptToExecuteOnDocumentCreatedCompletedHandler* handler) = 0;
    virtual HRESULT STDMETHODCALLTYPE RemoveScriptToExecuteOnDocumentCreated(LPCWSTR id) = 0;
    virtual HRESULT STDMETHODCALLTYPE
    ExecuteScript(LPCWSTR javaScript, ICoreWebView2ExecuteScriptCompletedHandler* handler) = 0;
    virtual HRESULT STDMETHODCALLTYPE
    CapturePreview(COREWEBVIEW2_CAPTURE_PREVIEW_IMAGE_FORMAT imageFormat, IStream* imageStream,
                   ICoreWebView2CapturePreviewCompletedHandler* handler) = 0;
    virtual HRESULT STDMETHODCALLTYPE Reload() = 0;
    virtual HRESULT STDMETHODCALLTYPE PostWebMessageAsJson(LPCWSTR webMessageAsJson) = 0;
    virtual HRESULT STDMETHODCALLTYPE PostWebMessageAsString(LPCWSTR webMessageAsString) = 0;
    virtual HRESULT STDMETHODCALLTYPE add_WebMessageReceived(
        ICoreWebView2WebMessageReceivedEventHandler* handler, EventRegistrationToken* token) = 0;
    virtual HRESULT STDMETHODCALLTYPE remove_WebMessageReceived(EventRegistrationToken token) = 0;
    virtual HRESULT STDMETHODCALLTYPE CallDevToolsProtocolMethod(
        LPCWSTR methodName, LPCWSTR parametersAsJson,
        ICoreWebView2CallDevToolsProtocolMethodCompletedHandler* handler) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_BrowserProcessId(UINT32* value) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_CanGoBack(BOOL* canGoBack) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_CanGoForward(BOOL* canGoForward) = 0;
    virtual HRESULT STDMETHODCALLTYPE GoBack() = 0;
    virtual HRESULT STDMETHODCALLTYPE GoForward() = 0;
    virtual HRESULT STDMETHODCALLTYPE GetDevToolsProtocolEventReceiver(
        LPCWSTR eventName, ICoreWebView2DevToolsProtocolEventReceiver** receiver) = 0;
    virtual HRESULT STDMETHODCALLTYPE Stop() = 0;
    virtual HRESULT STDMETHODCALLTYPE
    add_NewWindowRequested(ICoreWebView2NewWindowRequestedEventHandler* eventHandler,
                           EventRegistrationToken* token) = 0;
    virtual HRESULT STDMETHODCALLTYPE remove_NewWindowRequested(EventRegistrationToken token) = 0;
    virtual HRESULT STDMETHODCALLTYPE
    add_DocumentTitleChanged(ICoreWebView2DocumentTitleChangedEventHandler* eventHandler,
                             EventRegistrationToken* token) = 0;
    virtual HRESULT STDMETHODCALLTYPE remove_DocumentTitleChanged(EventRegistrationToken token) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_DocumentTitle(LPWSTR* title) = 0;
    virtual HRESULT STDMETHODCALLTYPE AddHostObjectToScript(LPCWSTR name, VARIANT* object) = 0;
    virtual HRESULT STDMETHODCALLTYPE RemoveHostObjectFromScript(LPCWSTR name) = 0;
    virtual HRESULT STDMETHODCALLTYPE OpenDevToolsWindow() = 0;
    virtual HRESULT STDMETHODCALLTYPE add_ContainsFullScreenElementChanged(
        ICoreWebView2ContainsFullScreenElementChangedEventHandler* eventHandler,
        EventRegistrationToken* token) = 0;
    virtual HRESULT STDMETHODCALLTYPE
    remove_ContainsFullScreenElementChanged(EventRegistrationToken token) = 0;
    virtual HRESULT STDMETHODCALLTYPE
    get_ContainsFullScreenElement(BOOL* containsFullScreenElement) = 0;
    virtual HRESULT STDMETHODCALLTYPE
    add_WebResourceRequested(ICoreWebView2WebResourceRequestedEventHandler* eventHandler,
                             EventRegistrationToken* token) = 0;
    virtual HRESULT STDMETHODCALLTYPE remove_WebResourceRequested(EventRegistrationToken token) = 0;
    virtual HRESULT STDMETHODCALLTYPE AddWebResourceRequestedFilter(
        const LPCWSTR uri, const COREWEBVIEW2_WEB_RESOURCE_CONTEXT resourceContext) = 0;
    virtual HRESULT STDMETHODCALLTYPE RemoveWebResourceRequestedFilter(
        const LPCWSTR uri, const COREWEBVIEW2_WEB_RESOURCE_CONTEXT resourceContext) = 0;
    virtual HRESULT STDMETHODCALLTYPE
    add_WindowCloseRequested(ICoreWebView2WindowCloseRequestedEventHandler* eventHandler,
                             EventRegistrationToken* token) = 0;
    virtual HRESULT STDMETHODCALLTYPE remove_WindowCloseRequested(EventRegistrationToken token) = 0;
};

struct ICoreWebView2_2 : public ICoreWebView2 {
    virtual HRESULT STDMETHODCALLTYPE add_WebResourceResponseReceived(
        ICoreWebView2WebResourceResponseReceivedEventHandler* eventHandler,
        EventRegistrationToken* token) = 0;
    virtual HRESULT STDMETHODCALLTYPE
    remove_WebResourceResponseReceived(EventRegistrationToken token) = 0;
    virtual HRESULT STDMETHODCALLTYPE
    NavigateWithWebResourceRequest(ICoreWebView2WebResourceRequest* request) = 0;
    virtual HRESULT STDMETHODCALLTYPE add_DOMContentLoaded(
        ICoreWebView2DOMContentLoadedEventHandler* eventHandler, EventRegistrationToken* token) = 0;
    virtual HRESULT STDMETHODCALLTYPE remove_DOMContentLoaded(EventRegistrationToken token) = 0;
    virtual HRESULT STDMETHODCALLTYPE
    get_CookieManager(ICoreWebView2CookieManager** cookieManager) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_Environment(ICoreWebView2Environment** environment) = 0;
};

struct ICoreWebView2Controller : public IUnknown {
    virtual HRESULT STDMETHODCALLTYPE get_IsVisible(BOOL* isVisible) = 0;
    virtual HRESULT STDMETHODCALLTYPE put_IsVisible(BOOL isVisible) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_Bounds(RECT* bounds) = 0;
    virtual HRESULT STDMETHODCALLTYPE put_Bounds(RECT bounds) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_ZoomFactor(double* zoomFactor) = 0;
    virtual HRESULT STDMETHODCALLTYPE put_ZoomFactor(double zoomFactor) = 0;
    virtual HRESULT STDMETHODCALLTYPE
    add_ZoomFactorChanged(ICoreWebView2ZoomFactorChangedEventHandler* eventHandler,
                          EventRegistrationToken* token) = 0;
    virtual HRESULT STDMETHODCALLTYPE remove_ZoomFactorChanged(EventRegistrationToken token) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetBoundsAndZoomFactor(RECT bounds, double zoomFactor) = 0;
    virtual HRESULT STDMETHODCALLTYPE MoveFocus(COREWEBVIEW2_MOVE_FOCUS_REASON reason) = 0;
    virtual HRESULT STDMETHODCALLTYPE
    add_MoveFocusRequested(ICoreWebView2MoveFocusRequestedEventHandler* eventHandler,
                           EventRegistrationToken* token) = 0;
    virtual HRESULT STDMETHODCALLTYPE remove_MoveFocusRequested(EventRegistrationToken token) = 0;
    virtual HRESULT STDMETHODCALLTYPE add_GotFocus(
        ICoreWebView2FocusChangedEventHandler* eventHandler, EventRegistrationToken* token) = 0;
    virtual HRESULT STDMETHODCALLTYPE remove_GotFocus(EventRegistrationToken token) = 0;
    virtual HRESULT STDMETHODCALLTYPE add_LostFocus(
        ICoreWebView2FocusChangedEventHandler* eventHandler, EventRegistrationToken* token) = 0;
    virtual HRESULT STDMETHODCALLTYPE remove_LostFocus(EventRegistrationToken token) = 0;
    virtual HRESULT STDMETHODCALLTYPE
    add_AcceleratorKeyPressed(ICoreWebView2AcceleratorKeyPressedEventHandler* eventHandler,
                              EventRegistrationToken* token) = 0;
    virtual HRESULT STDMETHODCALLTYPE
    remove_AcceleratorKeyPressed(EventRegistrationToken token) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_ParentWindow(HWND* parentWindow) = 0;
    virtual HRESULT STDMETHODCALLTYPE put_ParentWindow(HWND parentWindow) = 0;
    virtual HRESULT STDMETHODCALLTYPE NotifyParentWindowPositionChanged() = 0;
    virtual HRESULT STDMETHODCALLTYPE Close() = 0;
    virtual HRESULT STDMETHODCALLTYPE get_CoreWebView2(ICoreWebView2** coreWebView2) = 0;
};

struct ICoreWebView2Environment : public IUnknown {
    virtual HRESULT STDMETHODCALLTYPE CreateCoreWebView2Controller(
        HWND parentWindow, ICoreWebView2CreateCoreWebView2ControllerCompletedHandler* handler) = 0;
    virtual HRESULT STDMETHODCALLTYPE
    CreateWebResourceResponse(IStream* content, int statusCode, LPCWSTR reasonPhrase,
                              LPCWSTR headers, ICoreWebView2WebResourceResponse** response) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_BrowserVersionString(LPWSTR* versionInfo) = 0;
    virtual HRESULT STDMETHODCALLTYPE add_NewBrowserVersionAvailable(
        ICoreWebView2NewBrowserVersionAvailableEventHandler* eventHandler,
        EventRegistrationToken* token) = 0;
    virtual HRESULT STDMETHODCALLTYPE
    remove_NewBrowserVersionAvailable(EventRegistrationToken token) = 0;
};

struct ICoreWebView2Environment2 : public ICoreWebView2Environment {
    virtual HRESULT STDMETHODCALLTYPE
    CreateWebResourceRequest(LPCWSTR uri, LPCWSTR method, IStream* postData, LPCWSTR headers,
                             ICoreWebView2WebResourceRequest** request) = 0;
};

struct ICoreWebView2Settings : public IUnknown {
    virtual HRESULT STDMETHODCALLTYPE get_IsScriptEnabled(BOOL* isScriptEnabled) = 0;
    virtual HRESULT STDMETHODCALLTYPE put_IsScriptEnabled(BOOL isScriptEnabled) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_IsWebMessageEnabled(BOOL* isWebMessageEnabled) = 0;
    virtual HRESULT STDMETHODCALLTYPE put_IsWebMessageEnabled(BOOL isWebMessageEnabled) = 0;
    virtual HRESULT STDMETHODCALLTYPE
    get_AreDefaultScriptDialogsEnabled(BOOL* areDefaultScriptDialogsEnabled) = 0;
    virtual HRESULT STDMETHODCALLTYPE
    put_AreDefaultScriptDialogsEnabled(BOOL areDefaultScriptDialogsEnabled) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_IsStatusBarEnabled(BOOL* isStatusBarEnabled) = 0;
    virtual HRESULT STDMETHODCALLTYPE put_IsStatusBarEnabled(BOOL isStatusBarEnabled) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_AreDevToolsEnabled(BOOL* areDevToolsEnabled) = 0;
    virtual HRESULT STDMETHODCALLTYPE put_AreDevToolsEnabled(BOOL areDevToolsEnabled) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_AreDefaultContextMenusEnabled(BOOL* enabled) = 0;
    virtual HRESULT STDMETHODCALLTYPE put_AreDefaultContextMenusEnabled(BOOL enabled) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_AreHostObjectsAllowed(BOOL* allowed) = 0;
    virtual HRESULT STDMETHODCALLTYPE put_AreHostObjectsAllowed(BOOL allowed) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_IsZoomControlEnabled(BOOL* enabled) = 0;
    virtual HRESULT STDMETHODCALLTYPE put_IsZoomControlEnabled(BOOL enabled) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_IsBuiltInErrorPageEnabled(BOOL* enabled) = 0;
    virtual HRESULT STDMETHODCALLTYPE put_IsBuiltInErrorPageEnabled(BOOL enabled) = 0;
};

struct ICoreWebView2WebMessageReceivedEventArgs : public IUnknown {
    virtual HRESULT STDMETHODCALLTYPE get_Source(LPWSTR* source) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_WebMessageAsJson(LPWSTR* webMessageAsJson) = 0;
    virtual HRESULT STDMETHODCALLTYPE TryGetWebMessageAsString(LPWSTR* webMessageAsString) = 0;
};

struct ICoreWebView2NavigationStartingEventArgs : public IUnknown {
    virtual HRESULT STDMETHODCALLTYPE get_Uri(LPWSTR* uri) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_IsUserInitiated(BOOL* isUserInitiated) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_IsRedirected(BOOL* isRedirected) = 0;
    virtual HRESULT STDMETHODCALLTYPE
    get_RequestHeaders(ICoreWebView2HttpRequestHeaders** requestHeaders) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_Cancel(BOOL* cancel) = 0;
    virtual HRESULT STDMETHODCALLTYPE put_Cancel(BOOL cancel) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_NavigationId(UINT64* navigationId) = 0;
};

struct ICoreWebView2NavigationCompletedEventArgs : public IUnknown {
    virtual HRESULT STDMETHODCALLTYPE get_IsSuccess(BOOL* isSuccess) = 0;
    virtual HRESULT STDMETHODCALLTYPE
    get_WebErrorStatus(COREWEBVIEW2_WEB_ERROR_STATUS* webErrorStatus) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_NavigationId(UINT64* navigationId) = 0;
};

struct ICoreWebView2WebResourceRequest : public IUnknown {
    virtual HRESULT STDMETHODCALLTYPE get_Uri(LPWSTR* uri) = 0;
    virtual HRESULT STDMETHODCALLTYPE put_Uri(LPCWSTR uri) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_Method(LPWSTR* method) = 0;
    virtual HRESULT STDMETHODCALLTYPE put_Method(LPCWSTR method) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_Content(IStream** content) = 0;
    virtual HRESULT STDMETHODCALLTYPE put_Content(IStream* content) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_Headers(ICoreWebView2HttpRequestHeaders** headers) = 0;
};

struct ICoreWebView2CreateCoreWebView2EnvironmentCompletedHandler : public IUnknown {
    virtual HRESULT STDMETHODCALLTYPE Invoke(HRESULT errorCode,
                                             ICoreWebView2Environment* createdEnvironment) = 0;
};

struct ICoreWebView2CreateCoreWebView2ControllerCompletedHandler : public IUnknown {
    virtual HRESULT STDMETHODCALLTYPE Invoke(HRESULT errorCode,
                                             ICoreWebView2Controller* createdController) = 0;
};

struct ICoreWebView2WebMessageReceivedEventHandler : public IUnknown {
    virtual HRESULT STDMETHODCALLTYPE Invoke(ICoreWebView2* sender,
                                             ICoreWebView2WebMessageReceivedEventArgs* args) = 0;
};

struct ICoreWebView2NavigationStartingEventHandler : public IUnknown {
    virtual HRESULT STDMETHODCALLTYPE Invoke(ICoreWebView2* sender,
                                             ICoreWebView2NavigationStartingEventArgs* args) = 0;
};

struct ICoreWebView2NavigationCompletedEventHandler : public IUnknown {
    virtual HRESULT STDMETHODCALLTYPE Invoke(ICoreWebView2* sender,
                                             ICoreWebView2NavigationCompletedEventArgs* args) = 0;
};

struct ICoreWebView2ExecuteScriptCompletedHandler : public IUnknown {
    virtual HRESULT STDMETHODCALLTYPE Invoke(HRESULT errorCode, LPCWSTR resultObjectAsJson) = 0;
};

// The loader library's entry that starts an environment.
struct ICoreWebView2EnvironmentOptions;
using CreateCoreWebView2EnvironmentWithOptionsFn = HRESULT(STDMETHODCALLTYPE*)(
    PCWSTR browserExecutableFolder, PCWSTR userDataFolder,
    ICoreWebView2EnvironmentOptions* environmentOptions,
    ICoreWebView2CreateCoreWebView2EnvironmentCompletedHandler* environmentCreatedHandler);
