#include "point_note_dispatchers.h"

#include <cmath>
#include <limits>

#include "bridge/command_params.h"
#include "bridge/error_codes.h"
#include "document/document_registry.h"
#include "host/host_string.h"
#include "redaction/annot_dictionaries.h"
#include "redaction/owned_handle.h"
#include "redaction/page_repaint.h"
#include "redaction/pdf_dict_writer.h"
#include "redaction/pdf_text.h"
#include "redaction/redaction_services.h"
#include "redaction/request_fields.h"

namespace {

constexpr int kMediaBoxNumbers = 4;

// The page's own /MediaBox (in place or referenced, not inherited) when it holds four numbers.
NdxObject OwnMediaBox(HostApi& host, NdxObject pageDict) {
    NdxObject box = pageDict != nullptr ? host.NDXDictGet(pageDict, "MediaBox") : nullptr;
    if (box != nullptr && host.NDXObjectGetType(box) == kNdxObjectReference)
        box = host.NDXObjectGetDirect(box);
    if (box == nullptr || host.NDXObjectGetType(box) != kNdxObjectArray ||
        host.NDXArrayCount(box) < kMediaBoxNumbers) {
        return nullptr;
    }
    return box;
}

std::string DictBytes(HostApi& host, NdxObject dict, const char* key) {
    HostBytes bytes(host);
    host.NDXDictGetString(dict, key, bytes);
    return bytes.Bytes();
}

}  // namespace

int32_t PointNoteRequest::Read(const RedactionServices& services, const CommandParams& params,
                               Kind kind) {
    if (!params.parsed())
        return err::kNoJson;
    const Json::Value& root = params.value();
    const std::wstring fileId = FileIdOf(root);
    if (fileId.empty())
        return err::kNoId;
    if (!services.documents.DocOf(fileId, place.doc))
        return err::kNoDocFromField;
    HostApi& host = services.host;
    place.pdf = host.HostDocGetPdfDoc(place.doc);
    if (place.pdf == nullptr)
        return err::kNoNdxDoc;
    const std::optional<int64_t> page = JsonInteger(Member(root, "pageIndex"));
    if (!page)
        return err::kNoPageIndex;
    if (*page < 0 || *page >= host.NDXDocGetPageCount(place.pdf))
        return err::kPageIndexOutOfRange;
    place.page = static_cast<int>(*page);
    const Json::Value& point = Member(root, "point");
    const std::optional<float> x = JsonFloat(Member(point, "x"));
    const std::optional<float> y = JsonFloat(Member(point, "y"));
    if (!x || !y)
        return err::kNoXyPoints;
    place.x = *x;
    place.y = *y;
    if (kind == Kind::kNewNote) {
        const Json::Value& contentsValue = Member(root, "contents");
        if (contentsValue.isNull())
            return err::kNoContent;
        contents = TextOf(contentsValue);
    }
    if (TextOf(Member(root, "type")) != L"note")
        return err::kNoType;
    name = TextOf(Member(root, kind == Kind::kNewNote ? "uniqueIDName" : "uniqueIDPrefix"));
    if (!StartsWith(name, kPointNotePrefix))
        return err::kNoUniqueIdName;
    place.view = host.HostDocGetView(place.doc);
    place.pageView =
        place.view != nullptr ? host.HostDocViewGetPageView(place.view, place.page) : nullptr;
    if (place.pageView == nullptr)
        return err::kNoDocView;
    place.pageDict = host.NDXDocGetPage(place.pdf, place.page);
    place.mediaBox = OwnMediaBox(host, place.pageDict);
    if (place.mediaBox == nullptr)
        return err::kNoMediaBox;
    place.pageTop = host.NDXArrayGetNumber(place.mediaBox, 3);
    return err::kOk;
}

std::optional<NdxRect> NoteAt(HostApi& host, HostAnnot annot, const NotePlace& place,
                              const std::wstring& prefix) {
    NdxAnnot pdfAnnot = annot != nullptr ? host.NDXHostAnnotGetPdfAnnot(annot) : nullptr;
    if (pdfAnnot == nullptr)
        return std::nullopt;
    const NdxRect rect = host.NDXAnnotGetRect(pdfAnnot);
    if (std::fabs(rect.left - place.x) > std::numeric_limits<float>::epsilon() ||
        std::fabs(rect.top - (place.pageTop - place.y)) > std::numeric_limits<float>::epsilon()) {
        return std::nullopt;
    }
    HostBytes subtype(host);
    host.NDXAnnotGetSubtype(pdfAnnot, subtype);
    if (subtype.Bytes() != "Text")
        return std::nullopt;
    NdxObject dict = host.NDXAnnotGetDict(pdfAnnot);
    if (dict == nullptr || DictBytes(host, dict, "Name") != "Note" ||
        !StartsWith(DecodePdfText(DictBytes(host, dict, "NM")), prefix)) {
        return std::nullopt;
    }
    return rect;
}

Json::Value AddAnnotAtPointDispatcher::Run() {
    PointNoteRequest request;
    if (const int32_t code = request.Read(services_, params, PointNoteRequest::Kind::kNewNote);
        code != err::kOk) {
        return Fail(code);
    }
    const NotePlace& place = request.place;
    HostApi& host = services_.host;
    OwnedPdfObject note(host, host.NDXDictNew());
    if (!note)
        return Fail(err::kAddAnnotFailed);
    PdfDictWriter noteWriter(host, place.pdf, note.get());
    WriteNote(noteWriter, NoteRectAt(place.x, place.y, place.pageTop), place.pageDict,
              request.contents, request.name);
    host.HostDocTouchPage(place.doc, place.page);
    HostAnnot annot = host.HostPageViewAddAnnot(place.pageView, note.release(), -1);
    if (annot == nullptr)
        return Fail(err::kAddAnnotFailed);
    host.HostPageViewUpdateAnnot(place.pageView, annot);
    if (HostUndoManager undo = host.HostUndoGetManager())
        host.HostUndoRecordAddAnnot(undo, annot, 1, 1);

    std::optional<float> pageWidth;
    if (host.NDXArrayCount(place.mediaBox) > 2)
        pageWidth = host.NDXArrayGetNumber(place.mediaBox, 2);
    OwnedPdfObject popup(host, host.NDXDictNew());
    if (!popup)
        return Fail(err::kAddAnnotFailed);
    NdxAnnot pdfNote = host.NDXHostAnnotGetPdfAnnot(annot);
    PdfDictWriter popupWriter(host, place.pdf, popup.get());
    WritePopup(popupWriter, PopupRectFor(place.y, pageWidth),
               pdfNote != nullptr ? host.NDXAnnotGetDict(pdfNote) : nullptr);
    HostAnnot popupAnnot = host.HostPageViewAddAnnot(place.pageView, popup.release(), -1);
    if (popupAnnot == nullptr)
        return Fail(err::kAddAnnotFailed);
    host.HostPageViewUpdateAnnot(place.pageView, popupAnnot);
    host.HostDocSetChanged(place.doc);
    return MakeResult(err::kOk, Json::Value());
}

Json::Value GetAnnotsContentAtPointDispatcher::Run() {
    PointNoteRequest request;
    if (const int32_t code =
            request.Read(services_, params, PointNoteRequest::Kind::kExistingNotes);
        code != err::kOk) {
        return Fail(code);
    }
    const NotePlace& place = request.place;
    HostApi& host = services_.host;
    Json::Value data;
    const int count = host.HostPageViewCountAnnots(place.pageView);
    for (int i = 0; i < count; ++i) {
        HostAnnot annot = host.HostPageViewGetAnnot(place.pageView, i);
        if (!NoteAt(host, annot, place, request.name))
            continue;
        NdxObject dict = host.NDXAnnotGetDict(host.NDXHostAnnotGetPdfAnnot(annot));
        NdxObject contents = host.NDXDictGet(dict, "Contents");
        if (contents == nullptr || host.NDXObjectGetType(contents) != kNdxObjectString)
            continue;
        HostBytes text(host);
        host.NDXStringGetBytes(contents, text);
        host.HostByteStringAppendText(text, "\r\n");
        Json::Value note(Json::objectValue);
        note["content"] = text.Bytes();
        note["id"] = DictBytes(host, dict, "NM");
        data.append(note);
    }
    return MakeResult(err::kOk, data);
}

// The index moves on after a removal too, so a hit that slides into the removed one's place
// stays for a later request.
Json::Value RemoveAnnotsAtPointDispatcher::Run() {
    PointNoteRequest request;
    if (const int32_t code =
            request.Read(services_, params, PointNoteRequest::Kind::kExistingNotes);
        code != err::kOk) {
        return Fail(code);
    }
    const NotePlace& place = request.place;
    HostApi& host = services_.host;
    HostUndoManager undo = host.HostUndoGetManager();
    for (int i = 0; i < host.HostPageViewCountAnnots(place.pageView); ++i) {
        HostAnnot annot = host.HostPageViewGetAnnot(place.pageView, i);
        std::optional<NdxRect> rect = NoteAt(host, annot, place, request.name);
        if (!rect)
            continue;
        if (undo != nullptr)
            host.HostUndoRecordDeleteAnnot(undo, annot, 1);
        host.HostPageViewDeleteAnnot(place.pageView, annot);
        const DeviceRect device = ToDevice(host, place.pageView, *rect);
        host.NDXRectInflate(&*rect, 0.5f, 0.5f, 0.5f, 0.5f);
        Repaint(host, place.view, device);
    }
    host.HostDocSetChanged(place.doc);
    return MakeResult(err::kOk, Json::Value());
}
