// A host with documents whose annotations the tests make through the tables, the way the
// plug-in does: dictionary built entry by entry, handed to a page view (or, without a view, to
// the annotation list of a PDF page).
#pragma once

#include <algorithm>
#include <string>
#include <vector>

#include "../engine/engine_test_support.h"
#include "engine/page_object_number.h"
#include "host_test_support.h"
#include "wide_text.h"

namespace pdfhost::testing {

// The QuadPoints numbers of `rects`: each one's corners, bottom pair first.
inline std::vector<float> Quads(const std::vector<engine::Rect>& rects) {
    std::vector<float> quads;
    for (const engine::Rect& r : rects)
        quads.insert(quads.end(),
                     {r.left, r.bottom, r.right, r.bottom, r.left, r.top, r.right, r.top});
    return quads;
}

class AnnotationTablesTest : public HostFixture {
  protected:
    // The smallest rectangle round all of `rects`.
    static engine::Rect Union(const std::vector<engine::Rect>& rects) {
        engine::Rect all = rects.front();
        for (const engine::Rect& r : rects) {
            all = engine::Rect{std::min(all.left, r.left), std::min(all.bottom, r.bottom),
                               std::max(all.right, r.right), std::max(all.top, r.top)};
        }
        return all;
    }

    static NdxObject Numbers(const std::vector<float>& values) {
        const NdxObject array = Call<NDXArrayNew>();
        for (const float value : values)
            Call<NDXArrayAddNumber>(array, value);
        return array;
    }

    static void SetText(NdxObject dict, const char* key, const std::wstring& text) {
        const HostByteString bytes = Call<HostByteStringNew>();
        Call<HostTextToPdfString>(text.c_str(), static_cast<int>(text.size()), 0, bytes);
        Call<NDXDictSetString>(dict, key, bytes);
        Call<HostByteStringDelete>(bytes);
    }

    // The dictionary of a Highlight or Redact annotation over `rects`, entries in the order
    // the plug-in sets them.
    static NdxObject MatchDict(const HostDocument& document, int page, const std::string& subtype,
                               const std::vector<engine::Rect>& rects, const std::wstring& name) {
        const bool redact = subtype == "Redact";
        const NdxDoc pdf = document.PdfHandle();
        const NdxObject dict = Call<NDXDictNew>();
        Call<NDXDictSetName>(dict, "Type", "Annot");
        Call<NDXDictSetName>(dict, "Subtype", subtype.c_str());
        const engine::Rect all = Union(rects);
        Call<NDXDictSetRect>(dict, "Rect", NdxRect{all.left, all.bottom, all.right, all.top});
        Call<NDXDictSetInteger>(dict, "F", 4);
        Call<NDXDictSetObject>(dict, "QuadPoints", Numbers(Quads(rects)), pdf);
        Call<NDXDictSetObject>(dict, "C", redact ? Numbers({1, 0, 0}) : Numbers({1, 1, 0}), pdf);
        if (redact)
            Call<NDXDictSetObject>(dict, "IC", Numbers({0, 0, 0}), pdf);
        SetText(dict, "Subj", redact ? L"Redact" : L"Highlight");
        Call<NDXDictSetReference>(dict, "P", pdf, Call<NDXDocGetPage>(pdf, page));
        if (!redact)
            SetText(dict, "Contents", L"a comment");
        SetText(dict, "NM", name);
        return dict;
    }

    // Adds through the page view as outside a batch run: add, record for undo, redraw, mark.
    static HostAnnot AddThroughView(const HostDocument& document, int page, NdxObject dict) {
        const HostPageView view = Call<HostDocGetPageView>(document.Handle(), page);
        const HostAnnot annot = Call<HostPageViewAddAnnot>(view, dict, -1);
        if (annot != nullptr) {
            Call<HostUndoRecordAddAnnot>(Call<HostUndoGetManager>(), annot, 1, 1);
            Call<HostPageViewUpdateAnnot>(view, annot);
            Call<HostDocSetChanged>(document.Handle());
        }
        return annot;
    }

    HostAnnot RedactWord(HostDocument& document, int page, const std::string& word) {
        const auto rects = engine::testing_support::WordRects(document.Engine(), page, word);
        EXPECT_FALSE(rects.empty()) << word;
        return AddThroughView(document, page,
                              MatchDict(document, page, "Redact", rects, WideOf(word)));
    }

    static std::string Subtype(HostAnnot annot) {
        return ReadBytes([&](HostByteString out) {
            Call<NDXAnnotGetSubtype>(Call<NDXHostAnnotGetPdfAnnot>(annot), out);
        });
    }

    // Saves in place and gives the path.
    std::string Save(HostDocument& document) {
        EXPECT_EQ(app_.SaveDocument(document), 1);
        return document.Path();
    }
};

}  // namespace pdfhost::testing
