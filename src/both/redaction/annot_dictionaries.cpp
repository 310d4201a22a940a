#include "annot_dictionaries.h"

#include <algorithm>

#include "redaction/pdf_dict_writer.h"
#include "redaction/redaction_strings.h"
#include "redaction/search_record.h"

namespace {

constexpr int kPrintFlag = 4;
constexpr float kNoteSize = 20;
constexpr float kPopupWidth = 180;
constexpr float kPopupHeight = 120;

}  // namespace

std::vector<float> QuadPointsOf(const std::vector<NdxRect>& rects) {
    std::vector<float> points;
    points.reserve(rects.size() * 8);
    for (const NdxRect& r : rects) {
        points.insert(points.end(),
                      {r.left, r.bottom, r.right, r.bottom, r.left, r.top, r.right, r.top});
    }
    return points;
}

void WriteMatchAnnot(PdfDictWriter& dict, MatchAnnotKind kind, const SearchRecord& record,
                     NdxObject pageDict, const std::wstring& contents,
                     const std::wstring& uniqueIDName) {
    const bool highlight = kind == MatchAnnotKind::kHighlight;
    dict.Name("Type", "Annot");
    dict.Name("Subtype", highlight ? "Highlight" : "Redact");
    dict.Rect("Rect", record.Union());
    dict.Integer("F", kPrintFlag);
    dict.Numbers("QuadPoints", QuadPointsOf(record.rects));
    if (highlight) {
        dict.Numbers("C", {1.0f, 1.0f, 0.0f});
    } else {
        dict.Numbers("C", {1.0f, 0.0f, 0.0f});
        dict.Numbers("IC", {0.0f, 0.0f, 0.0f});
    }
    dict.Text("Subj", ResourceString(highlight ? ids::kHighlightSubject : ids::kRedactSubject));
    dict.Reference("P", pageDict);
    if (highlight)
        dict.Text("Contents", contents);
    dict.Text("NM", uniqueIDName);
}

NdxRect NoteRectAt(float x, float y, float pageTop) {
    const float top = pageTop - y;
    return NdxRect{x, top - kNoteSize, x + kNoteSize, top};
}

NdxRect PopupRectFor(float y, std::optional<float> pageWidth) {
    if (!pageWidth)
        return NdxRect{0, 0, 0, 0};
    const float left = std::max(0.0f, *pageWidth - kPopupWidth);
    const float bottom = std::max(0.0f, y - kPopupHeight);
    return NdxRect{left, bottom, left + kPopupWidth, bottom + kPopupHeight};
}

void WriteNote(PdfDictWriter& dict, const NdxRect& rect, NdxObject pageDict,
               const std::wstring& contents, const std::wstring& uniqueIDName) {
    dict.Name("Type", "Annot");
    dict.Name("Subtype", "Text");
    dict.Name("Name", "Note");
    dict.Rect("Rect", rect);
    dict.Integer("F", kPrintFlag);
    dict.Numbers("C", {1.0f, 1.0f, 0.0f});
    dict.Reference("P", pageDict);
    dict.Text("Contents", contents);
    dict.Text("NM", uniqueIDName);
}

void WritePopup(PdfDictWriter& dict, const NdxRect& rect, NdxObject noteDict) {
    dict.Rect("Rect", rect);
    dict.Name("Type", "Annot");
    dict.Name("Subtype", "Popup");
    dict.Reference("P", noteDict);
}
