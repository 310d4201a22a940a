// Every number a bridge reply carries in `ret`, with the label used in logs and diagnostics. A
// label never travels to the page.
#pragma once

#include <cstdint>

#define BREVAN_ERROR_CODES(X)                                    \
    X(kOk, 0, "")                                                \
    /* the request is malformed */                               \
    X(kNoJson, 100001, "no JSON")                                \
    X(kEmptyToken, 100002, "")                                   \
    X(kNoId, 100004, "no Id")                                    \
    X(kNoOffset, 100005, "no Offset")                            \
    X(kNoBlockSize, 100006, "no Block Size")                     \
    X(kNoAiFileId, 100007, "no Ai File Id")                      \
    X(kNoText, 100008, "no text")                                \
    X(kInvalidStartPage, 100009, "invalid start page")           \
    X(kInvalidEndPage, 100009, "invalid end page")               \
    X(kNoSearchKey, 100010, "no search key")                     \
    X(kNoIndex, 100011, "no index")                              \
    X(kNoContent, 100012, "no content")                          \
    X(kNoType, 100013, "no Type")                                \
    X(kNoUniqueIdName, 100014, "no UniqueIdName")                \
    X(kWrongType, 100015, "wrong type")                          \
    X(kNoFieldName, 100019, "")                                  \
    X(kNoFieldValue, 100020, "")                                 \
    X(kNoPageIndex, 100021, "no Page Index")                     \
    X(kNoXyPoints, 100022, "no XY Points")                       \
    X(kNoUrl, 100023, "no URL")                                  \
    X(kNoFileName, 100024, "")                                   \
    X(kNoTitle, 100027, "no title")                              \
    X(kTimeout, 100028, "timeout")                               \
    X(kNoCurrentPosition, 100029, "no current position")         \
    X(kBadBatchRet, 100031, "")                                  \
    /* the account or the web service */                         \
    X(kSigninFails, 200001, "signin fails")                      \
    X(kNoToken, 200002, "no Token")                              \
    X(kNoUserInfo, 200003, "")                                   \
    X(kNoAccountServer, 200004, "")                              \
    X(kTokenRequestFailed, 200005, "")                           \
    X(kNoTokenService, 200006, "")                               \
    X(kBatchEndStatus9, 200009, "")                              \
    X(kBatchEndStatus10, 200010, "")                             \
    /* the state of the document or the editor */                \
    X(kClosedDoc, 300001, "closed doc")                          \
    X(kSavingDocFailed, 300002, "saving doc failed")             \
    X(kNoDocFromField, 300003, "no doc from field")              \
    X(kNoPath, 300004, "no path")                                \
    X(kDownloadFailed, 300006, "")                               \
    X(kDownloadOpenFailed, 300007, "")                           \
    X(kNoDocView, 300009, "no doc")                              \
    X(kNoTextSelectTool, 300010, "no text select tool")          \
    X(kNoNdxDoc, 300011, "no NDXDoc")                            \
    /* the operation failed or found nothing */                  \
    X(kUnknownCommand, 400000, "")                               \
    X(kOpenStreamFailed, 400001, "open ifstream failed")         \
    X(kOffsetSeekFailed, 400002, "offset seek failed")           \
    X(kNoResultForSearchKey, 400003, "no result for search key") \
    X(kNoIdFromDoc, 400004, "no id from doc")                    \
    X(kNoFindResult, 400005, "no find result")                   \
    X(kNoValidAnnot, 400006, "no valid annot")                   \
    X(kDeleteAnnotFailed, 400007, "delete annot failed")         \
    X(kNoInfoDict, 400008, "")                                   \
    X(kNoFormObject, 400009, "")                                 \
    X(kNoInterForm, 400010, "")                                  \
    X(kNoSuchField, 400011, "")                                  \
    X(kFieldValueRefused, 400012, "")                            \
    X(kPageIndexOutOfRange, 400013, "page index out of range")   \
    X(kNoMediaBox, 400014, "no media box for annot")             \
    X(kAddAnnotFailed, 400015, "AddAnnot failed")                \
    X(kNoHtmlView, 400016, "no HTMLView")                        \
    X(kShellExecuteFailed, 400017, "ShellExecute failed")        \
    X(kFileDialogCancelled, 400018, "")                          \
    X(kDownloadFolderFailed, 400019, "")                         \
    X(kRedactionFailed, 400022, "Redaction failed")              \
    X(kNoAnnotForRedaction, 400023, "")                          \
    X(kRedactionPromptCancel, 400024, "Redaction prompt cancel") \
    X(kSaveAsCanceled, 400025, "SaveAs Canceled")                \
    X(kPermissionDenied, 400027, "")

namespace err {

enum Code : int32_t {
#define BREVAN_ERROR_ENUM(Name, Number, Label) Name = Number,
    BREVAN_ERROR_CODES(BREVAN_ERROR_ENUM)
#undef BREVAN_ERROR_ENUM
};

// The label of a code (the first one listed for a number), or "" for a code without one.
const char* Label(int32_t code);

// Whether the number is one the bridge defines.
bool IsKnown(int32_t code);

}  // namespace err
