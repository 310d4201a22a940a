// PageTextSearch: the host's text finders over the pages of one document. It prepares a page for
// search (parsed content, a text page, a finder), turns the finder's matches into records and
// searches the text of the page's form fields. One text page lives at a time: preparing a page
// releases the previous one.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "host/host_api.h"
#include "redaction/owned_handle.h"
#include "redaction/search_record.h"

// One text to find and where its records go.
struct MatchQuery {
    std::wstring text;
    uint32_t flags = 0;  // the host's search flags, passed as they stand
    std::wstring fileId;
    std::wstring searchKey;
    int32_t fieldCharIndex = 0;  // `start` and `end` of a record of a match in a form field
};

// A page made ready for search; `finder` is empty when the page has none.
struct PreparedPage {
    NdxPage pdfPage = nullptr;
    OwnedTextFind finder;
};

class PageTextSearch {
  public:
    PageTextSearch(HostApi& host, HostDoc doc, NdxDoc pdf) : host_(host), doc_(doc), pdf_(pdf) {}

    // The PDF page of a page index, or null when the editor cannot give it.
    NdxPage PdfPage(int page) const;
    // Whether the page holds a text field of the document's interactive form.
    bool HasFillableText(NdxPage pdfPage) const;
    // Whether the page holds annotations that draw text of their own (free text, stamps), which
    // the host's field finder searches after the fields.
    bool HasAnnotationText(NdxPage pdfPage) const;
    // Whether the field finder has anything to search on the page.
    bool HasFieldFinderText(NdxPage pdfPage) const {
        return HasFillableText(pdfPage) || HasAnnotationText(pdfPage);
    }
    PreparedPage Prepare(int page);

    // All matches of `query` on a prepared page: those of the page's text in the finder's order,
    // then, with `searchFields`, those in its form fields, under one ordinal that counts only
    // records with rectangles (the others are dropped). Kept records are appended to `out`; the
    // result is how many. A finder that does not start searches nothing, fields included.
    int FindAll(const PreparedPage& prepared, int page, const MatchQuery& query, bool searchFields,
                std::vector<SearchRecord>& out);

    // The finder's current match as a record: page, character range, ordinal, rectangles.
    SearchRecord MatchRecord(NdxTextFind finder, int page, int32_t ordinal) const;

  private:
    int FindInFields(NdxPage pdfPage, int page, const MatchQuery& query, int32_t ordinal,
                     std::vector<SearchRecord>& out);

    HostApi& host_;
    HostDoc doc_;
    NdxDoc pdf_;
    OwnedTextPage textPage_;
};

// Reads the rectangles a host operation puts into a fresh rectangle array.
template <typename Fill>
std::vector<NdxRect> ReadRects(HostApi& host, Fill fill) {
    std::vector<NdxRect> rects;
    OwnedRectArray array(host, host.NDXRectArrayNew());
    if (!array)
        return rects;
    fill(array.get());
    const int count = host.NDXRectArrayGetCount(array.get());
    for (int i = 0; i < count; ++i)
        rects.push_back(host.NDXRectArrayGetAt(array.get(), i));
    return rects;
}
