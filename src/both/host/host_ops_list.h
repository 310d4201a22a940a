// The one list of host operations. Every function the plug-in may call on the editor has one row:
//
//   HOST_OP(Name, category, selector, Result, (parameters), (arguments))
//   HOST_EXT_OP(Name, table, index, Result, (parameters), (arguments))
//
// Core operations are found through the table manager by (category, selector, plug-in id).
// Extension operations are found in an extension table, by index; `table` names one of the
// HOST_EXT_TABLE rows. The list is expanded into HostApi (the interface the plug-in logic
// calls), HftHostApi (its implementation over a real table manager) and the host's typed
// registration. Include it only after defining the macros you need; undefined ones expand to
// nothing.
//
// No include guard: this file is meant to be included several times.

#ifndef HOST_OP
#define HOST_OP(Name, Category, Selector, Result, Params, Args)
#define HOST_OPS_LIST_DEFINED_HOST_OP
#endif
#ifndef HOST_EXT_OP
#define HOST_EXT_OP(Name, Table, Index, Result, Params, Args)
#define HOST_OPS_LIST_DEFINED_HOST_EXT_OP
#endif
#ifndef HOST_EXT_TABLE
#define HOST_EXT_TABLE(Id, Name, Version)
#define HOST_OPS_LIST_DEFINED_HOST_EXT_TABLE
#endif

// ---- Extension tables -----------------------------------------------------------------------
HOST_EXT_TABLE(Login, "login", 103)
HOST_EXT_TABLE(BrowserExt, "Browser Extension HFT", 0)
HOST_EXT_TABLE(Ocr, "OCRRecognition extension HFT", 1)
HOST_EXT_TABLE(PageChannel, "pdfhost.pageChannel", 1)

HOST_OP(HostExtensionFind, 0, 2, HostExtTable, (const char* name, int version), (name, version))
HOST_OP(HostExtensionGetFunction, 0, 4, HostFunction, (HostExtTable table, int index),
        (table, index))

// ---- Containers and strings -----------------------------------------------------------------
HOST_OP(HostMapNew, 3, 0, HostMap, (int capacity), (capacity))
HOST_OP(HostMapDestroy, 3, 1, void, (HostMap map), (map))
HOST_OP(HostMapSet, 3, 6, void, (HostMap map, const void* key, void* value), (map, key, value))
HOST_OP(HostPtrArrayNew, 4, 0, HostPtrArray, (), ())
HOST_OP(HostPtrArrayDestroy, 4, 1, void, (HostPtrArray array), (array))
HOST_OP(HostPtrArrayGetCount, 4, 2, int, (HostPtrArray array), (array))
HOST_OP(HostPtrArrayGetAt, 4, 6, void*, (HostPtrArray array, int index), (array, index))
HOST_OP(HostPtrArrayAdd, 4, 9, void, (HostPtrArray array, void* element), (array, element))
HOST_OP(HostStringArrayNew, 9, 0, HostStringArray, (), ())
HOST_OP(HostStringArrayDestroy, 9, 1, void, (HostStringArray array), (array))
HOST_OP(HostStringArrayGet, 9, 2, void, (HostStringArray array, int index, HostWideString out),
        (array, index, out))
HOST_OP(HostStringArrayCount, 9, 3, int, (HostStringArray array), (array))
HOST_OP(NDXRectArrayNew, 11, 0, NdxRectArray, (), ())
HOST_OP(NDXRectArrayDestroy, 11, 1, void, (NdxRectArray array), (array))
HOST_OP(NDXRectArrayGetCount, 11, 2, int, (NdxRectArray array), (array))
HOST_OP(NDXRectArrayGetAt, 11, 6, NdxRect, (NdxRectArray array, int index), (array, index))
HOST_OP(NDXRectArrayAdd, 11, 9, void,
        (NdxRectArray array, float left, float bottom, float right, float top),
        (array, left, bottom, right, top))
HOST_OP(HostByteStringNew, 17, 0, HostByteString, (), ())
HOST_OP(HostByteStringDelete, 17, 3, void, (HostByteString str), (str))
HOST_OP(HostByteStringGetLength, 17, 4, int, (HostByteString str), (str))
HOST_OP(HostByteStringIsEmpty, 17, 8, int, (HostByteString str), (str))
HOST_OP(HostByteStringEquals, 17, 10, int, (HostByteString a, HostByteString b), (a, b))
HOST_OP(HostByteStringSet, 17, 13, void, (HostByteString str, const char* text), (str, text))
HOST_OP(HostByteStringAppend, 17, 14, void, (HostByteString str, HostByteString tail), (str, tail))
HOST_OP(HostByteStringAppendText, 17, 15, void, (HostByteString str, const char* text), (str, text))
HOST_OP(HostByteStringData, 17, 42, const char*, (HostByteString str), (str))
HOST_OP(HostByteStringToWide, 17, 43, void, (HostByteString str, HostWideString out), (str, out))
HOST_OP(HostWideStringNew, 18, 0, HostWideString, (), ())
HOST_OP(HostWideStringDelete, 18, 3, void, (HostWideString str), (str))
HOST_OP(HostWideStringGetLength, 18, 4, int, (HostWideString str), (str))
HOST_OP(HostWideStringCompareText, 18, 6, int, (HostWideString str, const wchar_t* text),
        (str, text))
HOST_OP(HostWideStringSet, 18, 11, void, (HostWideString str, const wchar_t* text), (str, text))
HOST_OP(HostWideStringAppend, 18, 12, void, (HostWideString str, HostWideString tail), (str, tail))
HOST_OP(HostWideStringAppendText, 18, 13, void, (HostWideString str, const wchar_t* text),
        (str, text))
HOST_OP(HostWideStringClear, 18, 14, void, (HostWideString str), (str))
HOST_OP(HostWideStringData, 18, 42, const wchar_t*, (HostWideString str), (str))

// ---- Application and preferences ------------------------------------------------------------
HOST_OP(HostAppGetName, 20, 0, void, (HostByteString out), (out))
HOST_OP(HostAppGetVersion, 20, 1, void, (HostWideString out), (out))
HOST_OP(HostAppGetUserDataFolder, 20, 3, void, (HostWideString out), (out))
HOST_OP(HostAppGetToolByName, 20, 11, HostTool, (const char* name), (name))
HOST_OP(HostAppSetCurrentTool, 20, 14, void, (HostTool tool, int persistent), (tool, persistent))
HOST_OP(HostAppRegisterAppEvents, 20, 21, void, (HostAppEventRecord * record), (record))
HOST_OP(HostAppGetDocCount, 20, 22, int, (), ())
HOST_OP(HostAppGetDocByIndex, 20, 23, HostDoc, (int index), (index))
HOST_OP(HostAppGetActiveDoc, 20, 24, HostDoc, (), ())
HOST_OP(HostAppActivateDoc, 20, 25, void, (HostDoc doc), (doc))
HOST_OP(HostAppRegisterDocEvents, 20, 26, void, (HostDocEventRecord * record), (record))
HOST_OP(HostAppGetMainWindow, 20, 36, HostWindow, (), ())
HOST_OP(HostPrefSetInt, 20, 45, void, (const wchar_t* section, const wchar_t* key, int value),
        (section, key, value))
HOST_OP(HostPrefSetString, 20, 47, void,
        (const wchar_t* section, const wchar_t* key, const wchar_t* value), (section, key, value))
HOST_OP(HostPrefGetInt, 20, 48, int, (const wchar_t* section, const wchar_t* key), (section, key))
HOST_OP(HostPrefGetString, 20, 50, void,
        (const wchar_t* section, const wchar_t* key, HostWideString out), (section, key, out))
HOST_OP(HostAppRegisterPane, 20, 62, void, (HostPaneRecord * record), (record))
HOST_OP(HostAppShowPane, 20, 63, void, (const char* paneName, int show), (paneName, show))
HOST_OP(HostRibbonGetBar, 20, 80, HostRibbonBar, (HostFrame frame), (frame))
HOST_OP(HostAppGetType, 20, 99, void, (HostByteString out), (out))
HOST_OP(HostAppGetPluginFilePath, 20, 101, void, (HostWideString out), (out))
HOST_OP(HostFileDialogAttach, 20, 191, void, (HostFileDialog dialog, int attach), (dialog, attach))
HOST_OP(HostFileDialogNotify, 20, 192, void, (const wchar_t* text), (text))
HOST_OP(HostFileDialogGetPlugin, 20, 194, void, (HostFileDialog dialog, HostWideString out),
        (dialog, out))
HOST_OP(HostAppReportUsage, 20, 201, void,
        (HostWideString name, HostWideString unused1, HostWideString unused2, HostWideString type,
         HostWideString unused3, HostWideString unused4, HostWideString details,
         HostWideString module, HostWideString version, HostWideString extra1,
         HostWideString extra2, int last),
        (name, unused1, unused2, type, unused3, unused4, details, module, version, extra1, extra2,
         last))
HOST_OP(HostAppUnregisterDocEvents, 20, 215, void, (HostDocEventRecord * record), (record))
HOST_OP(HostAppGetInterfaceLanguage, 20, 229, void, (HostWideString out), (out))
HOST_OP(HostFileDialogGetAccount, 20, 237, void, (HostFileDialog dialog, HostWideString out),
        (dialog, out))
HOST_OP(HostResourcesNew, 21, 0, HostResources, (const wchar_t* modulePath), (modulePath))
HOST_OP(HostResourcesDestroy, 21, 1, void, (HostResources resources), (resources))
HOST_OP(HostResourcesSetLanguage, 21, 2, void, (HostResources resources, int language),
        (resources, language))
HOST_OP(HostResourcesGetLanguage, 21, 3, int, (), ())
HOST_OP(HostAppGetLanguage, 21, 8, void, (HostWideString out), (out))
HOST_OP(HostFormatFileSize, 149, 463, void, (int64_t bytes, HostWideString out), (bytes, out))
HOST_OP(HostAppIsChannelPackage, 149, 811, int, (), ())
HOST_OP(HostPluginSettingSet, 265, 3, void,
        (const wchar_t* section, const wchar_t* key, const wchar_t* value), (section, key, value))
HOST_OP(HostPluginSettingGet, 265, 6, void,
        (const wchar_t* section, const wchar_t* key, HostWideString out,
         const wchar_t* defaultValue),
        (section, key, out, defaultValue))
HOST_OP(HostThemeGetCurrent, 273, 1, HostTheme, (), ())
HOST_OP(HostThemeGetColor, 274, 13, uint32_t, (HostTheme theme, const wchar_t* name, int flags),
        (theme, name, flags))

// ---- Progress window ------------------------------------------------------------------------
HOST_OP(HostProgressNew, 22, 0, HostProgress, (HostWindow parent, int flag), (parent, flag))
HOST_OP(HostProgressSetText, 22, 1, void, (HostProgress progress, const wchar_t* text),
        (progress, text))
HOST_OP(HostProgressSetRange, 22, 2, void, (HostProgress progress, int low, int high),
        (progress, low, high))
HOST_OP(HostProgressSetPos, 22, 3, void, (HostProgress progress, int pos), (progress, pos))
HOST_OP(HostProgressPump, 22, 4, void, (HostProgress progress), (progress))
HOST_OP(HostProgressIsCancelled, 22, 5, int, (HostProgress progress), (progress))
HOST_OP(HostProgressDestroy, 22, 7, void, (HostProgress progress), (progress))
HOST_OP(HostProgressSetCancelled, 22, 8, void, (HostProgress progress, int cancelled),
        (progress, cancelled))

// ---- Message boxes and notifications --------------------------------------------------------
HOST_OP(HostMessageBox, 30, 3, int,
        (const wchar_t* text, int buttons, const wchar_t* title, int* checkState,
         HostWindow parent),
        (text, buttons, title, checkState, parent))
HOST_OP(HostMessageShow, 30, 12, void,
        (const wchar_t* text, int a, int b, const wchar_t* title, int c, int d),
        (text, a, b, title, c, d))
HOST_OP(HostBubbleCreate, 234, 0, HostBubbleSource, (), ())
HOST_OP(HostBubbleShow, 234, 3, void,
        (HostBubbleSource source, uint32_t pluginId, int a, const wchar_t* text, int milliseconds,
         int kind, int b),
        (source, pluginId, a, text, milliseconds, kind, b))
HOST_OP(HostBubbleRegister, 234, 5, void, (HostBubbleSource source, HostBubbleRecord* record),
        (source, record))
HOST_OP(HostBubbleUnregister, 234, 6, void, (HostBubbleSource source, HostBubbleRecord* record),
        (source, record))

// ---- Host documents -------------------------------------------------------------------------
HOST_OP(HostDocOpen, 26, 0, HostDoc,
        (const wchar_t* path, const wchar_t* password, int visible, int flags),
        (path, password, visible, flags))
HOST_OP(HostDocClose, 26, 3, void, (HostDoc doc, int keepOpenCheck, int a, int b),
        (doc, keepOpenCheck, a, b))
HOST_OP(HostDocGetPdfDoc, 26, 4, NdxDoc, (HostDoc doc), (doc))
HOST_OP(HostDocSetChanged, 26, 8, void, (HostDoc doc), (doc))
HOST_OP(HostDocIsModified, 26, 9, int, (HostDoc doc), (doc))
HOST_OP(HostDocGetView, 26, 24, HostDocView, (HostDoc doc), (doc))
HOST_OP(HostDocGetPermissions, 26, 25, uint32_t, (HostDoc doc), (doc))
HOST_OP(HostDocGetFilePath, 26, 27, void, (HostDoc doc, HostWideString out), (doc, out))
HOST_OP(HostDocGetTextSelectTool, 26, 45, HostTextSelectTool, (HostDoc doc), (doc))
HOST_OP(HostDocIsTemporary, 26, 54, int, (HostDoc doc), (doc))
HOST_OP(HostDocGetPermission, 26, 65, int, (HostDoc doc, uint32_t bit), (doc, bit))
HOST_OP(HostDocSave, 26, 79, int, (HostDoc doc, int a, int b, int c, int d), (doc, a, b, c, d))
HOST_OP(HostDocRefreshPageAnnots, 26, 88, void, (HostDoc doc, int pageIndex, int flags),
        (doc, pageIndex, flags))
HOST_OP(HostDocTouchPage, 26, 94, void, (HostDoc doc, int pageIndex), (doc, pageIndex))
HOST_OP(HostDocIsAnnotAlive, 26, 95, int, (HostDoc doc, HostAnnot annot), (doc, annot))
HOST_OP(HostDocGetInterForm, 26, 117, HostFormEnv, (HostDoc doc), (doc))
HOST_OP(HostDocReplaceText, 26, 118, int,
        (HostDoc doc, int pageIndex, int matchOrdinal, const wchar_t* text),
        (doc, pageIndex, matchOrdinal, text))
HOST_OP(HostDocGetPageView, 26, 145, HostPageView, (HostDoc doc, int pageIndex), (doc, pageIndex))
HOST_OP(HostDocSaveAs, 26, 168, int,
        (HostDoc doc, const wchar_t* path, int a, int b, const HostSaveAsOptions* options),
        (doc, path, a, b, options))
HOST_OP(HostDocGetPageCount, 26, 177, int, (HostDoc doc), (doc))
HOST_OP(HostDocOpenHidden, 26, 178, HostDoc,
        (const wchar_t* path, const HostOpenHiddenOptions* options), (path, options))
HOST_OP(HostDocGetFileName, 26, 179, void, (HostDoc doc, HostWideString out), (doc, out))

// ---- Document and page views ----------------------------------------------------------------
HOST_OP(HostDocViewGetPageView, 31, 2, HostPageView, (HostDocView view, int pageIndex),
        (view, pageIndex))
HOST_OP(HostDocViewGotoPage, 31, 6, void, (HostDocView view, int pageIndex), (view, pageIndex))
HOST_OP(HostDocViewGetCurrentPageView, 31, 9, HostPageView, (HostDocView view), (view))
HOST_OP(HostDocViewScrollTo, 31, 21, void, (HostDocView view, int x, int y), (view, x, y))
HOST_OP(HostDocViewInvalidateRect, 31, 24, void,
        (HostDocView view, int left, int top, int right, int bottom),
        (view, left, top, right, bottom))
HOST_OP(HostPageViewCountAnnots, 32, 4, int, (HostPageView page), (page))
HOST_OP(HostPageViewPointToDevice, 32, 8, void,
        (HostPageView page, const NdxPoint* point, int* x, int* y), (page, point, x, y))
HOST_OP(HostPageViewGetVisibleRect, 32, 12, NdxRect, (HostPageView page), (page))
HOST_OP(HostPageViewGetAnnot, 32, 16, HostAnnot, (HostPageView page, int index), (page, index))
HOST_OP(HostPageViewDeleteAnnot, 32, 18, int, (HostPageView page, HostAnnot annot), (page, annot))
HOST_OP(HostPageViewUpdateAnnot, 32, 22, void, (HostPageView page, HostAnnot annot), (page, annot))
HOST_OP(HostPageViewAddAnnot, 32, 23, HostAnnot, (HostPageView page, NdxObject dict, int index),
        (page, dict, index))
HOST_OP(HostPageViewOwnsAnnot, 32, 31, int, (HostPageView page, HostAnnot annot), (page, annot))
HOST_OP(HostPageViewGetPage, 303, 1, NdxPage, (HostPageView page), (page))
HOST_OP(HostPageReloadAnnots, 303, 45, void, (HostPageView page), (page))

// ---- Text selection -------------------------------------------------------------------------
HOST_OP(HostTextSelectToolClear, 33, 4, void, (HostTextSelectTool tool), (tool))
HOST_OP(HostTextSelectToolSelectRects, 33, 21, void,
        (HostTextSelectTool tool, HostPageView page, NdxRectArray rects), (tool, page, rects))
HOST_OP(HostTextSelectToolSelectRanges, 33, 25, void, (HostTextSelectTool tool, HostMap ranges),
        (tool, ranges))

// ---- Text encoding and low-level rectangles -------------------------------------------------
HOST_OP(HostTextToPdfString, 10, 5, void,
        (const wchar_t* text, int length, int flags, HostByteString out),
        (text, length, flags, out))
HOST_OP(HostBase64EncoderNew, 123, 0, HostBase64Encoder, (int paddingChar), (paddingChar))
HOST_OP(HostBase64EncoderDestroy, 123, 1, void, (HostBase64Encoder encoder), (encoder))
HOST_OP(HostBase64Encode, 123, 5, void,
        (HostBase64Encoder encoder, const void* data, int64_t size, HostByteString out),
        (encoder, data, size, out))
HOST_OP(NDXRectInflate, 266, 20, void,
        (NdxRect * rect, float left, float bottom, float right, float top),
        (rect, left, bottom, right, top))

// ---- PDF documents and pages ----------------------------------------------------------------
HOST_OP(NDXDocGetRoot, 34, 7, NdxObject, (NdxDoc doc), (doc))
HOST_OP(NDXDocGetInfo, 34, 8, NdxObject, (NdxDoc doc), (doc))
HOST_OP(NDXDocGetPageCount, 34, 10, int, (NdxDoc doc), (doc))
HOST_OP(NDXDocGetPage, 34, 11, NdxObject, (NdxDoc doc, int pageIndex), (doc, pageIndex))
HOST_OP(NDXDocSaveToFile, 34, 54, void, (NdxDoc doc, const char* utf8Path, int a, int b),
        (doc, utf8Path, a, b))
HOST_OP(NDXPageNew, 73, 0, NdxPage, (), ())
HOST_OP(NDXPageDestroy, 73, 1, void, (NdxPage page), (page))
HOST_OP(NDXPageIsParsed, 73, 4, int, (NdxPage page), (page))
// Object iteration: GetFirstObjectPos gives null for a page without objects; GetNextObject gives
// the object at *position and moves *position on, to null after the last object.
HOST_OP(NDXPageGetFirstObjectPos, 73, 7, NdxPosition, (NdxPage page), (page))
HOST_OP(NDXPageGetNextObject, 73, 9, NdxPageObject, (NdxPage page, NdxPosition* position),
        (page, position))
HOST_OP(NDXPageCountObjects, 73, 11, int, (NdxPage page), (page))
HOST_OP(NDXPageLoad, 73, 27, void, (NdxPage page, NdxDoc doc, NdxObject pageDict, int flags),
        (page, doc, pageDict, flags))
HOST_OP(NDXPageParse, 73, 29, void, (NdxPage page, NdxParseOptions options), (page, options))
HOST_OP(NDXPageGetTextLines, 73, 40, void,
        (HostStringArray out, NdxDoc doc, NdxObject pageDict, int a, int b),
        (out, doc, pageDict, a, b))
HOST_OP(NDXParseOptionsNew, 74, 0, NdxParseOptions, (int a, int b, int c, int d), (a, b, c, d))
HOST_OP(NDXParseOptionsDestroy, 74, 1, void, (NdxParseOptions options), (options))
HOST_OP(NDXPageObjectGetType, 82, 11, int, (NdxPageObject object), (object))

// ---- Objects, dictionaries and arrays -------------------------------------------------------
HOST_OP(NDXObjectGetType, 61, 0, int, (NdxObject object), (object))
HOST_OP(NDXObjectDestroy, 61, 7, void, (NdxObject object), (object))
HOST_OP(NDXObjectGetDirect, 61, 13, NdxObject, (NdxObject object), (object))
HOST_OP(NDXStringGetBytes, 64, 2, void, (NdxObject string, HostByteString out), (string, out))
HOST_OP(NDXArrayNew, 66, 0, NdxObject, (), ())
HOST_OP(NDXArrayCount, 66, 1, int, (NdxObject array), (array))
HOST_OP(NDXArrayGetNumber, 66, 12, float, (NdxObject array, int index), (array, index))
HOST_OP(NDXArrayAddNumber, 66, 17, void, (NdxObject array, float value), (array, value))
HOST_OP(NDXDictNew, 67, 0, NdxObject, (), ())
HOST_OP(NDXDictGet, 67, 1, NdxObject, (NdxObject dict, const char* key), (dict, key))
// NDXDictGetString: a string entry's bytes, or a name entry's text; empty when absent.
HOST_OP(NDXDictGetString, 67, 3, void, (NdxObject dict, const char* key, HostByteString out),
        (dict, key, out))
HOST_OP(NDXDictSetObject, 67, 18, void,
        (NdxObject dict, const char* key, NdxObject value, NdxDoc doc), (dict, key, value, doc))
HOST_OP(NDXDictSetName, 67, 19, void, (NdxObject dict, const char* key, const char* name),
        (dict, key, name))
HOST_OP(NDXDictSetString, 67, 20, void, (NdxObject dict, const char* key, HostByteString value),
        (dict, key, value))
HOST_OP(NDXDictSetInteger, 67, 21, void, (NdxObject dict, const char* key, int value),
        (dict, key, value))
HOST_OP(NDXDictSetReference, 67, 25, void,
        (NdxObject dict, const char* key, NdxDoc doc, NdxObject target), (dict, key, doc, target))
HOST_OP(NDXDictSetRect, 67, 27, void, (NdxObject dict, const char* key, NdxRect rect),
        (dict, key, rect))

// ---- Annotations ----------------------------------------------------------------------------
HOST_OP(NDXAnnotNew, 52, 0, NdxAnnot, (NdxObject dict), (dict))
HOST_OP(NDXAnnotGetDict, 52, 2, NdxObject, (NdxAnnot annot), (annot))
HOST_OP(NDXAnnotGetSubtype, 52, 3, void, (NdxAnnot annot, HostByteString out), (annot, out))
HOST_OP(NDXAnnotGetRect, 52, 5, NdxRect, (NdxAnnot annot), (annot))
HOST_OP(NDXAnnotListGet, 53, 0, NdxAnnotList, (NdxPage page), (page))
HOST_OP(NDXAnnotListGetAt, 53, 4, NdxAnnot, (NdxAnnotList list, int index), (list, index))
HOST_OP(NDXAnnotListCount, 53, 5, int, (NdxAnnotList list), (list))
HOST_OP(NDXAnnotListInsert, 53, 9, void, (NdxAnnotList list, int index, NdxAnnot annot),
        (list, index, annot))
HOST_OP(NDXHostAnnotGetPdfAnnot, 173, 0, NdxAnnot, (HostAnnot annot), (annot))
HOST_OP(HostUndoGetManager, 298, 0, HostUndoManager, (), ())
HOST_OP(HostUndoRecordAddAnnot, 298, 3, void,
        (HostUndoManager manager, HostAnnot annot, int a, int b), (manager, annot, a, b))
HOST_OP(HostUndoRecordDeleteAnnot, 298, 8, void, (HostUndoManager manager, HostAnnot annot, int a),
        (manager, annot, a))

// ---- Forms ----------------------------------------------------------------------------------
HOST_OP(NDXInterFormGetField, 56, 19, NdxFormField,
        (NdxInterForm form, int index, const wchar_t* name), (form, index, name))
HOST_OP(NDXInterFormCountPageControls, 56, 26, int, (NdxInterForm form, NdxPage page), (form, page))
HOST_OP(NDXInterFormGetPageControl, 56, 27, NdxFormControl,
        (NdxInterForm form, NdxPage page, int index), (form, page, index))
HOST_OP(NDXInterFormSetUpdateAP, 56, 41, void, (NdxInterForm form, int update), (form, update))
HOST_OP(NDXFormFieldGetFullName, 57, 0, void, (NdxFormField field, HostWideString out),
        (field, out))
HOST_OP(NDXFormFieldGetValue, 57, 25, void, (NdxFormField field, HostWideString out), (field, out))
HOST_OP(NDXFormFieldSetValue, 57, 27, int, (NdxFormField field, const wchar_t* value, int notify),
        (field, value, notify))
HOST_OP(NDXFormControlGetType, 59, 0, int, (NdxFormControl control), (control))
HOST_OP(NDXFormControlGetField, 59, 2, NdxFormField, (NdxFormControl control), (control))
HOST_OP(NDXFormControlGetRect, 59, 4, void, (NdxFormControl control, NdxRect* out), (control, out))
HOST_OP(NDXInterFormFromEnvironment, 260, 0, NdxInterForm, (HostFormEnv env), (env))

// ---- Text search ----------------------------------------------------------------------------
HOST_OP(NDXTextPageNew, 120, 0, NdxTextPage, (NdxPage page, int flags), (page, flags))
HOST_OP(NDXTextPageDestroy, 120, 1, void, (NdxTextPage textPage), (textPage))
HOST_OP(NDXTextPageParse, 120, 2, void, (NdxTextPage textPage), (textPage))
HOST_OP(NDXTextPageIsParsed, 120, 3, int, (NdxTextPage textPage), (textPage))
HOST_OP(NDXTextFindNew, 121, 0, NdxTextFind, (NdxTextPage textPage), (textPage))
HOST_OP(NDXTextFindDestroy, 121, 1, void, (NdxTextFind find), (find))
HOST_OP(NDXTextFindStart, 121, 2, int,
        (NdxTextFind find, const wchar_t* text, uint32_t flags, int startIndex),
        (find, text, flags, startIndex))
HOST_OP(NDXTextFindNext, 121, 3, int, (NdxTextFind find), (find))
HOST_OP(NDXTextFindGetRects, 121, 5, void, (NdxTextFind find, NdxRectArray rects), (find, rects))
HOST_OP(NDXTextFindGetCharIndex, 121, 6, int, (NdxTextFind find), (find))
HOST_OP(NDXTextFindGetCharCount, 121, 7, int, (NdxTextFind find), (find))
HOST_OP(NDXFieldTextFindNew, 450, 0, NdxFieldFind, (NdxDoc doc, NdxPage page), (doc, page))
HOST_OP(NDXFieldTextFindDestroy, 450, 1, void, (NdxFieldFind find), (find))
HOST_OP(NDXFieldTextFindStart, 450, 2, int,
        (NdxFieldFind find, const wchar_t* text, uint32_t flags), (find, text, flags))
HOST_OP(NDXFieldTextFindNext, 450, 3, int, (NdxFieldFind find), (find))
HOST_OP(NDXFieldTextFindGetRects, 450, 5, void, (NdxFieldFind find, NdxRectArray rects),
        (find, rects))

// ---- Document checks and processing ---------------------------------------------------------
HOST_OP(HostReaderCreate, 91, 0, HostReader, (), ())
HOST_OP(HostReaderDestroy, 91, 1, void, (HostReader reader), (reader))
HOST_OP(HostReaderOpen, 91, 3, int, (HostReader reader, const wchar_t* path, int flags),
        (reader, path, flags))
HOST_OP(HostReaderDetach, 91, 6, void, (HostReader reader, int flags), (reader, flags))
HOST_OP(HostSecurityHandlerCreate, 326, 0, HostSecurityHandler, (), ())
HOST_OP(HostSecurityHandlerCheck, 326, 1, int, (HostSecurityHandler handler, NdxDoc doc, int flags),
        (handler, doc, flags))
HOST_OP(HostSecurityHandlerDestroy, 326, 2, void, (HostSecurityHandler handler), (handler))
HOST_OP(NDXRedactApplyAll, 335, 0, int, (HostDoc doc, int flags), (doc, flags))
HOST_OP(NDXRedactApplyList, 335, 1, int, (HostDoc doc, HostPtrArray annots, int flags),
        (doc, annots, flags))
HOST_OP(NDXRedactApplyBatch, 335, 2, int, (HostDoc doc, int flags, uint32_t options),
        (doc, flags, options))
HOST_OP(NDXFlattenerNew, 451, 0, NdxFlattener, (NdxDoc doc), (doc))
HOST_OP(NDXFlattenerDone, 451, 1, void, (NdxFlattener flattener), (flattener))
HOST_OP(NDXFlattenerAddPage, 451, 2, void, (NdxFlattener flattener, NdxPage page, int a, int b),
        (flattener, page, a, b))

// ---- Ribbon ---------------------------------------------------------------------------------
HOST_OP(HostRibbonAddCategory, 151, 0, HostRibbonCategory,
        (HostRibbonBar bar, const wchar_t* name, const wchar_t* title), (bar, name, title))
HOST_OP(HostRibbonFindCategory, 151, 6, HostRibbonCategory,
        (HostRibbonBar bar, const wchar_t* name), (bar, name))
HOST_OP(HostRibbonAddPanel, 152, 8, HostRibbonPanel,
        (HostRibbonCategory category, const wchar_t* name, const wchar_t* title, int flags),
        (category, name, title, flags))
HOST_OP(HostRibbonFindPanel, 152, 11, HostRibbonPanel,
        (HostRibbonCategory category, const wchar_t* name), (category, name))
HOST_OP(HostRibbonAddElement, 153, 0, HostRibbonElement,
        (HostRibbonPanel panel, int type, const wchar_t* name, const wchar_t* title, int flags),
        (panel, type, name, title, flags))
HOST_OP(HostRibbonFindElement, 153, 9, HostRibbonElement,
        (HostRibbonPanel panel, const wchar_t* name), (panel, name))
HOST_OP(HostRibbonAddSubItem, 154, 0, HostRibbonItem,
        (HostRibbonElement element, int a, const wchar_t* name, const wchar_t* title, int position,
         int b, int c, int d),
        (element, a, name, title, position, b, c, d))
HOST_OP(HostRibbonSetExecuteProc, 154, 1, void, (HostRibbonItem item, HostRibbonExecuteProc proc),
        (item, proc))
HOST_OP(HostRibbonSetEnableProc, 154, 2, void, (HostRibbonItem item, HostRibbonEnableProc proc),
        (item, proc))
HOST_OP(HostRibbonSetKeyTip, 154, 11, void, (HostRibbonItem item, const wchar_t* text),
        (item, text))
HOST_OP(HostRibbonSetTooltip, 154, 13, void, (HostRibbonItem item, const wchar_t* text),
        (item, text))
HOST_OP(HostRibbonSetImages, 154, 50, void,
        (HostRibbonItem item, const wchar_t* largeName, const wchar_t* smallName),
        (item, largeName, smallName))
HOST_OP(HostRibbonItemGetButton, 155, 0, HostRibbonButton, (HostRibbonItem item), (item))

// ---- Extension table "login" ----------------------------------------------------------------
HOST_EXT_OP(LoginGetToken, Login, 0, int,
            (const wchar_t* baseAddress, const wchar_t* text, HostWideString token),
            (baseAddress, text, token))
HOST_EXT_OP(LoginHasWindow, Login, 3, int, (HostWindow window), (window))
HOST_EXT_OP(LoginGetUserInfo, Login, 15, int,
            (const wchar_t* baseAddress, HostWideString email, HostWideString userId,
             HostWideString firstName, HostWideString lastName),
            (baseAddress, email, userId, firstName, lastName))
HOST_EXT_OP(LoginGetState, Login, 20, int, (const wchar_t* baseAddress), (baseAddress))
HOST_EXT_OP(LoginGetServerAddress, Login, 26, void, (HostWideString out), (out))
HOST_EXT_OP(LoginGetServerAddressFallback, Login, 28, void, (HostWideString out), (out))
HOST_EXT_OP(LoginShowSignIn, Login, 29, int, (const wchar_t* text, int flags), (text, flags))
HOST_EXT_OP(LoginRegisterDomainCallback, Login, 32, void, (HostLoginDomainCallback callback),
            (callback))

// ---- Extension table "Browser Extension HFT" ------------------------------------------------
HOST_EXT_OP(BrowserExtOpenUrl, BrowserExt, 0, int,
            (const wchar_t* url, int a, int b, HostBrowserTabRecord* record, void** tabOut),
            (url, a, b, record, tabOut))
HOST_EXT_OP(BrowserExtOpenWebPage, BrowserExt, 1, int,
            (const wchar_t* url, HostWindow parent, HostWebPageRecord* record,
             HostWebView* viewOut),
            (url, parent, record, viewOut))
HOST_EXT_OP(BrowserExtCloseWebPage, BrowserExt, 2, void, (HostWindow window), (window))

// ---- Extension table "OCRRecognition extension HFT" -----------------------------------------
HOST_EXT_OP(OcrRecognizePage, Ocr, 0, int, (NdxPage page, HostOcrOptions* options, int flags),
            (page, options, flags))
HOST_EXT_OP(OcrShowDialog, Ocr, 2, int,
            (HostWindow parent, HostOcrOptions* options, HostOcrDialogCallback* callback),
            (parent, options, callback))

// ---- Extension table "pdfhost.pageChannel" (page_channel_abi.h) ----------------------------
HOST_EXT_OP(PageChannelConnect, PageChannel, 0, int, (HostPageMessageFn receiver, void* client),
            (receiver, client))
HOST_EXT_OP(PageChannelDisconnect, PageChannel, 1, void, (void* client), (client))
HOST_EXT_OP(PageChannelPostMessage, PageChannel, 2, void, (const char* utf8Text, uint32_t size),
            (utf8Text, size))
HOST_EXT_OP(PageChannelExecuteScript, PageChannel, 3, void, (const char* utf8Text, uint32_t size),
            (utf8Text, size))

#ifdef HOST_OPS_LIST_DEFINED_HOST_OP
#undef HOST_OP
#undef HOST_OPS_LIST_DEFINED_HOST_OP
#endif
#ifdef HOST_OPS_LIST_DEFINED_HOST_EXT_OP
#undef HOST_EXT_OP
#undef HOST_OPS_LIST_DEFINED_HOST_EXT_OP
#endif
#ifdef HOST_OPS_LIST_DEFINED_HOST_EXT_TABLE
#undef HOST_EXT_TABLE
#undef HOST_OPS_LIST_DEFINED_HOST_EXT_TABLE
#endif
