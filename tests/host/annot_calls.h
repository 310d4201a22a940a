// A host with documents whose annotations the tests make through the tables, the way the
// plug-in does: dictionary built entry by entry, handed to a page view (or, without a view, to
// the annotation list of a PDF page).
#pragma once

#include <string>
#include <vector>

#include "../engine/annot_test_support.h"
#include "host_test_support.h"
#include "wide_text.h"

namespace pdfhost::testing {

class AnnotationTablesTest : public HostFixture {
  protected:
    using Op = hostops::Op;

    HostDocument& Open(const engine::PdfDescription& layout, bool shown = true) {
        const std::string path = WritePdf(files_, "doc" + std::to_string(++files) + ".pdf", layout);
        const HostApp::OpenResult opened =
            shown ? app_.OpenDocument(path) : app_.OpenHidden(path, "", true);
        EXPECT_NE(opened.document, nullptr) << opened.error;
        return *opened.document;
    }

    static NdxObject Numbers(std::initializer_list<float> values) {
        const NdxObject array = CallHost<Op::NDXArrayNew>();
        if (CallHost<Op::NDXObjectGetType>(array) == kNdxObjectArray) {
            for (const float value : values)
                CallHost<Op::NDXArrayAddNumber>(array, value);
        }
        return array;
    }

    static void SetText(NdxObject dict, const char* key, const std::wstring& text) {
        const HostByteString bytes = CallHost<Op::HostByteStringNew>();
        CallHost<Op::HostTextToPdfString>(text.c_str(), static_cast<int>(text.size()), 0, bytes);
        CallHost<Op::NDXDictSetString>(dict, key, bytes);
        CallHost<Op::HostByteStringDelete>(bytes);
    }

    // The dictionary of a Highlight or Redact annotation over `rects`, entries in the order
    // the plug-in sets them.
    static NdxObject MatchDict(const HostDocument& document, int page, const std::string& subtype,
                               const std::vector<engine::Rect>& rects, const std::wstring& name) {
        const bool redact = subtype == "Redact";
        const NdxDoc pdf = document.PdfHandle();
        const NdxObject dict = CallHost<Op::NDXDictNew>();
        CallHost<Op::NDXDictSetName>(dict, "Type", "Annot");
        CallHost<Op::NDXDictSetName>(dict, "Subtype", subtype.c_str());
        const engine::Rect all = engine::testing_support::Union(rects);
        CallHost<Op::NDXDictSetRect>(dict, "Rect",
                                     NdxRect{all.left, all.bottom, all.right, all.top});
        CallHost<Op::NDXDictSetInteger>(dict, "F", 4);
        const NdxObject quads = CallHost<Op::NDXArrayNew>();
        for (const engine::Rect& r : rects) {
            for (const float v :
                 {r.left, r.bottom, r.right, r.bottom, r.left, r.top, r.right, r.top}) {
                CallHost<Op::NDXArrayAddNumber>(quads, v);
            }
        }
        CallHost<Op::NDXDictSetObject>(dict, "QuadPoints", quads, pdf);
        CallHost<Op::NDXDictSetObject>(dict, "C", redact ? Numbers({1, 0, 0}) : Numbers({1, 1, 0}),
                                       pdf);
        if (redact)
            CallHost<Op::NDXDictSetObject>(dict, "IC", Numbers({0, 0, 0}), pdf);
        SetText(dict, "Subj", redact ? L"Redact" : L"Highlight");
        CallHost<Op::NDXDictSetReference>(dict, "P", pdf, CallHost<Op::NDXDocGetPage>(pdf, page));
        if (!redact)
            SetText(dict, "Contents", L"a comment");
        SetText(dict, "NM", name);
        return dict;
    }

    // Adds through the page view as outside a batch run: add, record for undo, redraw, mark.
    static HostAnnot AddThroughView(const HostDocument& document, int page, NdxObject dict) {
        const HostPageView view = CallHost<Op::HostDocGetPageView>(document.Handle(), page);
        const HostAnnot annot = CallHost<Op::HostPageViewAddAnnot>(view, dict, -1);
        if (annot != nullptr) {
            CallHost<Op::HostUndoRecordAddAnnot>(CallHost<Op::HostUndoGetManager>(), annot, 1, 1);
            CallHost<Op::HostPageViewUpdateAnnot>(view, annot);
            CallHost<Op::HostDocSetChanged>(document.Handle());
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
        const HostByteString out = CallHost<Op::HostByteStringNew>();
        CallHost<Op::NDXAnnotGetSubtype>(CallHost<Op::NDXHostAnnotGetPdfAnnot>(annot), out);
        std::string subtype = ByteText(out);
        CallHost<Op::HostByteStringDelete>(out);
        return subtype;
    }

    // Saves in place and gives the path.
    std::string Save(HostDocument& document) {
        EXPECT_EQ(app_.SaveDocument(document), 1);
        return document.Path();
    }

    int files = 0;
};

}  // namespace pdfhost::testing
