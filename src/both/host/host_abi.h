// The binary interface between a host editor and a plug-in library: opaque handles, the records
// exchanged at load time, and the callback records. Both sides include this header; nothing else of
// either side crosses the boundary.
#pragma once

#include <cstddef>
#include <cstdint>

// The calling convention of every function that crosses the boundary: the host's functions, the
// plug-in's entry and every callback either side stores in a record or a table. 32-bit Windows
// hosts call with __cdecl whatever a compiler's default; elsewhere there is one convention.
#if defined(_WIN32) && !defined(_WIN64)
#define BREVAN_HOSTCALL __cdecl
#else
#define BREVAN_HOSTCALL
#endif

// ---- Opaque handles -----------------------------------------------------------------------------
#define HOST_DECLARE_HANDLE(Name) typedef struct Name##_* Name

HOST_DECLARE_HANDLE(HostDoc);        // a document open in the editor
HOST_DECLARE_HANDLE(NdxDoc);         // the PDF document behind a HostDoc
HOST_DECLARE_HANDLE(NdxPage);        // a parsed PDF page
HOST_DECLARE_HANDLE(NdxObject);      // any PDF object (dictionary, array, string, ...)
HOST_DECLARE_HANDLE(NdxPageObject);  // one content object of a parsed page
HOST_DECLARE_HANDLE(NdxPosition);    // iteration cursor over page objects
HOST_DECLARE_HANDLE(NdxParseOptions);
HOST_DECLARE_HANDLE(NdxAnnot);      // a PDF annotation
HOST_DECLARE_HANDLE(NdxAnnotList);  // the annotation list of a PDF page
HOST_DECLARE_HANDLE(NdxInterForm);  // the interactive form of a document
HOST_DECLARE_HANDLE(NdxFormField);
HOST_DECLARE_HANDLE(NdxFormControl);
HOST_DECLARE_HANDLE(NdxTextPage);
HOST_DECLARE_HANDLE(NdxTextFind);
HOST_DECLARE_HANDLE(NdxFieldFind);
HOST_DECLARE_HANDLE(NdxRectArray);
HOST_DECLARE_HANDLE(NdxFlattener);
HOST_DECLARE_HANDLE(HostDocView);   // the view that shows a document
HOST_DECLARE_HANDLE(HostPageView);  // one page of a document as the editor shows it
HOST_DECLARE_HANDLE(HostAnnot);     // an annotation as the editor holds it
HOST_DECLARE_HANDLE(HostFormEnv);
HOST_DECLARE_HANDLE(HostTextSelectTool);
HOST_DECLARE_HANDLE(HostUndoManager);
HOST_DECLARE_HANDLE(HostTool);
HOST_DECLARE_HANDLE(HostWindow);
HOST_DECLARE_HANDLE(HostFrame);  // a main window of the editor
HOST_DECLARE_HANDLE(HostResources);
HOST_DECLARE_HANDLE(HostExtTable);  // an extension table exported by another plug-in
HOST_DECLARE_HANDLE(HostMap);
HOST_DECLARE_HANDLE(HostPtrArray);
HOST_DECLARE_HANDLE(HostStringArray);
HOST_DECLARE_HANDLE(HostByteString);
HOST_DECLARE_HANDLE(HostWideString);
HOST_DECLARE_HANDLE(HostProgress);
HOST_DECLARE_HANDLE(HostBubbleSource);
HOST_DECLARE_HANDLE(HostTheme);
HOST_DECLARE_HANDLE(HostBase64Encoder);
HOST_DECLARE_HANDLE(HostFileDialog);
HOST_DECLARE_HANDLE(HostReader);
HOST_DECLARE_HANDLE(HostSecurityHandler);
HOST_DECLARE_HANDLE(HostRibbonBar);
HOST_DECLARE_HANDLE(HostRibbonCategory);
HOST_DECLARE_HANDLE(HostRibbonPanel);
HOST_DECLARE_HANDLE(HostRibbonElement);
HOST_DECLARE_HANDLE(HostRibbonItem);
HOST_DECLARE_HANDLE(HostRibbonButton);
HOST_DECLARE_HANDLE(HostWebView);

#undef HOST_DECLARE_HANDLE

typedef void(BREVAN_HOSTCALL* HostFunction)(void);

// ---- Plain values -------------------------------------------------------------------------------

// A rectangle in PDF page space: y grows upwards.
struct NdxRect {
    float left;
    float bottom;
    float right;
    float top;
};

struct NdxPoint {
    float x;
    float y;
};

// Options of HostDocSaveAs; the plug-in passes {0, 1, 0, 0}.
struct HostSaveAsOptions {
    int32_t flags;
    int32_t fullSave;
    int32_t reserved1;
    int32_t reserved2;
};

// Options of HostDocOpenHidden: twelve values, the fifth a password text.
struct HostOpenHiddenOptions {
    int32_t readOnly;
    int32_t quiet;
    int32_t reserved1;
    int32_t reserved2;
    const wchar_t* password;
    int32_t reserved3;
    int32_t keepHidden;
    int32_t reserved4[5];
};

// Object types of NDXPageObjectGetType.
enum NdxPageObjectType : int32_t {
    kNdxPageObjectText = 1,
    kNdxPageObjectPath = 2,
    kNdxPageObjectImage = 3,
    kNdxPageObjectShading = 4,
    kNdxPageObjectForm = 5,
    kNdxPageObjectOther = 6,
};

// Object types of NDXObjectGetType.
enum NdxObjectType : int32_t {
    kNdxObjectNull = 0,
    kNdxObjectBoolean = 1,
    kNdxObjectNumber = 2,
    kNdxObjectString = 3,
    kNdxObjectName = 4,
    kNdxObjectArray = 5,
    kNdxObjectDictionary = 6,
    kNdxObjectStream = 7,
    kNdxObjectReference = 8,
};

// Search flags of NDXTextFindStart and NDXFieldTextFindStart; the editor's own bits.
enum NdxFindFlag : uint32_t {
    kNdxFindMatchCase = 0x1,  // without it letters match whatever their case
    kNdxFindWholeWord = 0x2,  // a match may not touch a letter or digit on either side
};

// Control types of NDXFormControlGetType.
enum NdxFormControlType : int32_t {
    kNdxControlPushButton = 1,
    kNdxControlRadioButton = 2,
    kNdxControlCheckBox = 3,
    kNdxControlTextField = 4,
    kNdxControlRichText = 5,
    kNdxControlFile = 6,
    kNdxControlListBox = 7,
    kNdxControlComboBox = 8,
    kNdxControlSignature = 9,
};

// Permission bits of HostDocGetPermissions / HostDocGetPermission.
enum HostPermission : uint32_t {
    kHostPermPrint = 0x04,
    kHostPermModify = 0x08,
    kHostPermCopy = 0x10,
    kHostPermAnnotate = 0x20,
};

// ---- Records with callbacks ---------------------------------------------------------------------
// A callback record is a row of pointer-sized words; word 0 holds the record's size in bytes and
// the hooks stand at fixed word positions. On a 32-bit build the sizes are those the editor
// documents (388, 228, 76 and 36 bytes).

// The word of a hook: the function must have the hook's type exactly, calling convention included,
// as in HookWord<HostDocHook>(&OnDocDidOpen).
template <typename Hook>
void* HookWord(Hook hook) {
    return reinterpret_cast<void*>(hook);
}

template <std::size_t Words>
struct HostCallbackRecord {
    static constexpr std::size_t kWords = Words;
    uintptr_t size = sizeof(HostCallbackRecord);
    void* words[Words - 1] = {};

    void* word(std::size_t index) const {
        return index == 0 || index >= Words ? nullptr : words[index - 1];
    }
    void setWord(std::size_t index, void* value) {
        if (index > 0 && index < Words)
            words[index - 1] = value;
    }
};

// Document events: 97 words. Word 1 is the client data handed back to every hook.
using HostDocEventRecord = HostCallbackRecord<97>;
enum HostDocEventWord : std::size_t {
    kDocEventClientData = 1,
    kDocEventWillOpen = 2,       // void(void* client)
    kDocEventDidOpen = 3,        // void(void* client, HostDoc)
    kDocEventActivate = 4,       // void(void* client, HostDoc)
    kDocEventDidSave = 7,        // void(void* client, HostDoc, int result)
    kDocEventClosing = 9,        // void(void* client, HostDoc)
    kDocEventModified = 13,      // void(void* client, HostDoc)
    kDocEventOtherTab = 42,      // void(void* client)
    kDocEventFieldChanged = 78,  // void(void* client, HostDoc, NdxFormField)
    kDocEventReserved79 = 79,    // void(void* client)
};
typedef void(BREVAN_HOSTCALL* HostDocHookNoDoc)(void* client);
typedef void(BREVAN_HOSTCALL* HostDocHook)(void* client, HostDoc doc);
typedef void(BREVAN_HOSTCALL* HostDocSaveHook)(void* client, HostDoc doc, int result);
typedef void(BREVAN_HOSTCALL* HostDocFieldHook)(void* client, HostDoc doc, NdxFormField field);

// Application events: 57 words. Word 1 is the client data.
using HostAppEventRecord = HostCallbackRecord<57>;
enum HostAppEventWord : std::size_t {
    kAppEventClientData = 1,
    kAppEventPageAppearanceChanged = 7,  // void(void* client)
};
typedef void(BREVAN_HOSTCALL* HostAppHook)(void* client);

// User-interface record: 9 words. Word 5 is called when a main window is created, word 8 when
// one closes; words 1 to 4 and 6 are callbacks that may do nothing, word 7 is zero.
using HostUiRecord = HostCallbackRecord<9>;
enum HostUiWord : std::size_t {
    kUiMainFrameCreated = 5,
    kUiMainFrameClosing = 8,
};
typedef void(BREVAN_HOSTCALL* HostFrameHook)(HostFrame frame);

// Task pane record: 19 words. Word 1 is the client data handed back to every callback.
using HostPaneRecord = HostCallbackRecord<19>;
enum HostPaneWord : std::size_t {
    kPaneClientData = 1,
    kPaneGetName = 2,        // const char*(void* client): the pane's name
    kPaneGetTitle = 3,       // HostWideString(void* client): title text, or null
    kPaneGetCaption = 4,     // HostWideString(void* client): caption text, or null
    kPaneCreateWindow = 6,   // HostWindow(void* client, HostWindow parent): the pane's window
    kPaneDestroyWindow = 7,  // void(void* client): the host takes the pane's window down
    kPaneClosed = 13,        // int(void* client): the user closed the pane
};
typedef const char*(BREVAN_HOSTCALL* HostPaneNameFn)(void* client);
typedef HostWideString(BREVAN_HOSTCALL* HostPaneTextFn)(void* client);
typedef HostWindow(BREVAN_HOSTCALL* HostPaneCreateFn)(void* client, HostWindow parent);
typedef void(BREVAN_HOSTCALL* HostPaneDestroyFn)(void* client);
typedef int(BREVAN_HOSTCALL* HostPaneClosedFn)(void* client);

// Record a plug-in hands to BrowserExtOpenUrl for a tab: 19 words. Words 2, 4 and 8 are
// notifications, words 9 and 10 questions the plug-in answers with non-zero to agree.
using HostBrowserTabRecord = HostCallbackRecord<19>;
typedef void(BREVAN_HOSTCALL* HostBrowserTabNotifyFn)(void* client);
typedef int(BREVAN_HOSTCALL* HostBrowserTabAgreeFn)(void* client);

// Record a plug-in hands to BrowserExtOpenWebPage. The host's web view calls word 4 with the
// client data of word 1 when its page runs window.external.DispatchFun(module, command, params);
// the callback sets the reply text into `result`, which becomes the call's result.
using HostWebPageRecord = HostCallbackRecord<19>;
enum HostWebPageWord : std::size_t {
    kWebPageClientData = 1,
    kWebPageDispatch = 4,
};
typedef void(BREVAN_HOSTCALL* HostWebPageDispatchFn)(void* client, const wchar_t* module,
                                                     const wchar_t* command, const wchar_t* params,
                                                     HostWideString result);

// Record of HostBubbleRegister. Word 1 repeats the size the editor documents (24 bytes); the
// host calls word 3 with the client data of word 2 when its notification surface is ready
// (argument non-zero) or goes (zero).
using HostBubbleRecord = HostCallbackRecord<8>;
enum HostBubbleWord : std::size_t {
    kBubbleDeclaredSize = 1,
    kBubbleClientData = 2,
    kBubbleNotify = 3,  // void(void* client, int ready)
};
constexpr uintptr_t kHostBubbleRecordSize = 24;
typedef void(BREVAN_HOSTCALL* HostBubbleNotifyFn)(void* client, int ready);

// Options record handed to the OCR extension.
struct HostOcrOptions {
    const wchar_t* language;
    uint8_t optionFlag;
};
// Callback object of the OCR options dialog: called with (language, flag) on confirmation.
struct HostOcrDialogCallback {
    void* client;
    void(BREVAN_HOSTCALL* confirmed)(void* client, const wchar_t* language, uint8_t flag);
};

// Procedures of a ribbon entry; the host passes the entry's own handle as `client`. The ribbon's
// property operations (tooltip, images, key tip, procedures) take the handle of an element or of
// an entry, in either form.
typedef int(BREVAN_HOSTCALL* HostRibbonExecuteProc)(void* client);
typedef int(BREVAN_HOSTCALL* HostRibbonEnableProc)(void* client);
typedef void(BREVAN_HOSTCALL* HostLoginDomainCallback)(const wchar_t* domain);

// ---- Load-time exchange -------------------------------------------------------------------------

// The host's table manager: every core function is found by (category, selector, plug-in id).
struct HostTableManager {
    uintptr_t size;
    HostFunction(BREVAN_HOSTCALL* lookup)(uint32_t category, uint32_t selector, uint32_t pluginId);
};

struct HostRegistration;
typedef int(BREVAN_HOSTCALL* HostRegistrationFn)(uint32_t hostVersion, HostRegistration* record);
typedef int(BREVAN_HOSTCALL* HostPluginCallback)(void);

// Handshake record: the operations a plug-in calls from its handshake function, in this order.
struct HostHandshake {
    uintptr_t size;
    HostTableManager*(BREVAN_HOSTCALL* getTableManager)(void);
    uint32_t(BREVAN_HOSTCALL* getPluginId)(HostHandshake* self);
    void(BREVAN_HOSTCALL* setRegistrationCallback)(HostHandshake* self, HostRegistrationFn fn);
    void(BREVAN_HOSTCALL* setSdkVersion)(HostHandshake* self, uint32_t version);
    void(BREVAN_HOSTCALL* setVersionText)(HostHandshake* self, const char* text);
    void* host;  // the host's own state for this plug-in
};

// Registration record: the operations a plug-in calls from its registration function.
struct HostRegistration {
    uintptr_t size;
    void(BREVAN_HOSTCALL* setPluginName)(HostRegistration* self, const char* internalName,
                                         const char* shortName);
    void(BREVAN_HOSTCALL* setExportCallback)(HostRegistration* self, HostPluginCallback fn);
    void(BREVAN_HOSTCALL* setImportCallback)(HostRegistration* self, HostPluginCallback fn);
    void(BREVAN_HOSTCALL* setInitCallback)(HostRegistration* self, HostPluginCallback fn);
    void(BREVAN_HOSTCALL* setUiRecord)(HostRegistration* self, const HostUiRecord* record);
    void(BREVAN_HOSTCALL* setUnloadCallback)(HostRegistration* self, HostPluginCallback fn);
    void* host;
};

typedef int(BREVAN_HOSTCALL* HostHandshakeFn)(uint32_t hostVersion, HostHandshake* data);
typedef int(BREVAN_HOSTCALL* PlugInMainFn)(uint32_t* version, HostHandshakeFn* entry);

// The interface version both sides must agree on.
constexpr uint32_t kHostInterfaceVersion = 0x10000;
// The SDK version a plug-in announces.
constexpr uint32_t kHostSdkVersion = 0xB000000;
